#include "support/Desk.h"

#include <QScreen>

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
