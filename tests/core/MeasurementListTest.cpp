#include "core/MeasurementList.h"

#include "support/Reports.h"

#include <gtest/gtest.h>

using namespace tensio;

namespace {

std::string numbers(Measurements const& measurements)
{
    std::string numbers;
    for (auto const& measurement : measurements)
        numbers += std::to_string(measurement->number) + " ";
    return numbers;
}

} // namespace

TEST(MeasurementList, PublishesTheFiveNewestAndScrollsWithinItsBounds)
{
    MeasurementList list;
    for (auto const& measurement : finishedMeasurements(7))
        list.add(measurement);
    std::string slices;
    auto const observing = list.signal().observeValues(
        [&](Measurements const& slice) { slices += numbers(slice) + "| "; });
    for (int const index : {2, -1, 3, 0, 0, 1, 2})
        list.setStartingIndex(index);
    list.add(finishedMeasurements(8).back());
    list.reset();
    EXPECT_EQ(slices, "1 2 3 4 5 | 2 3 4 5 6 | 3 4 5 6 7 | 4 5 6 7 8 | | ");
    EXPECT_EQ(list.startingIndex(), 0);
}

TEST(MeasurementList, AveragesTheSelectionAndDisablesAllOthersAtThree)
{
    MeasurementList list;
    EXPECT_EQ(list.maxSelectedPressure(), 0.0f);
    auto const all = finishedMeasurements(4);
    for (auto const& measurement : all)
        list.add(measurement);
    *all[3]->bestPressure = 40.5f;
    for (std::size_t const index : {3U, 0U, 2U}) {
        EXPECT_TRUE(all[1]->isEnabled.value());
        all[index]->isCounted.setValue(true);
    }
    EXPECT_FLOAT_EQ(list.selectedAverage.value(), (10.0f + 12.0f + 40.5f) / 3.0f);
    EXPECT_EQ(list.minSelectedPressure(), 10.0f);
    EXPECT_EQ(list.maxSelectedPressure(), 40.5f);
    EXPECT_EQ(numbers(list.counted()), "1 3 4 ");
    EXPECT_FALSE(all[1]->isEnabled.value());
    EXPECT_TRUE(all[0]->isEnabled.value());
    for (std::size_t const index : {0U, 2U, 3U})
        all[index]->isCounted.setValue(false);
    EXPECT_TRUE(all[1]->isEnabled.value());
    EXPECT_EQ(list.selectedAverage.value(), 0.0f);
    all[1]->isCounted.setValue(true);
    list.reset();
    EXPECT_EQ(list.selectedAverage.value(), 0.0f);
}
