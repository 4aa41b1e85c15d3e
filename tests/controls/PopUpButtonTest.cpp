#include "controls/PopUpButton.h"

#include "controls/OrvMenuItemView.h"

#include <QAction>
#include <QImage>
#include <QMenu>
#include <QPainter>
#include <QTest>

#include <gtest/gtest.h>

using namespace tensio;

namespace {

QImage drawCell(bool isHighlighted)
{
    QImage picture(112, 28, QImage::Format_RGB32);
    picture.fill(Qt::blue);
    QPainter painter(&picture);
    OrvButtonCell {std::nullopt, QString(), isHighlighted}.drawBorderAndBackground(
        painter, QRectF(picture.rect()));
    return picture;
}

} // namespace

TEST(OrvButtonCell, TurnsItsArrowOverWhileHighlighted)
{
    auto const resting = drawCell(false);
    auto const highlighted = drawCell(true);
    // The arrow ends 3 points from the right edge and lies between y = 7 and y = 17.
    QPoint const topOfArrow(99, 7);
    QPoint const bottomOfArrow(108, 16);
    QColor const red(255, 0, 0);
    EXPECT_EQ(resting.pixelColor(topOfArrow), red);
    EXPECT_EQ(resting.pixelColor(bottomOfArrow), QColor(Qt::white));
    EXPECT_EQ(highlighted.pixelColor(bottomOfArrow), red);
    EXPECT_EQ(highlighted.pixelColor(topOfArrow), QColor(Qt::white));
    EXPECT_EQ(resting.pixelColor(0, 0), QColor(Qt::blue)) << "corners are round";
}

TEST(OrvMenuItemView, ShowsAHighlightBarAndPerformsItsActionOnceClosingTheMenu)
{
    QMenu menu;
    auto* item = menu.addAction(QStringLiteral("70%"));
    OrvMenuItemView row(*item, menu);
    EXPECT_EQ(row.size(), QSize(75, 25));
    EXPECT_EQ(row.grab().toImage().pixelColor(5, 12), QColor(Qt::white));
    menu.setActiveAction(item);
    auto const highlighted = row.grab().toImage();
    EXPECT_EQ(highlighted.pixelColor(5, 12), QColor(255, 0, 0));
    EXPECT_EQ(highlighted.pixelColor(1, 12), QColor(Qt::white));

    int performed = 0;
    QObject::connect(item, &QAction::triggered, [&] { ++performed; });
    menu.show();
    QTest::mouseRelease(&row, Qt::LeftButton);
    EXPECT_EQ(performed, 1);
    EXPECT_FALSE(menu.isVisible());
    EXPECT_EQ(menu.actions(), QList<QAction*> {item});
}
