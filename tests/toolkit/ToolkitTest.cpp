#include "toolkit/DesignFrame.h"
#include "toolkit/WaylandWindowSizes.h"
#include "toolkit/WindowSize.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QTest>
#include <QWidget>
#include <QWindow>

#include <gtest/gtest.h>

using namespace tensio;

TEST(WindowSize, FitsEveryScreen)
{
    // Screen and size at which the main window opens on it.
    std::vector<std::pair<QSize, QSize>> const rows {{{960, 540}, {706, 498}},
        {{1024, 768}, {1016, 704}}, {{1280, 720}, {976, 678}}, {{1920, 1080}, {1193, 821}},
        {{3840, 2160}, {2491, 1686}}};
    for (auto const& [screen, opening] : rows)
        EXPECT_EQ(openingSize({1040, 692}, screen, assumedFrame, 28), opening);
    for (auto const& [opener, width, scale] :
        {std::tuple {0.5, 1000, 1.0}, {1.5, 2000, 1.5}, {1.5, 508, 1.0}, {1.5, 258, 0.5}})
        EXPECT_EQ(dialogScale({500, 100}, opener, {width, 2000}), scale);
}

TEST(DesignFrame, PlacesLateComersAtTheScaleTheirTreeIsShownAt)
{
    QWidget root;
    root.setGeometry(0, 0, 100, 100);
    QWidget early(&root);
    early.setGeometry(10, 10, 21, 21);
    scaleDesign(root, 1.5);
    QWidget late(&root);
    setDesignFrame(late, QRectF(10.0, 10.0, 21.0, 21.0));
    EXPECT_EQ(early.geometry(), QRect(15, 15, 32, 32));
    EXPECT_EQ(late.geometry(), early.geometry());
    scaleDesign(root, 1.0);
    EXPECT_EQ(late.geometry(), QRect(10, 10, 21, 21));
}

TEST(MessageBoxes, ShowTheirWholeText)
{
    for (int const length : {5, 25, 40, 200}) {
        QMessageBox box(QMessageBox::Warning, {}, QString(length, u'測'));
        box.show();
        auto const& label = *box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
        auto const text = label.fontMetrics().boundingRect(
            {0, 0, label.width(), 1000}, label.wordWrap() ? Qt::TextWordWrap : 0, box.text());
        EXPECT_EQ(label.size().expandedTo(text.size()), label.size()) << length;
    }
}

TEST(WaylandWindowSizes, AWindowOfAFixedSizeTakesALargerOne)
{
    WaylandWindowSizes const granted(*qApp);
    QWidget widget;
    widget.setFixedSize(100, 100);
    widget.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&widget));
    EXPECT_GE(widget.windowHandle()->maximumWidth(), 8000);
    EXPECT_GE(widget.windowHandle()->maximumHeight(), 8000);
}
