#include "reactive/throttle.h"

#include "support/ManualRunLoop.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace tensio;

TEST(Throttle, PassesTheFirstAtOnceThenTheNewestOncePerIntervalUntilItsEnd)
{
    ManualRunLoop runLoop;
    MutableProperty source(0);
    std::vector<std::pair<long, int>> passed;
    auto subscription = throttle<int>(source, Seconds(0.5), runLoop, [&](int value) {
        passed.emplace_back(std::lround(runLoop.now().count() * 1000.0), value);
    });
    for (int value = 1; value <= 24; ++value) {
        runLoop.advance(Seconds(0.05));
        source.setValue(value);
    }
    runLoop.advance(Seconds(5.0));
    source.setValue(25);
    source.setValue(26);
    subscription.end();
    runLoop.advance(Seconds(1.0));
    EXPECT_EQ(passed,
        (std::vector<std::pair<long, int>> {
            {50, 1}, {550, 10}, {1050, 20}, {1550, 24}, {6200, 25}}));
    EXPECT_EQ(runLoop.liveTimers(), 0U);
}
