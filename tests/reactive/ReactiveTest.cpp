#include "reactive/Action.h"
#include "reactive/combineLatest.h"

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

TEST(MutableProperty, PublishesEqualValuesUntilTheSubscriptionEndsAndNoOldOneAfterANewOne)
{
    MutableProperty property(1);
    std::vector<int> changes;
    auto const correcting = property.observeChanges([&](int const& value) {
        if (value > 5) {
            property.setValue(5);
            EXPECT_EQ(value, 9) << "an observer keeps its argument";
        }
    });
    auto observing = property.observeChanges([&](int value) { changes.push_back(value); });
    property.setValue(1);
    property.setValue(9);
    observing.end();
    property.setValue(3);
    EXPECT_EQ(changes, (std::vector {1, 5, 5}));
}

TEST(MutableProperty, AnAssignmentDuringTheFirstCallIsDelivered)
{
    MutableProperty source(0);
    MutableProperty target(0);
    std::vector<int> seen;
    auto const increase = [&](int value) {
        seen.push_back(value);
        if (value % 3 < 2)
            source.setValue(value + 1);
    };
    source.observe(increase).end();
    source.setValue(3);
    auto const combining
        = combineLatest<int, int>(source, target, [&](int value, int) { increase(value); });
    auto const binding = target.bindTo(source);
    EXPECT_EQ(seen, (std::vector {0, 1, 2, 3, 4, 5, 5}));
    EXPECT_EQ(target.value(), 5);
}

TEST(MutableProperty, AnObserverMayEndOthersAddOthersAndDestroyTheProperty)
{
    std::optional<MutableProperty<int>> property(0);
    auto const unexpected = [](int) { ADD_FAILURE() << "called outside its subscription"; };
    int calls = 0;
    Subscription late;
    Subscription ended;
    auto const first = property->observeChanges([&](int) {
        ++calls;
        late = property->observeChanges(unexpected);
        ended.end();
        property.reset();
    });
    ended = property->observeChanges(unexpected);
    auto const last = property->observeChanges([&](int value) { calls += value; });
    property->setValue(10);
    EXPECT_EQ(calls, 11);
}
