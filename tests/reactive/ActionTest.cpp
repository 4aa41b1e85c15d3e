#include "reactive/Action.h"

#include <gtest/gtest.h>
#include <optional>

using namespace tensio;

TEST(Action, RunsOneAtATimeAndMayBeRunAgainByAListenerToItsFailure)
{
    std::optional<Observer<int, int>> run;
    Action<int, int, int> action([&](int input) {
        return SignalProducer<int, int>([&run, input](auto const& observer) {
            run = observer;
            observer.sendValue(input);
        });
    });
    std::vector<int> values;
    auto const listening = action.observe([&](auto const& event) {
        if (auto const* value = std::get_if<ValueEvent<int>>(&event))
            values.push_back(value->value);
        else if (auto const* failure = std::get_if<FailedEvent<int>>(&event))
            action.apply(failure->error);
    });
    EXPECT_TRUE(action.apply(1));
    EXPECT_FALSE(action.apply(2));
    run->sendFailed(3);
    run->sendInterrupted();
    EXPECT_TRUE(action.apply(5));
    EXPECT_EQ(values, (std::vector {1, 3, 5}));
}
