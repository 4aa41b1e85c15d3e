#include "support/Desk.h"

#include <QTest>

#include <gtest/gtest.h>

using namespace tensio;

TEST(TensioView, ScalesTheDesignUniformlyAndCentresIt)
{
    using Row = std::tuple<QSize, QRect, QSize>;
    Desk desk;
    EXPECT_TRUE(desk.window.screen()->availableGeometry().contains(desk.window.geometry()));
    desk.window.menuBar()->hide();
    desk.window.setMinimumSize(0, 0);
    for (auto const& [content, root, startButton] :
        {Row {{1040, 692}, {0, 0, 1040, 692}, {120, 52}},
            {{8000, 600}, {3549, 0, 902, 600}, {104, 45}},
            {{520, 692}, {0, 173, 520, 346}, {60, 26}}, {{1, 1}, {0, 0, 1, 1}, {0, 1}}}) {
        desk.window.resize(content);
        EXPECT_EQ(find<QWidget>(desk.window, "rootView").geometry(), root);
        EXPECT_EQ(find(desk.window, "startButton").size(), startButton);
        EXPECT_EQ(
            find(desk.window, "backButton").iconSize(), QSize(14, 18) * root.width() / 1040.0);
        desk.window.grab(); // for the sanitizers
    }
}

TEST(TensioView, LongestTextsFitAtEveryScale)
{
    Desk desk;
    auto& manager = desk.manager;
    desk.connect(80.0f);
    manager.username.setValue("東海林龍太郎左衛門尉");
    desk.press({999.9});
    desk.finish();
    manager.measurementList.measurements().front()->isCounted.setValue(true);
    manager.maxPressure.setValue(999.9f);
    click(desk.window, "startButton");
    for (auto const size :
        {QSize(350, 350), QSize(700, 700), QSize(1560, 1100), QSize(2080, 1450)}) {
        desk.window.resize(size);
        for (auto const* label : desk.window.findChildren<QLabel*>())
            EXPECT_LE(label->fontMetrics().horizontalAdvance(label->text()), label->width())
                << label->objectName().toStdString() << size.width();
        for (auto* item : desk.window.menuBar()->actions())
            EXPECT_LE(desk.window.menuBar()->actionGeometry(item).right(), desk.window.width());
    }
}

TEST(TensioView, KeysOpenTheDialogFinishAndTurnTheHistoryWhenThatIsPossible)
{
    Desk desk;
    auto const& cover = find<QWidget>(desk.window, "coverView");
    auto const press = [&](Qt::Key key, Qt::KeyboardModifier modifier = Qt::NoModifier) {
        QTest::keyClick(&desk.window, key, modifier);
        return desk.manager.sliceOfMeasurements.value();
    };
    EXPECT_FALSE(desk.command("測定を終了").isEnabled());
    press(Qt::Key_F5);
    EXPECT_EQ(desk.window.childAt(1, 1), &cover) << "before the menu bar";
    desk.window.resize(1500, 500);
    EXPECT_EQ(cover.geometry(), QRect(0, 0, 1500, 500)) << "beside the design, too";
    QApplication::activeModalWidget()->close();
    EXPECT_FALSE(cover.isVisible());
    QApplication::setActiveWindow(&desk.window);
    desk.connect();
    for (int measurement = 0; measurement < 7; ++measurement)
        desk.press({10.0});
    EXPECT_EQ(press(Qt::Key_Home).front()->number, 1);
    EXPECT_EQ(press(Qt::Key_End).back()->number, 7);
    press(Qt::Key_F5);
    EXPECT_FALSE(cover.isVisible());
    press(Qt::Key_F11);
    EXPECT_TRUE(desk.window.isFullScreen());
    press(Qt::Key_F5, Qt::ShiftModifier);
    EXPECT_FALSE(desk.manager.isMeasuring.value());
}

TEST(TensioView, MarksSimulatedReadingsUntilTheNextConnection)
{
    Desk desk;
    for (bool const isSimulated : {false, true, false}) {
        desk.port->isSimulator = isSimulated;
        desk.connect();
        desk.finish();
        EXPECT_EQ(desk.window.windowTitle().contains("模擬"), isSimulated);
        EXPECT_EQ(find<QWidget>(desk.window, "simulationLabel").isVisible(), isSimulated);
        EXPECT_EQ(desk.saving.isSimulated, isSimulated);
    }
}
