#include "feedback/Plotter.h"

#include <gtest/gtest.h>
#include <tuple>

using namespace tensio;

namespace {

struct Sweeps {
    Plotter plotter {{Qt::white, Qt::yellow}, 600.0, 400.0, 0.05f};

    Sweeps()
    {
        plotter.setUpperBoundPressure(80.0f);
        plotter.setTimeWindow(30);
    }

    void add(int count)
    {
        for (int point = 0; point < count; ++point)
            plotter.addPressurePoint(static_cast<float>(point % 70));
    }

    std::string counts() const
    {
        std::string text;
        for (auto const& path : plotter.paths())
            text += std::to_string(path.count) + " ";
        return text;
    }
};

} // namespace

TEST(Plotter, ASweepEndsWhereTheWindowIsFullOrElseAtTheCap)
{
    for (auto const& [before, after, counts] : std::vector<std::tuple<int, int, std::string>> {
             {0, 200, "200 0 "}, {150, 51, "200 1 "}, {500, 701, "1200 1 "}}) {
        Sweeps sweeps;
        sweeps.add(before);
        sweeps.plotter.setTimeWindow(10);
        sweeps.add(after);
        EXPECT_EQ(sweeps.counts(), counts);
    }
}

TEST(Plotter, ChangesOfScaleMoveEveryPointAndOutliveAReset)
{
    Sweeps sweeps;
    auto& plotter = sweeps.plotter;
    sweeps.add(700);
    EXPECT_EQ(plotter.point(plotter.path(), 60), QPointF(60.0, 30.0 * 5.0 + 2.0));
    plotter.setUpperBoundPressure(40.0f);
    plotter.setTimeWindow(60);
    EXPECT_EQ(plotter.point(plotter.path(), 60), QPointF(30.0, 30.0 * 10.0 + 2.0));
    plotter.reset();
    EXPECT_EQ(sweeps.counts(), "0 ");
    plotter.addPressurePoint(40.0f);
    EXPECT_EQ(plotter.point(plotter.path(), 0), QPointF(0.0, 402.0));
}
