#include "support/Desk.h"
#include "toolkit/DesignFrame.h"

#include <QLabel>
#include <QMenuBar>
#include <QTest>

#include <gtest/gtest.h>

using namespace tensio;

namespace {

struct Window : Desk {
    QWidget& view(char const* name) { return find<QWidget>(window, name); }
};

} // namespace

TEST(TensioView, ScalesTheDesignUniformlyAndCentresIt)
{
    struct Row {
        QSize content;
        QRect root;
        QSize startButton;
    };
    std::vector<Row> const rows {{{1040, 692}, {0, 0, 1040, 692}, {120, 52}},
        {{2080, 692}, {520, 0, 1040, 692}, {120, 52}}, {{520, 692}, {0, 173, 520, 346}, {60, 26}},
        {{1560, 1038}, {0, 0, 1560, 1038}, {180, 78}}, {{1, 1}, {0, 0, 1, 1}, {0, 1}},
        {{8000, 600}, {3549, 0, 902, 600}, {104, 45}}};
    Window test;
    test.window.menuBar()->hide();
    test.window.setMinimumSize(0, 0);
    for (auto const& [content, root, startButton] : rows) {
        test.window.resize(content);
        EXPECT_EQ(test.view("rootView").geometry(), root);
        EXPECT_EQ(test.view("startButton").size(), startButton);
        test.window.grab(); // for the sanitizers
    }
}

TEST(TensioView, LongestTextsFitAtEveryScale)
{
    Window test;
    auto& manager = test.manager;
    test.port->isSimulator = true;
    test.connect(80.0f);
    manager.username.setValue("東海林龍太郎左衛門尉");
    test.receive({999.9});
    test.runLoop.advance(Seconds(3.0));
    manager.disconnectAction.apply(Nothing {});
    manager.measurementList.measurements().front()->isCounted.setValue(true);
    manager.maxPressure.setValue(999.9f);
    click(test.window, "startButton");
    for (auto const size :
        {QSize(350, 350), QSize(700, 700), QSize(1560, 1100), QSize(2080, 1450)}) {
        test.window.resize(size);
        int texts = 0;
        for (auto const* label : test.window.findChildren<QLabel*>()) {
            texts += label->isVisible() && !label->text().isEmpty() ? 1 : 0;
            EXPECT_LE(label->fontMetrics().horizontalAdvance(label->text()), label->width())
                << label->objectName().toStdString() << size.width();
        }
        EXPECT_GT(texts, 40);
    }
}

TEST(TensioView, DimsTheWindowWhileTheDialogIsOpen)
{
    Window test;
    auto& cover = test.view("coverView");
    EXPECT_FALSE(cover.isVisible());
    click(test.window, "startButton");
    EXPECT_TRUE(cover.isVisible());
    test.window.resize(1500, 500);
    EXPECT_EQ(cover.geometry(), QRect(0, 0, 1500, 500)) << "beside the design, too";
    test.view("UserInfo").close();
    EXPECT_FALSE(cover.isVisible());
}

TEST(TensioView, KeysStartFinishAndTurnTheHistoryWhenThatIsPossible)
{
    Window test;
    auto const& finish = *test.commands(QStringLiteral("測定を終了")).value(0);
    auto& manager = test.manager;
    auto const press = [&](Qt::Key key, Qt::KeyboardModifier modifier = Qt::NoModifier) {
        QTest::keyClick(&test.window, key, modifier);
        return manager.sliceOfMeasurements.value();
    };
    EXPECT_FALSE(finish.isEnabled());
    press(Qt::Key_F5);
    EXPECT_TRUE(manager.isShowingPopup.value());
    test.view("UserInfo").close();
    QApplication::setActiveWindow(&test.window);
    test.connect();
    for (int measurement = 0; measurement < 7; ++measurement)
        test.press({10.0});
    EXPECT_EQ(press(Qt::Key_Home).front()->number, 1);
    EXPECT_EQ(press(Qt::Key_End).back()->number, 7);
    press(Qt::Key_F5);
    EXPECT_FALSE(manager.isShowingPopup.value());
    press(Qt::Key_F5, Qt::ShiftModifier);
    EXPECT_FALSE(manager.isMeasuring.value());
}

TEST(TensioView, MarksSimulatedReadingsUntilTheNextConnection)
{
    Window test;
    auto const expectMarked = [&](bool isMarked) {
        auto const title = test.window.windowTitle();
        EXPECT_EQ(title.contains(QStringLiteral("模擬")), isMarked);
        EXPECT_EQ(test.view("simulationLabel").isVisible(), isMarked);
    };
    expectMarked(false);
    test.port->isSimulator = true;
    test.connect();
    test.finish();
    expectMarked(true);
    test.port->isSimulator = false;
    test.connect();
    expectMarked(false);
}

TEST(TensioView, MayGoInTheMiddleOfASessionWithTheDialogOpen)
{
    Session session;
    QMenu printMenu;
    std::optional<MainWindowController> controller(
        std::in_place, session.manager, session.runLoop, session.alerts, printMenu);
    controller->window().show();
    click(controller->window(), "startButton");
    session.manager.connectAction.apply(Nothing {});
    controller.reset();
    session.port->delegate->serialPortWasOpened();
    session.receive({20.0});
    session.runLoop.advance(Seconds(3.0));
    EXPECT_EQ(session.bestPressures(), std::vector {20.0f});
}
