#include "controls/PopUpButton.h"
#include "panels/InfoControlsViewController.h"
#include "support/Session.h"
#include "toolkit/DesignFrame.h"
#include "toolkit/ImageView.h"

#include <QLabel>
#include <QMenu>
#include <QTest>

#include <gtest/gtest.h>

using namespace tensio;

namespace {

struct Panel {
    Session session;
    QWidget window;
    QWidget view {&window};
    InfoControlsViewController controller {session.manager, session.runLoop, session.alerts, view};
    std::vector<std::string>& messages {session.alerts.messages};

    template<typename T>
    T& find(char const* name) const
    {
        return *window.findChild<T*>(QString::fromLatin1(name));
    }
    QString text(char const* name) const { return find<QLabel>(name).text(); }
    void click(char const* name) const { find<QAbstractButton>(name).click(); }
    bool isDialogOpen() const { return session.manager.isShowingPopup.value(); }

    void expectState(bool isMeasuring) const
    {
        EXPECT_EQ(find<QAbstractButton>("startButton").isEnabled(), !isMeasuring);
        EXPECT_EQ(find<QAbstractButton>("finishButton").isEnabled(), isMeasuring);
        EXPECT_EQ(find<ImageView>("statusImageView").picture().name(),
            isMeasuring ? QStringLiteral("ind_on") : QStringLiteral("ind_off"));
    }
};

} // namespace

TEST(InfoControls, ReadOutsShowOneDecimalAtACalmRate)
{
    Panel panel;
    panel.session.manager.targetPressure.setValue(40.0f);
    panel.session.manager.targetPressurePercent.setValue(0.8f);
    EXPECT_EQ(panel.text("targetPressureLabel"), QStringLiteral("32.0"));
    EXPECT_EQ(panel.text("currentPressureLabel"), QStringLiteral("0.0"));
    panel.session.manager.currentPressure.setValue(12.34f);
    EXPECT_EQ(panel.text("currentPressureLabel"), QStringLiteral("12.3"));
    panel.session.manager.currentPressure.setValue(99.96f);
    EXPECT_EQ(panel.text("currentPressureLabel"), QStringLiteral("12.3"));
    panel.session.manager.maxPressure.setValue(50.0f);
    EXPECT_EQ(panel.text("maxPressureLabel"), QStringLiteral("50.0"));
    panel.session.runLoop.advance(Seconds(0.5));
    EXPECT_EQ(panel.text("currentPressureLabel"), QStringLiteral("100.0"));
}

TEST(InfoControls, TheDecimalPointStandsStill)
{
    Panel panel;
    scaleDesign(panel.view, 1.0);
    panel.window.show();
    auto const pictureOfDecimal = [&](float pressure) {
        panel.session.runLoop.advance(Seconds(1.0));
        panel.session.manager.currentPressure.setValue(pressure);
        auto& label = panel.find<QLabel>("currentPressureLabel");
        int const width = label.fontMetrics().horizontalAdvance(QStringLiteral(".5"));
        return label.grab(QRect(label.width() - width, 0, width, label.height())).toImage();
    };
    auto const oneDigit = pictureOfDecimal(5.5f);
    EXPECT_EQ(pictureOfDecimal(25.5f), oneDigit);
    EXPECT_EQ(pictureOfDecimal(125.5f), oneDigit);
    EXPECT_NE(pictureOfDecimal(25.6f), oneDigit);
}

TEST(InfoControls, ButtonsStepTheTargetAndThePercentageScalesIt)
{
    Panel panel;
    panel.session.manager.targetPressure.setValue(30.0f);
    panel.click("targetPressureUpButton");
    panel.click("targetPressureUpButton");
    panel.click("targetPressureDownButton");
    EXPECT_EQ(panel.text("targetPressureLabel"), QStringLiteral("30.1"));

    auto& percent = panel.find<PopUpButton>("percentPopup");
    EXPECT_EQ(percent.items().size(), 11U);
    EXPECT_EQ(percent.text(), QStringLiteral("100%"));
    percent.menu()->actions().at(3)->trigger();
    EXPECT_EQ(percent.text(), QStringLiteral("70%"));
    EXPECT_FLOAT_EQ(panel.session.manager.targetPressurePercent.value(), 0.7f);
}

TEST(InfoControls, StartAsksBeforeItDiscardsMeasurements)
{
    Panel panel;
    panel.click("startButton");
    EXPECT_TRUE(panel.isDialogOpen());
    EXPECT_TRUE(panel.messages.empty());
    panel.find<QWidget>("UserInfo").close();

    panel.session.connect();
    panel.expectState(true);
    EXPECT_EQ(panel.window.focusWidget()->objectName(), QStringLiteral("percentPopup"));
    panel.session.press({10.0});
    panel.find<QWidget>("finishButton").setFocus();
    panel.click("finishButton");
    panel.expectState(false);
    EXPECT_EQ(panel.window.focusWidget()->objectName(), QStringLiteral("startButton"));
    EXPECT_TRUE(panel.messages.empty());
    panel.session.alerts.answer = 1;
    panel.click("startButton");
    EXPECT_FALSE(panel.isDialogOpen());
    panel.session.alerts.answer = 0;
    panel.click("startButton");
    EXPECT_TRUE(panel.isDialogOpen());
    std::string const question = "前回の舌圧測定データが削除されます。\nよろしいでしょうか？";
    EXPECT_EQ(panel.messages, (std::vector {question, question}));
}

TEST(InfoControls, ReportsAFailedAndALostConnectionOnce)
{
    Panel panel;
    panel.session.ports.ports.clear();
    bool wasMeasuringDuringAlert = false;
    panel.session.alerts.whileOpen
        = [&] { wasMeasuringDuringAlert = panel.session.manager.isMeasuring.value(); };
    panel.session.manager.connectAction.apply(Nothing {});
    EXPECT_EQ(panel.messages, std::vector<std::string> {"COMポートがオープンできません。"});
    EXPECT_TRUE(wasMeasuringDuringAlert);
    panel.expectState(false);

    panel.messages.clear();
    panel.session.ports.ports.push_back(panel.session.port);
    panel.session.connect();
    panel.session.receive({20.0});
    panel.session.port->playLoss();
    EXPECT_EQ(panel.messages, std::vector<std::string> {"切断されました。"});
    panel.expectState(false);
    EXPECT_EQ(panel.session.bestPressures(), std::vector {20.0f});
}
