#include "platform/qt/MakeSleepInhibitor.h"

#include <IOKit/pwr_mgt/IOPMLib.h>

namespace tensio {

namespace {

class MacSleepInhibitor final : public SleepInhibitor {
public:
    ~MacSleepInhibitor() override { setInhibited(false); }

    void setInhibited(bool isInhibited) override
    {
        if (isInhibited == (m_assertion != kIOPMNullAssertionID))
            return;
        if (isInhibited) {
            IOPMAssertionCreateWithName(kIOPMAssertionTypePreventUserIdleDisplaySleep,
                kIOPMAssertionLevelOn, CFSTR("舌圧の測定中"), &m_assertion);
            return;
        }
        IOPMAssertionRelease(m_assertion);
        m_assertion = kIOPMNullAssertionID;
    }

private:
    IOPMAssertionID m_assertion = kIOPMNullAssertionID;
};

} // namespace

std::unique_ptr<SleepInhibitor> makeSleepInhibitor()
{
    return std::make_unique<MacSleepInhibitor>();
}

} // namespace tensio
