#pragma once

#include "platform/Clock.h"
#include "reactive/CocoaAction.h"
#include "reactive/MutableProperty.h"

#include <string>

namespace tensio {

class TensioManager;

// Mirrors the subject's name and the clock for the header, and decides when saving is allowed.
class HeaderViewModel {
public:
    explicit HeaderViewModel(TensioManager const& tensioManager);

    MutableProperty<std::string> username {{}};
    MutableProperty<Date> dateTime {{}};
    // No session runs and there is something to save; updated when a session starts or ends.
    MutableProperty<bool> canSaveStuff {false};

    CocoaAction cocoaActionSaveCsv;
    CocoaAction cocoaActionSaveScreenshot;

private:
    Subscriptions m_subscriptions;
};

} // namespace tensio
