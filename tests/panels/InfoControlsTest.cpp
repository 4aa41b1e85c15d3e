#include "controls/OrvMenuItemView.h"
#include "controls/PopUpButton.h"
#include "support/Desk.h"
#include "toolkit/ImageView.h"

#include <QMenu>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

using namespace tensio;

namespace {

struct Panel : Desk {
    void expectState(bool isMeasuring) const
    {
        EXPECT_EQ(find(window, "startButton").isEnabled(), !isMeasuring);
        EXPECT_EQ(find(window, "finishButton").isEnabled(), isMeasuring);
        EXPECT_EQ(find(window, "startButton").toolTip().toStdString(),
            isMeasuring ? "測定中です。先に「終了」を押してください" : "");
        EXPECT_EQ(find(window, "finishButton").toolTip().toStdString(),
            isMeasuring ? "" : "測定していません。「開始」で始めます");
        EXPECT_EQ(find<ImageView>(window, "statusImageView").picture().name(),
            isMeasuring ? "ind_on" : "ind_off");
    }
};

} // namespace

TEST(InfoControls, ReadOutsShowOneDecimalTheFirstAtOnceThenTheNewestTwiceASecond)
{
    Panel panel;
    std::string shown;
    auto const receive = [&](float pressure, double pause) {
        panel.manager.currentPressure.setValue(pressure);
        if (auto const text = " " + panel.text("currentPressureLabel"); !shown.ends_with(text))
            shown += text;
        panel.runLoop.advance(Seconds(pause));
    };
    for (int reading = 1; reading <= 24; ++reading)
        receive(static_cast<float>(reading) + 0.06f, 0.05);
    EXPECT_EQ(shown, " 1.1 10.1 20.1");
    panel.runLoop.advance(Seconds(5.0));
    EXPECT_EQ(panel.text("currentPressureLabel"), "24.1");
    receive(99.96f, 0.0);
    EXPECT_TRUE(shown.ends_with("20.1 100.0"));
    panel.manager.maxPressure.setValue(50.0f);
    EXPECT_EQ(panel.text("maxPressureLabel"), "50.0");
}

TEST(InfoControls, ButtonsStepTheTargetAndThePercentageScalesIt)
{
    Panel panel;
    panel.manager.targetPressure.setValue(30.0f);
    for (auto const* button :
        {"targetPressureUpButton", "targetPressureUpButton", "targetPressureDownButton"})
        panel.click(button);
    auto& percent = find<PopUpButton>(panel.window, "percentPopup");
    EXPECT_EQ(percent.text(), "100%");
    // In the menu's own event loop.
    QTimer::singleShot(0, percent.menu(), [&] {
        auto const rows = percent.menu()->findChildren<OrvMenuItemView*>();
        EXPECT_EQ(rows.size(), 10) << "from 100% to 10%";
        EXPECT_EQ(rows.at(3)->accessibleName(), "70%");
        QTest::mouseRelease(rows.at(3), Qt::LeftButton);
        EXPECT_FALSE(percent.menu()->isVisible());
    });
    QTest::keyClick(&percent, Qt::Key_Down);
    EXPECT_EQ(percent.text(), "70%");
    EXPECT_EQ(panel.text("basisLabel"), "基準 30.1 kPa × 70%");
    EXPECT_EQ(panel.text("targetPressureLabel"), "21.1");
    panel.click("segueButton");
    EXPECT_FALSE(find<QLabel>(panel.window, "percentNotice").isHidden());
    EXPECT_TRUE(find<QLabel>(panel.window, "percentNotice").text().contains(u"70"));
}

TEST(InfoControls, StartAsksBeforeItDiscardsMeasurements)
{
    Panel panel;
    panel.click("startButton");
    EXPECT_TRUE(panel.manager.isShowingPopup.value()) << "nothing to discard";
    EXPECT_TRUE(find<QLabel>(panel.window, "percentNotice").isHidden());
    find<QWidget>(panel.window, "UserInfo").close();
    panel.connect();
    panel.expectState(true);
    EXPECT_EQ(panel.window.focusWidget()->objectName(), "percentPopup");
    panel.press({10.0});
    find(panel.window, "finishButton").setFocus();
    panel.click("finishButton");
    panel.expectState(false);
    EXPECT_EQ(panel.window.focusWidget(), &find(panel.window, "startButton"));
    for (bool const isSure : {false, true}) {
        panel.alerts.answer = isSure ? 0 : 1;
        panel.click("startButton");
        EXPECT_EQ(panel.manager.isShowingPopup.value(), isSure);
    }
    EXPECT_EQ(panel.alerts.messages,
        std::vector<std::string>(2, "前回の舌圧測定データが削除されます。\nよろしいでしょうか？"));
}

TEST(InfoControls, ReportsAFailedConnectionBesideAnEmptyGraphAndALostOneOnce)
{
    Panel panel;
    auto& graph = find<QWidget>(panel.window, "graphView");
    auto const empty = graph.grab().toImage();
    panel.connect();
    panel.press({20.0});
    panel.finish();
    panel.ports.ports.clear();
    panel.alerts.whileOpen = [&] {
        EXPECT_EQ(graph.grab().toImage(), empty);
        EXPECT_EQ(panel.text("statusLabel"), "未接続");
        EXPECT_EQ(panel.text("hintLabel"), "測定器に接続できませんでした");
        panel.expectState(true);
    };
    panel.manager.connectAction.apply(Nothing {});
    panel.expectState(false);
    panel.alerts.whileOpen = [&] { panel.expectState(false); };
    panel.ports.ports.push_back(panel.port);
    panel.connect();
    panel.port->playLoss();
    EXPECT_EQ(panel.alerts.messages,
        (std::vector<std::string> {"COMポートがオープンできません。", "切断されました。"}));
}
