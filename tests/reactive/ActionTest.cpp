#include "reactive/Action.h"

#include <gtest/gtest.h>
#include <optional>

using namespace tensio;

TEST(Action, RunsOneAtATimeAndMayBeRunAgainByAListenerToItsFailure)
{
    std::optional<Observer<int, int>> running;
    Action<int, int, int> action([&](int input) {
        return SignalProducer<int, int>([&running, input](auto const& observer) {
            running = observer;
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
    running->sendFailed(3);
    EXPECT_FALSE(action.apply(4));
    running->sendInterrupted();
    EXPECT_TRUE(action.apply(5));
    EXPECT_EQ(values, (std::vector {1, 3, 5}));
}

TEST(Action, DeliversNoValueOfARunThatAnEarlierListenerHasEnded)
{
    std::optional<Observer<int>> running;
    Action<Nothing, int> action([&](Nothing) {
        return SignalProducer<int>([&](auto const& observer) { running = observer; });
    });
    auto const ending = action.observe([&](auto const& event) {
        if (!isTerminating<int, NoError>(event))
            running->sendCompleted();
    });
    std::string heard;
    auto const listening = action.observe([&](auto const& event) {
        heard += isTerminating<int, NoError>(event) ? "end " : "value ";
    });
    action.apply(Nothing {});
    running->sendValue(1);
    EXPECT_EQ(heard, "end ");
}

TEST(Action, MayBeDestroyedByItsOwnEvents)
{
    auto action = std::make_unique<Action<Nothing>>(
        [](Nothing) { return SignalProducer<Nothing>::completingAfter([] {}); });
    auto const destroying = action->observe([&](auto const&) { action.reset(); });
    action->apply(Nothing {});
    EXPECT_EQ(action, nullptr);
}
