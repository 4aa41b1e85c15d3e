#include "app/MainWindowController.h"
#include "support/Session.h"
#include "toolkit/DesignFrame.h"

#include <QApplication>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>
#include <optional>

using namespace tensio;

namespace {

struct Window {
    Session session;
    QMenu printMenu;
    std::optional<MainWindowController> controller {
        std::in_place, session.manager, session.runLoop, session.alerts, printMenu};

    Window()
    {
        controller->fitToDesign();
        // Also sizes that the user cannot choose.
        controller->window().setMinimumSize(0, 0);
        controller->window().show();
    }

    QWidget& find(char const* name)
    {
        return *controller->window().findChild<QWidget*>(QString::fromLatin1(name));
    }
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
    Window window;
    for (auto const& [content, root, startButton] : rows) {
        window.controller->window().resize(content);
        EXPECT_EQ(window.find("rootView").geometry(), root);
        EXPECT_EQ(window.find("startButton").size(), startButton);
        window.controller->window().grab(); // for the sanitizers
    }
}

TEST(TensioView, LongestTextsFitAtEveryScale)
{
    Window window;
    auto& manager = window.session.manager;
    window.session.port->isSimulator = true;
    window.session.connect(80.0f);
    manager.username.setValue("東海林龍太郎左衛門尉");
    window.session.receive({999.9});
    window.session.runLoop.advance(Seconds(3.0));
    manager.disconnectAction.apply(Nothing {});
    manager.measurementList.measurements().front()->isCounted.setValue(true);
    manager.maxPressure.setValue(999.9f);
    static_cast<QPushButton&>(window.find("startButton")).click();
    for (auto const size :
        {QSize(350, 350), QSize(700, 700), QSize(1560, 1100), QSize(2080, 1450)}) {
        window.controller->window().resize(size);
        int texts = 0;
        for (auto const* label : window.controller->window().findChildren<QLabel*>()) {
            texts += label->isVisible() && !label->text().isEmpty() ? 1 : 0;
            EXPECT_LE(label->fontMetrics().horizontalAdvance(label->text()), label->width())
                << label->objectName().toStdString() << size.width();
        }
        EXPECT_GT(texts, 40);
    }
}

TEST(TensioView, DimsTheWindowWhileTheDialogIsOpen)
{
    Window window;
    auto& cover = window.find("coverView");
    EXPECT_FALSE(cover.isVisible());
    static_cast<QPushButton&>(window.find("startButton")).click();
    EXPECT_TRUE(cover.isVisible());
    window.controller->window().resize(1500, 500);
    EXPECT_EQ(cover.geometry(), QRect(0, 0, 1500, 500)) << "beside the design, too";
    window.find("UserInfo").close();
    EXPECT_FALSE(cover.isVisible());
}

TEST(TensioView, KeysStartFinishAndTurnTheHistoryWhenThatIsPossible)
{
    Window window;
    auto& menu = *window.controller->window().menuBar()->addMenu(QString());
    window.controller->addCommands(menu, menu);
    QApplication::setActiveWindow(&window.controller->window());
    auto& manager = window.session.manager;
    auto const press = [&](Qt::Key key, Qt::KeyboardModifier modifier = Qt::NoModifier) {
        QTest::keyClick(&window.controller->window(), key, modifier);
        return manager.sliceOfMeasurements.value();
    };
    EXPECT_FALSE(menu.actions()[1]->isEnabled());
    press(Qt::Key_F5);
    EXPECT_TRUE(manager.isShowingPopup.value());
    window.find("UserInfo").close();
    QApplication::setActiveWindow(&window.controller->window());
    window.session.connect();
    for (int measurement = 0; measurement < 7; ++measurement)
        window.session.press({10.0});
    EXPECT_EQ(press(Qt::Key_Home).front()->number, 1);
    EXPECT_EQ(press(Qt::Key_End).back()->number, 7);
    press(Qt::Key_F5);
    EXPECT_FALSE(manager.isShowingPopup.value());
    press(Qt::Key_F5, Qt::ShiftModifier);
    EXPECT_FALSE(manager.isMeasuring.value());
}

TEST(TensioView, MarksSimulatedReadingsUntilTheNextConnection)
{
    Window window;
    auto const expectMarked = [&](bool isMarked) {
        auto const title = window.controller->window().windowTitle();
        EXPECT_EQ(title.contains(QStringLiteral("模擬")), isMarked);
        EXPECT_EQ(window.find("simulationLabel").isVisible(), isMarked);
    };
    expectMarked(false);
    window.session.port->isSimulator = true;
    window.session.connect();
    window.session.manager.disconnectAction.apply(Nothing {});
    expectMarked(true);
    window.session.port->isSimulator = false;
    window.session.connect();
    expectMarked(false);
}

TEST(TensioView, MayGoInTheMiddleOfASessionWithTheDialogOpen)
{
    Window window;
    static_cast<QPushButton&>(window.find("startButton")).click();
    window.session.manager.connectAction.apply(Nothing {});
    window.controller.reset();
    window.session.port->delegate->serialPortWasOpened();
    window.session.receive({20.0});
    window.session.runLoop.advance(Seconds(3.0));
    EXPECT_EQ(window.session.bestPressures(), std::vector {20.0f});
}
