#pragma once

#include "core/Measurement.h"
#include "support/Fakes.h"

namespace tensio {

// Finished a minute apart from 14:07:09 on, with best pressures of 10.0, 11.0 and so on to 100.0.
inline Measurements finishedMeasurements(int count)
{
    Measurements measurements;
    for (int number = 1; number <= count; ++number) {
        auto const measurement = std::make_shared<Measurement>(number);
        measurement->bestPressure = static_cast<float>(10 + (number - 1) % 91);
        measurement->targetPressure = 30.0f;
        measurement->timeStamp = ManualClock().now() + std::chrono::minutes(number - 1);
        measurements.push_back(measurement);
    }
    return measurements;
}

} // namespace tensio
