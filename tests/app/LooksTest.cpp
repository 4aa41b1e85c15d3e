#include "feedback/GaugeView.h"
#include "output/GridPrintView.h"
#include "panels/HistorySlice.h"
#include "support/Desk.h"
#include "support/Page.h"
#include "support/Reports.h"
#include "toolkit/DesignFrame.h"

#include <gtest/gtest.h>

using namespace tensio;

TEST(Looks, Gauge)
{
    GaugeView gauge;
    setDesignFrame(gauge, QRectF(0.0, 0.0, 64.0, 104.0));
    gauge.upperBoundPressure.setValue(20.0f);
    gauge.maxPressure.setValue(17.0f);
    gauge.targetPressure.setValue(12.0f);
    gauge.targetColor.setValue(QColor(0xe60012));
    gauge.currentPressure.setValue(8.0f);
    auto const picture = gauge.grab().toImage();
    for (auto const& [row, color] : {std::pair {1, "#000000"}, {13, "#434343"}, {15, "#4dd736"},
             {39, "#434343"}, {42, "#e60012"}, {61, "#434343"}, {63, "#009cff"}})
        EXPECT_EQ(colorAt(picture, 32, row), QColor(color)) << row;
    EXPECT_LT(colorAt(picture, 32, 25).red(), 0x40) << "a line of the scale";
}

TEST(Looks, TagsOfTheGaugeNeverHideEachOther)
{
    for (float const target : {39.0f, 40.0f, 41.0f}) {
        Desk desk;
        desk.connect(target);
        desk.receive({40.0});
        auto const maximumFrame = designFrame(find<QLabel>(desk.window, "gaugeMaxTag"));
        auto const targetFrame = designFrame(find<QLabel>(desk.window, "gaugeTargetTag"));
        // They share the line where it is one.
        EXPECT_LE((maximumFrame & targetFrame).height(), 4.0) << target;
        EXPECT_EQ(maximumFrame.bottom(), target > 40.0f ? 308.0 : 286.0) << target;
    }
}

TEST(Looks, HistoryTileWritesNumberPressureAndTimeInPlacesOfTheirOwn)
{
    Session session;
    QWidget strip;
    auto const draw = [&](int number, float best, int minutes, bool isSelected, bool isEnabled) {
        auto const measurement = std::make_shared<Measurement>(number);
        measurement->bestPressure = best;
        measurement->timeStamp = ManualClock().now() + std::chrono::minutes(minutes);
        measurement->isCounted.setValue(isSelected);
        measurement->isEnabled.setValue(isEnabled);
        return HistorySlice(session.manager, measurement, 0, strip).grab().toImage();
    };
    auto const usual = draw(1, 10.0f, 0, false, true);
    auto const ratio = usual.devicePixelRatio();
    // What differs, and where; 100.0 is squeezed, and the circle says that it may be selected.
    for (auto const& [other, area] :
        {std::pair {draw(99, 10.0f, 0, false, true), QRectF(6.0, 4.0, 36.0, 16.0)},
            {draw(1, 100.0f, 0, false, true), QRectF(6.0, 18.0, 47.0, 22.0)},
            {draw(1, 10.0f, 600, false, true), QRectF(6.0, 40.0, 66.0, 14.0)},
            {draw(1, 10.0f, 0, false, false), QRectF(36.0, 53.0, 10.0, 10.0)}}) {
        QRectF const place(difference(usual, other));
        EXPECT_TRUE(QRectF(area.topLeft() * ratio, area.size() * ratio).contains(place))
            << area.y();
    }
    EXPECT_EQ(colorAt(usual, 75, 10), QColor(Qt::white));
    EXPECT_EQ(colorAt(draw(1, 10.0f, 0, true, true), 75, 10), QColor(0xdff1ff));
}

TEST(Looks, PrintedBlock)
{
    GridPrintView grid("山田 花子", finishedMeasurements(1));
    grid.paginate({}, Page());
    EXPECT_EQ(Page(grid, 1).lines,
        (Page::Lines {"77.0 77.0 140.0 175.0 frame", "77.0 77.0 140.0 14.1 10.0 | 氏名：山田 花子",
            "77.0 91.1 140.0 14.1 10.0 | 測定日時：2024年 3月05日",
            "77.0 105.2 140.0 14.1 10.0 | 14:07:09",
            "77.0 126.4 140.0 14.1 10.0 | 計測回数：　1回目", "77.0 146.2 140.0 19.8 14.0 | 最大圧",
            "77.0 166.0 140.0 19.8 14.0 | 10.0 kPa", "77.0 185.8 140.0 19.8 14.0 | 目標圧",
            "77.0 205.5 140.0 19.8 14.0 | 30.0 kPa",
            "77.0 230.3 140.0 11.3 8.0 | ＜ORV舌圧測定器での測定結果＞"}));
}
