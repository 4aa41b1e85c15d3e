#include "support/Desk.h"

#include <QAccessible>

#include <gtest/gtest.h>

using namespace tensio;

TEST(InfoControls, ReadOutsShowOneDecimalTheFirstAtOnceThenTheNewestTwiceASecond)
{
    Desk desk;
    std::string shown;
    auto const receive = [&](float pressure, double pause) {
        desk.manager.currentPressure.setValue(pressure);
        if (auto const text = " " + desk.text("currentPressureLabel"); !shown.ends_with(text))
            shown += text;
        desk.runLoop.advance(Seconds(pause));
    };
    for (int reading = 1; reading <= 24; ++reading)
        receive(static_cast<float>(reading) + 0.06f, 0.05);
    EXPECT_EQ(shown, " 1.1 10.1 20.1");
    desk.runLoop.advance(Seconds(5.0));
    EXPECT_EQ(desk.text("currentPressureLabel"), "24.1");
    receive(99.96f, 0.0);
    EXPECT_TRUE(shown.ends_with("20.1 100.0"));
    desk.manager.maxPressure.setValue(50.0f);
    EXPECT_EQ(desk.text("maxPressureLabel"), "50.0");
}

TEST(InfoControls, ThePercentageIsAComboBoxToAScreenReader)
{
    Desk const desk;
    auto& percent = find<QWidget>(desk.window, "percentPopup");
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&percent)->role(), QAccessible::ComboBox);
}
