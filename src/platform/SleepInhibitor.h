#pragma once

#include "reactive/Interface.h"

namespace tensio {

// Keeps the screen on and the computer from suspending, where the system allows it.
class SleepInhibitor : public Interface {
public:
    // Repeating a request does nothing. A refusal is not reported. Ends with the object.
    virtual void setInhibited(bool isInhibited) = 0;
};

} // namespace tensio
