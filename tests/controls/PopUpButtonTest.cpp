#include "controls/PopUpButton.h"

#include "controls/OrvMenuItemView.h"

#include <QMenu>
#include <QTest>

#include <gtest/gtest.h>

using namespace tensio;

TEST(PopUpButton, ARowFillsTheMenuAndIsChosenOnceByAClickThatClosesIt)
{
    PopUpButton button;
    for (auto const& title : {QStringLiteral("倍率"), QStringLiteral("80%"), QStringLiteral("70%")})
        button.addItem({title, title.left(2).toInt()});
    button.resize(112, 28);
    int chosen = 0;
    QObject::connect(&button, &PopUpButton::itemSelected, [&] { ++chosen; });
    button.menu()->popup(QPoint());
    auto const rows = button.menu()->findChildren<OrvMenuItemView*>();
    ASSERT_EQ(rows.size(), 2) << "the first item is the title";
    EXPECT_EQ(rows.at(1)->size(), button.size());
    QTest::mouseRelease(rows.at(1), Qt::LeftButton);
    EXPECT_EQ(chosen, 1);
    EXPECT_EQ(button.selectedItem()->tag, 70);
    EXPECT_FALSE(button.menu()->isVisible());
}
