#include "support/Clinic.h"
#include "support/Process.h"

#include <gtest/gtest.h>
#include <optional>

using namespace tensio;

TEST(PulledCable, IsToldOnceAndKeepsWhatWasMeasuredCycleAfterCycle)
{
    // The first cycle opens what a process keeps for good.
    std::optional<std::ptrdiff_t> descriptors;
    for (int cycle = 0; cycle < 10; ++cycle) {
        if (cycle == 1)
            descriptors = openDescriptors();
        Clinic clinic;
        ASSERT_TRUE(clinic.connect());
        ASSERT_TRUE(clinic.write("+0101a+0202b"));
        // Every other time in the middle of a record.
        ASSERT_TRUE(cycle % 2 == 0 || clinic.write("+03"));
        ASSERT_TRUE(clinic.pull());
        for (int turn = 0; turn < 100; ++turn)
            QCoreApplication::processEvents();
        EXPECT_EQ(clinic.session.alerts.messages, std::vector<std::string> {"切断されました。"});
        auto const& measurements = clinic.session.manager.measurementList.measurements();
        ASSERT_EQ(measurements.size(), 1U);
        EXPECT_EQ(measurements.front()->pressurePoints, (std::vector {10.1f, 20.2f}));
        EXPECT_FALSE(clinic.session.manager.isMeasuring.value());
        // The port is closed; what is left is the watch of the terminal.
        EXPECT_EQ(openDescriptors(), descriptors ? *descriptors + 1 : openDescriptors());
    }
}
