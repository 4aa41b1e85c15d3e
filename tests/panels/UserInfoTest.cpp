#include "support/Desk.h"

#include <QClipboard>
#include <QLineEdit>

#include <gtest/gtest.h>

using namespace tensio;

TEST(UserInfo, RefusesANameThatShowsNothing)
{
    Desk desk;
    desk.click("startButton");
    auto& name = find<QLineEdit>(desk.window, "nameInput");
    for (char const* blank : {"", "\u3000 \u00a0\u2003\u200b"}) {
        name.setText(blank);
        desk.click("okButton");
        EXPECT_EQ(name.text(), "");
        EXPECT_TRUE(name.property("refused").toBool());
        EXPECT_FALSE(desk.manager.isMeasuring.value());
    }
}

TEST(UserInfo, CountsCharactersAsTheUserSeesThem)
{
    Desk desk;
    desk.click("startButton");
    auto& name = find<QLineEdit>(desk.window, "nameInput");
    // A kanji of two units, a combining mark, a flag, a family, a skin tone, a dakuten.
    QString const ten = "山𠮷e\u0301🇯🇵👨‍👩‍👧👍🏽か\u3099一二三";
    name.setText(ten + "四");
    desk.click("okButton");
    EXPECT_EQ(name.text(), ten);
    desk.click("okButton");
    EXPECT_TRUE(desk.manager.connectAction.isExecuting());
}

TEST(UserInfo, ANameStaysOneCellOfATable)
{
    Desk desk;
    desk.click("startButton");
    auto& name = find<QLineEdit>(desk.window, "nameInput");
    name.setText("花子\u2028");
    name.home(false);
    QGuiApplication::clipboard()->setText("\n\t山田\r\n");
    name.paste();
    EXPECT_EQ(name.text(), "山田 花子");
}
