#include "reactive/throttle.h"

#include "support/ManualRunLoop.h"

#include <gtest/gtest.h>
#include <utility>

using namespace tensio;

namespace {

struct Throttled {
    ManualRunLoop runLoop;
    MutableProperty<int> source {0};
    std::vector<std::pair<int, int>> passed;
    Subscription subscription {throttle<int>(source, Seconds(0.5), runLoop, [this](int value) {
        passed.emplace_back(static_cast<int>(runLoop.now().count() * 1000.0 + 0.5), value);
    })};
};

using Passed = std::vector<std::pair<int, int>>;

} // namespace

TEST(Throttle, PassesTheFirstAtOnceAndTheLastOfABurstWhenTheIntervalIsOver)
{
    Throttled throttled;
    throttled.runLoop.advance(Seconds(1.0));
    for (int value = 1; value <= 10; ++value) {
        throttled.source.setValue(value);
        throttled.runLoop.advance(Seconds(0.02));
    }
    throttled.runLoop.advance(Seconds(5.0));
    throttled.source.setValue(11);
    EXPECT_EQ(throttled.passed, (Passed {{1000, 1}, {1500, 10}, {6200, 11}}));
}

TEST(Throttle, NeverPassesMoreOftenThanTheInterval)
{
    Throttled throttled;
    for (int value = 1; value <= 40; ++value) {
        throttled.source.setValue(value);
        throttled.runLoop.advance(Seconds(0.05));
    }
    EXPECT_EQ(throttled.passed.size(), 5U);
    EXPECT_EQ(throttled.runLoop.liveTimers(), 0U);
}

TEST(Throttle, NothingPassesAfterItsEnd)
{
    Throttled throttled;
    throttled.source.setValue(1);
    throttled.source.setValue(2);
    throttled.subscription.end();
    throttled.runLoop.advance(Seconds(1.0));
    EXPECT_EQ(throttled.passed, (Passed {{0, 1}}));
    EXPECT_EQ(throttled.runLoop.liveTimers(), 0U);
}
