#include "reactive/combineLatest.h"

#include <gtest/gtest.h>
#include <optional>

using namespace tensio;

TEST(MutableProperty, PublishesEqualValuesUntilTheSubscriptionEndsAndNoOldOneAfterANewOne)
{
    MutableProperty property(1);
    std::vector<int> changes;
    auto const correcting = property.observeChanges([&](int value) {
        if (value > 5)
            property.setValue(5);
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
