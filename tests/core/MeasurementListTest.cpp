#include "core/MeasurementList.h"

#include "support/Reports.h"

#include <gtest/gtest.h>

using namespace tensio;

namespace {

std::vector<int> numbers(Measurements const& measurements)
{
    std::vector<int> numbers;
    for (auto const& measurement : measurements)
        numbers.push_back(measurement->number);
    return numbers;
}

struct Listening {
    MeasurementList list;
    std::vector<std::vector<int>> slices;
    Subscription subscription {list.signal().observeValues(
        [this](Measurements const& slice) { slices.push_back(numbers(slice)); })};

    void fill(int count)
    {
        for (auto const& measurement : finishedMeasurements(count))
            list.add(measurement);
        slices.clear();
    }
};

} // namespace

TEST(MeasurementList, ShowsTheFiveNewestAndScrollsWithinItsBounds)
{
    Listening listening;
    listening.fill(5);
    listening.list.setStartingIndex(1);
    EXPECT_TRUE(listening.slices.empty()) << "five measurements leave nothing to scroll";
    listening.list.reset();
    listening.fill(7);
    EXPECT_EQ(listening.list.startingIndex(), 2);
    for (int const index : {2, -1, 3, 0, 0, 1})
        listening.list.setStartingIndex(index);
    EXPECT_EQ(listening.slices, (std::vector<std::vector<int>> {{1, 2, 3, 4, 5}, {2, 3, 4, 5, 6}}));
    listening.list.add(finishedMeasurements(8).back());
    EXPECT_EQ(listening.slices.back(), (std::vector {4, 5, 6, 7, 8}));
}

TEST(MeasurementList, AveragesTheSelectionAndDisablesAllOthersAtThree)
{
    Listening listening;
    listening.fill(4);
    auto& list = listening.list;
    auto const& all = list.measurements();
    *all[3]->bestPressure = 40.5f;
    EXPECT_EQ(list.maxSelectedPressure(), 0.0f);
    for (std::size_t const index : {3U, 0U, 2U}) {
        EXPECT_TRUE(all[1]->isEnabled.value());
        all[index]->isCounted.setValue(true);
    }
    EXPECT_FLOAT_EQ(list.selectedAverage.value(), (10.0f + 12.0f + 40.5f) / 3.0f);
    EXPECT_EQ(
        std::pair(list.minSelectedPressure(), list.maxSelectedPressure()), std::pair(10.0f, 40.5f));
    EXPECT_EQ(numbers(list.counted()), (std::vector {1, 3, 4}));
    EXPECT_FALSE(all[1]->isEnabled.value());
    EXPECT_TRUE(all[0]->isEnabled.value());
    for (std::size_t const index : {0U, 2U, 3U})
        all[index]->isCounted.setValue(false);
    EXPECT_TRUE(all[1]->isEnabled.value());
    EXPECT_EQ(list.selectedAverage.value(), 0.0f);
}

TEST(MeasurementList, ResetPublishesTheEmptySliceAndForgetsTheSelection)
{
    Listening listening;
    listening.fill(7);
    auto const kept = listening.list.measurements().front();
    kept->isCounted.setValue(true);
    listening.list.reset();
    EXPECT_EQ(listening.slices, (std::vector<std::vector<int>> {{}}));
    EXPECT_EQ(listening.list.startingIndex(), 0);
    EXPECT_EQ(listening.list.selectedAverage.value(), 0.0f);
    auto const observing = listening.list.selectedAverage.observeChanges(
        [](float) { ADD_FAILURE() << "no longer observed"; });
    kept->isCounted.setValue(false);
}
