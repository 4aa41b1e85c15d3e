#pragma once

#include "platform/Clock.h"
#include "reactive/MutableProperty.h"

#include <memory>
#include <optional>
#include <vector>

namespace tensio {

// One pressing of the device: what arrived while it lasted and, once it is finished, its best
// pressure, the target that was in force and when it ended. Pressures in kPa, consecutive points
// 0.05 s apart.
struct Measurement {
    explicit Measurement(int ordinal)
        : number(ordinal)
    {
    }

    // Counts from 1 within a connection.
    int const number;
    std::optional<float> bestPressure;
    std::optional<float> targetPressure;
    std::optional<Date> timeStamp;
    // In order of arrival, negative readings included.
    std::optional<std::vector<float>> pressurePoints {std::in_place};
    // Selected by the user.
    MutableProperty<bool> isCounted {false};
    // May be selected.
    MutableProperty<bool> isEnabled {true};
};

using Measurements = std::vector<std::shared_ptr<Measurement>>;

} // namespace tensio
