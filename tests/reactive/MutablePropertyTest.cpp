#include "reactive/MutableProperty.h"

#include "reactive/combineLatest.h"

#include <gtest/gtest.h>
#include <optional>
#include <string>

using namespace tensio;

TEST(MutableProperty, PublishesEqualValuesUntilTheSubscriptionEnds)
{
    MutableProperty property(1);
    std::vector<int> values;
    std::vector<int> changes;
    auto const observing = property.observe([&](int value) { values.push_back(value); });
    auto observingChanges = property.observeChanges([&](int value) { changes.push_back(value); });
    property.setValue(1);
    property.setValue(2);
    observingChanges.end();
    property.setValue(3);
    EXPECT_EQ(values, (std::vector {1, 1, 2, 3}));
    EXPECT_EQ(changes, (std::vector {1, 2}));
}

TEST(MutableProperty, BindingTakesTheCurrentValueAndEveryNewOne)
{
    MutableProperty<std::string> source("old");
    MutableProperty<std::string> target("own");
    std::vector<std::string> seen;
    auto const observing = target.observeChanges([&](auto const& value) { seen.push_back(value); });
    auto binding = target.bindTo(source);
    source.setValue("new");
    binding.end();
    source.setValue("later");
    EXPECT_EQ(seen, (std::vector<std::string> {"old", "new"}));
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

TEST(MutableProperty, AnAssignmentInsideAnObserverNeverDeliversAnOldValueAfterANewOne)
{
    MutableProperty property(0);
    std::vector<int> later;
    auto const correcting = property.observeChanges([&](int value) {
        if (value > 5)
            property.setValue(5);
    });
    auto const observing = property.observeChanges([&](int value) { later.push_back(value); });
    property.setValue(9);
    EXPECT_EQ(later, (std::vector {5, 5}));
}

TEST(CombineLatest, YieldsTheLatestPairAtOnceAndWheneverEitherChanges)
{
    MutableProperty first(2);
    MutableProperty second(3);
    std::vector<int> products;
    auto combining
        = combineLatest<int, int>(first, second, [&](int a, int b) { products.push_back(a * b); });
    first.setValue(4);
    second.setValue(5);
    combining.end();
    first.setValue(100);
    EXPECT_EQ(products, (std::vector {6, 12, 20}));
}
