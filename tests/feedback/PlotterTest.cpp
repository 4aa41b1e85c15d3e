#include "feedback/Plotter.h"

#include <gtest/gtest.h>

using namespace tensio;

namespace {

Plotter makePlotter(std::int64_t timeWindow = 30)
{
    Plotter plotter({Qt::white, Qt::yellow}, 600.0, 400.0, 0.05f);
    plotter.setUpperBoundPressure(80.0f);
    plotter.setTimeWindow(timeWindow);
    return plotter;
}

void add(Plotter& plotter, int count)
{
    for (int point = 0; point < count; ++point)
        plotter.addPressurePoint(static_cast<float>(point % 70));
}

std::vector<std::size_t> counts(Plotter const& plotter)
{
    std::vector<std::size_t> counts;
    for (auto const& path : plotter.paths())
        counts.push_back(path.count);
    return counts;
}

} // namespace

TEST(Plotter, BeginsTheNextSweepWhenOneIsFull)
{
    auto plotter = makePlotter(10);
    add(plotter, 200);
    EXPECT_EQ(counts(plotter), (std::vector<std::size_t> {200, 0}));
    plotter.addPressurePoint(40.0f);
    EXPECT_EQ(plotter.point(plotter.paths()[1], 0), QPointF(0.0, 202.0));
    EXPECT_EQ(plotter.point(plotter.paths()[0], 1), QPointF(3.0, 7.0));
}

TEST(Plotter, ASweepLongerThanAShrunkWindowGoesOnToTheCap)
{
    auto plotter = makePlotter(30);
    add(plotter, 500);
    plotter.setTimeWindow(10);
    add(plotter, 701);
    EXPECT_EQ(counts(plotter), (std::vector<std::size_t> {1200, 1}));

    auto shorter = makePlotter(30);
    add(shorter, 150);
    shorter.setTimeWindow(10);
    add(shorter, 51);
    EXPECT_EQ(counts(shorter), (std::vector<std::size_t> {200, 1}));
}

TEST(Plotter, ChangesOfScaleMoveEveryPointAndOutliveAReset)
{
    auto plotter = makePlotter(30);
    add(plotter, 700);
    auto const path = plotter.paths()[1];
    auto const before = plotter.point(path, 50);
    plotter.setUpperBoundPressure(40.0f);
    plotter.setTimeWindow(60);
    EXPECT_EQ(plotter.point(path, 50), QPointF(before.x() / 2.0, before.y() * 2.0 - 2.0));
    plotter.reset();
    EXPECT_EQ(counts(plotter), std::vector<std::size_t> {0});
    plotter.addPressurePoint(40.0f);
    EXPECT_EQ(plotter.point(plotter.paths().front(), 0), QPointF(0.0, 402.0));
}
