#pragma once

#include "platform/Clock.h"
#include "reactive/MutableProperty.h"

#include <string>

namespace tensio {

class TensioManager;

// Mirrors the subject's name and the clock for the header.
class HeaderViewModel {
public:
    explicit HeaderViewModel(TensioManager& tensioManager);

    MutableProperty<std::string> username {{}};
    MutableProperty<Date> dateTime {{}};

private:
    Subscriptions m_subscriptions;
};

} // namespace tensio
