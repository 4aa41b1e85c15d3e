#pragma once

#include "platform/RunLoop.h"
#include "reactive/CocoaAction.h"
#include "reactive/MutableProperty.h"

#include <string>

namespace tensio {

class TensioManager;

// The session's values as the control panel shows them: the effective target, live and maximum
// pressure at a calm rate, and the panel's commands. Pressures in kPa.
class InfoControlsViewModel {
public:
    InfoControlsViewModel(TensioManager const& tensioManager, RunLoop& runLoop);

    MutableProperty<float> targetPressure {0.0f};
    // In words: the base target and the percentage of it.
    MutableProperty<std::string> targetBasis {{}};
    MutableProperty<float> currentPressure {0.0f};
    MutableProperty<float> maxPressure {0.0f};
    MutableProperty<bool> isMeasuring {false};
    MutableProperty<bool> hasData {false};

    CocoaAction cocoaActionIncTargetPressure;
    CocoaAction cocoaActionDecTargetPressure;
    CocoaAction cocoaActionConnect;
    CocoaAction cocoaActionDisconnect;

private:
    Subscriptions m_subscriptions;
};

} // namespace tensio
