#include "device-simulator/PressingStory.h"

#include "core/DeviceRecord.h"

#include <algorithm>
#include <gtest/gtest.h>

using namespace tensio;

TEST(PressingStory, TellsWeakTargetAndStrongPressesAndABurstWithoutPressure)
{
    PressingStory story(7);
    std::vector<float> best;
    for (int burst = 0; burst < 8; ++burst) {
        float highest = -1000.0f;
        auto const writes = story.nextBurst();
        EXPECT_TRUE(burst == 0 || writes.front().pauseSeconds > 2.0);
        for (auto const& write : writes) {
            auto const pressures = readRecords(write.bytes);
            ASSERT_EQ(pressures.size(), 1U) << write.bytes;
            highest = std::max(highest, pressures.front());
        }
        best.push_back(highest);
    }
    for (std::size_t const round : {0U, 4U}) {
        EXPECT_TRUE(best[round] > 10.0f && best[round] < 30.0f);
        EXPECT_TRUE(best[round + 1] > 30.0f && best[round + 1] < 45.0f);
        EXPECT_GT(best[round + 2], 50.0f);
        EXPECT_LE(best[round + 3], 0.0f);
    }
}
