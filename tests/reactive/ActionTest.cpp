#include "reactive/CocoaAction.h"

#include <gtest/gtest.h>
#include <optional>

using namespace tensio;

TEST(Action, IsDisabledWhileItExecutesAndForwardsTheEventsOfEveryRun)
{
    std::optional<Observer<int>> running;
    int starts = 0;
    Action<int, int> action([&](int input) {
        return SignalProducer<int>([&, input](auto const& observer) {
            ++starts;
            running = observer;
            observer.sendValue(input);
        });
    });
    std::vector<int> values;
    std::vector<bool> executingAtEnd;
    auto const listening = action.observe([&](auto const& event) {
        if (auto const* value = std::get_if<ValueEvent<int>>(&event))
            values.push_back(value->value);
        else
            executingAtEnd.push_back(action.isExecuting());
    });
    EXPECT_TRUE(action.apply(1));
    EXPECT_FALSE(action.apply(2));
    running->sendInterrupted();
    EXPECT_TRUE(action.apply(3));
    running->sendCompleted();
    EXPECT_EQ(values, (std::vector {1, 3}));
    EXPECT_EQ(starts, 2);
    EXPECT_EQ(executingAtEnd, (std::vector {false, false}));
}

TEST(Action, AFailedRunMayBeTriedAgainByWhoHearsOfIt)
{
    int runs = 0;
    Action<Nothing, Nothing, int> action([&](Nothing) {
        return SignalProducer<Nothing, int>([&](auto const& observer) {
            ++runs;
            observer.sendFailed(runs);
        });
    });
    auto const retrying = action.observe([&](auto const&) {
        if (runs < 3)
            action.apply(Nothing {});
    });
    action.apply(Nothing {});
    EXPECT_EQ(runs, 3);
}

TEST(Action, MayBeDestroyedByItsOwnEvents)
{
    auto action = std::make_unique<Action<Nothing>>(
        [](Nothing) { return SignalProducer<Nothing>::completingAfter([] {}); });
    auto const destroying = action->observe([&](auto const&) { action.reset(); });
    action->apply(Nothing {});
    EXPECT_EQ(action, nullptr);
}

TEST(CocoaAction, RunsItsCommandOnceForEachClickWithItsInput)
{
    int sum = 0;
    Action<int> const adding([&](int input) {
        return SignalProducer<Nothing>::completingAfter([&sum, input] { sum += input; });
    });
    CocoaAction const addFive(adding, 5);
    addFive.execute();
    addFive.execute();
    EXPECT_EQ(sum, 10);
}
