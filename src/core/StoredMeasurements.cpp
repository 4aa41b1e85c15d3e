#include "core/StoredMeasurements.h"

#include "platform/SessionStore.h"

namespace tensio {

Measurements measurementsOf(StoredSession const& session)
{
    Measurements measurements;
    for (auto const& stored : session.measurements) {
        auto& measurement
            = *measurements.emplace_back(std::make_shared<Measurement>(stored.number));
        measurement.bestPressure = stored.best;
        measurement.targetPressure = stored.target;
        measurement.timeStamp = stored.timeStamp;
        measurement.pressurePoints = stored.points;
    }
    return measurements;
}

} // namespace tensio
