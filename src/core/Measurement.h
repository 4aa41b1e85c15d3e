#pragma once

#include "platform/Clock.h"
#include "reactive/MutableProperty.h"

#include <memory>
#include <optional>
#include <vector>

namespace tensio {

// Seconds between consecutive pressure points, as graph and CSV take them.
constexpr float pointInterval = 0.05f;

// One pressing of the device: the pressures received and, once it is finished, its best pressure,
// its target and the time of its end. Pressures in kPa.
struct Measurement {
    explicit Measurement(int ordinal)
        : number(ordinal)
    {
    }

    // Position within the connection, from 1.
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
