#include "platform/qt/MakeSleepInhibitor.h"

#include <windows.h>

namespace tensio {

namespace {

class WindowsSleepInhibitor final : public SleepInhibitor {
public:
    ~WindowsSleepInhibitor() override { setInhibited(false); }

    void setInhibited(bool isInhibited) override
    {
        SetThreadExecutionState(
            isInhibited ? ES_CONTINUOUS | ES_DISPLAY_REQUIRED | ES_SYSTEM_REQUIRED : ES_CONTINUOUS);
    }
};

} // namespace

std::unique_ptr<SleepInhibitor> makeSleepInhibitor()
{
    return std::make_unique<WindowsSleepInhibitor>();
}

} // namespace tensio
