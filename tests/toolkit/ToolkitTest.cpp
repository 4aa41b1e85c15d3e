#include "toolkit/Color.h"
#include "toolkit/DesignFrame.h"
#include "toolkit/GrantedSizes.h"
#include "toolkit/Picture.h"
#include "toolkit/StyleSheet.h"

#include <QApplication>
#include <QFontMetrics>
#include <QTest>
#include <QWidget>
#include <QWindow>

#include <gtest/gtest.h>
#include <stdexcept>

using namespace tensio;

TEST(Color, ReadsHexTextAndTakesEverythingElseForBlack)
{
    for (auto const* text : {"#e60012", "E60012", "#E60012"})
        EXPECT_EQ(colorFromHexString(QString::fromLatin1(text)), QColor(230, 0, 18));
    for (auto const* text : {"", "#", "e6001", "#e600123", "xyzxyz", "##e6001", "e60012\n"})
        EXPECT_EQ(colorFromHexString(QString::fromLatin1(text)), QColor(Qt::black)) << text;
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
    EXPECT_EQ(wholePixels(QRectF(1.344, 1.344, 40.312, 40.312)), QRect(1, 1, 41, 41));
    EXPECT_EQ(flipped(QRectF(1.0, 2.0, 3.0, 4.0), 100.0), QRectF(1.0, 94.0, 3.0, 4.0));
}

TEST(GrantedSizes, AWindowOfAFixedSizeTakesALargerOne)
{
    GrantedSizes const granted(*qApp);
    QWidget widget;
    widget.setFixedSize(100, 100);
    widget.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&widget));
    EXPECT_GE(widget.windowHandle()->maximumWidth(), 8000);
    EXPECT_GE(widget.windowHandle()->maximumHeight(), 8000);
}

TEST(StyleSheet, ScalesItsLengthsAndKeepsHairlines)
{
    EXPECT_TRUE(styleSheet(2.0).contains(QStringLiteral("font-size: 128px")));
    EXPECT_TRUE(styleSheet(0.1).contains(QStringLiteral("border: 1px solid")));
}

TEST(Picture, AMissingOneIsAFaultOfThePackage)
{
    EXPECT_THROW(Picture::named(QStringLiteral("no such picture")), std::runtime_error);
}

TEST(Typeface, DigitsDoNotJump)
{
    QFont font(QStringLiteral("Noto Sans CJK JP"));
    font.setPixelSize(64);
    font.setBold(true);
    QFontMetrics const metrics(font);
    for (char digit = '1'; digit <= '9'; ++digit)
        EXPECT_EQ(metrics.horizontalAdvance(QLatin1Char(digit)),
            metrics.horizontalAdvance(QLatin1Char('0')))
            << digit;
}
