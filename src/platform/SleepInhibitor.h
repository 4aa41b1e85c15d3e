#pragma once

namespace tensio {

// Keeps the screen on and the computer from suspending, where the system allows it.
class SleepInhibitor {
public:
    SleepInhibitor() = default;
    SleepInhibitor(SleepInhibitor const&) = delete;
    SleepInhibitor& operator=(SleepInhibitor const&) = delete;
    virtual ~SleepInhibitor() = default;

    virtual void setInhibited(bool isInhibited) = 0;
};

} // namespace tensio
