#include "toolkit/WindowSize.h"

#include <QLabel>
#include <QMessageBox>

#include <gtest/gtest.h>

using namespace tensio;

TEST(WindowSize, FitsEveryScreen)
{
    // Screen and size at which the main window opens on it.
    std::vector<std::pair<QSize, QSize>> const rows {{{960, 540}, {706, 498}},
        {{1024, 768}, {1016, 704}}, {{1280, 720}, {976, 678}}, {{1920, 1080}, {1193, 821}},
        {{3840, 2160}, {2491, 1686}}};
    for (auto const& [screen, opening] : rows)
        EXPECT_EQ(openingSize({1040, 692}, screen, 28), opening);
    for (auto const& [opener, width, scale] :
        {std::tuple {0.5, 1000, 1.0}, {1.5, 2000, 1.5}, {1.5, 508, 1.0}, {1.5, 258, 0.5}})
        EXPECT_EQ(dialogScale({500, 100}, opener, {width, 2000}), scale);
}

TEST(MessageBoxes, AreNoWiderThanTheScreen)
{
    QMessageBox box(QMessageBox::Warning, {}, QString(200, u'測'));
    box.show();
    EXPECT_LE(box.findChild<QLabel*>("qt_msgbox_label")->geometry().right(), box.width());
}
