#include "reactive/Action.h"

#include <gtest/gtest.h>
#include <optional>

using namespace tensio;

namespace {

// An action whose run stays at its first value until the test ends it.
struct Running {
    std::optional<Observer<int, int>> run;
    Action<int, int, int> action {[this](int input) {
        return SignalProducer<int, int>([this, input](auto const& observer) {
            run = observer;
            observer.sendValue(input);
        });
    }};
};

} // namespace

TEST(Action, RunsOneAtATimeAndMayBeRunAgainByAListenerToItsFailure)
{
    Running running;
    std::vector<int> values;
    auto const listening = running.action.observe([&](auto const& event) {
        if (auto const* value = std::get_if<ValueEvent<int>>(&event))
            values.push_back(value->value);
        else if (auto const* failure = std::get_if<FailedEvent<int>>(&event))
            running.action.apply(failure->error);
    });
    EXPECT_TRUE(running.action.apply(1));
    EXPECT_FALSE(running.action.apply(2));
    running.run->sendFailed(3);
    running.run->sendInterrupted();
    EXPECT_TRUE(running.action.apply(5));
    EXPECT_EQ(values, (std::vector {1, 3, 5}));
}

TEST(Action, DeliversNoValueOfARunThatAnEarlierListenerHasEndedAndMayBeDestroyedByItsEvents)
{
    auto running = std::make_unique<Running>();
    auto const ending
        = running->action.observe([&](auto const&) { running->run->sendCompleted(); });
    std::vector<std::size_t> received;
    auto const listening = running->action.observe([&](auto const& event) {
        received.push_back(event.index());
        running.reset();
    });
    running->action.apply(1);
    EXPECT_EQ(received, (std::vector<std::size_t> {2}));
    EXPECT_EQ(running, nullptr);
}
