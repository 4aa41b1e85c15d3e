#pragma once

#include "feedback/VisualFeedbackModel.h"
#include "reactive/CocoaAction.h"

#include <vector>

namespace tensio {

class MeasurementList;
class TensioManager;

// The state behind the live area: the scales, mirrors of the session's pressures and flags, and
// when the target marker blinks. Pressures in kPa, times in seconds.
class VisualFeedbackViewModel {
public:
    static constexpr float maxUpperBoundPressure = 100.0f;
    static constexpr float minUpperBoundPressure = 10.0f;
    static constexpr float maxTimeWindow = 60.0f;
    static constexpr float minTimeWindow = 10.0f;

    VisualFeedbackViewModel(TensioManager const& tensioManager, RunLoop& runLoop);

    MutableProperty<float> upperBoundPressure {80.0f};
    MutableProperty<float> timeWindow {30.0f};
    MutableProperty<float> maxPressure {0.0f};
    MutableProperty<float> targetPressure {0.0f};
    MutableProperty<float> currentPressure {0.0f};
    MutableProperty<bool> isMeasuring {false};
    MutableProperty<bool> shouldReset {false};
    VisualFeedbackModel model;

    CocoaAction cocoaActionIncUpperBoundPressure;
    CocoaAction cocoaActionDecUpperBoundPressure;
    CocoaAction cocoaActionIncTimeWindow;
    CocoaAction cocoaActionDecTimeWindow;

    bool isTargetReached() const;
    // What the graph shows after a reset: the points of a restored session, as they came; none at
    // the start of a session.
    std::vector<float> pointsAfterReset() const;

private:
    void updateCurrentPressure(float pressure);

    MeasurementList const& m_measurementList;
    Subscriptions m_subscriptions;
};

} // namespace tensio
