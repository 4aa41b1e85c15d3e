#include "support/Desk.h"

#include <QPushButton>

#include <gtest/gtest.h>

using namespace tensio;

TEST(Header, SavesAndPrintsBetweenSessionsAndShowsNameAndTime)
{
    Desk desk;
    EXPECT_EQ(desk.text("dateTimeLabel"), "2024/03/05 14:07:09") << "before any tick";
    desk.clock.date -= std::chrono::hours(5);
    desk.runLoop.advance(Seconds(1.0));
    EXPECT_EQ(desk.text("dateTimeLabel"), "2024/03/05 09:07:09");
    desk.manager.username.setValue("山田 花子");
    EXPECT_EQ(desk.text("nameLabel"), "山田 花子");

    auto const expectEnabled = [&](bool isEnabled, QString const& reason) {
        for (auto const* name : {"saveButton", "screenSaveButton", "printButton"}) {
            EXPECT_EQ(find(desk.window, name).isEnabled(), isEnabled) << name;
            EXPECT_EQ(find(desk.window, name).toolTip(), reason);
        }
    };
    for (bool const hasPressed : {false, true}) {
        expectEnabled(false, "測定がまだありません");
        desk.connect();
        desk.receive(std::vector(hasPressed ? 1U : 0U, 20.0));
        expectEnabled(false, "測定中は使えません。先に「終了」を押してください");
        desk.finish();
    }
    expectEnabled(true, QString());
    auto* const menu = find<QPushButton>(desk.window, "printButton").menu();
    EXPECT_TRUE(desk.command("一覧を印刷").associatedObjects().contains(menu));
    desk.click("saveButton");
    desk.click("screenSaveButton");
    EXPECT_EQ(desk.saving.log.size(), 3U);
}
