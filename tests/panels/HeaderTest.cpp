#include "panels/HeaderViewController.h"
#include "support/Session.h"
#include "support/Ui.h"

#include <QMenu>
#include <QPushButton>

#include <gtest/gtest.h>

using namespace tensio;

TEST(Header, SavesAndPrintsBetweenSessionsAndShowsNameAndTime)
{
    Session session;
    QWidget view;
    session.clock.date += std::chrono::seconds(1);
    QMenu menu;
    HeaderViewController const header(session.manager, menu, view);
    auto const& time = find<QLabel>(view, "dateTimeLabel");
    EXPECT_EQ(time.text(), "2024/03/05 14:07:10") << "before any tick";
    session.clock.date -= std::chrono::hours(5);
    session.runLoop.advance(Seconds(1.0));
    EXPECT_EQ(time.text(), "2024/03/05 09:07:10");
    session.manager.username.setValue("山田 花子");
    EXPECT_EQ(textOf(view, "nameLabel"), "山田 花子");

    auto const expectEnabled = [&](bool isEnabled, QString const& reason) {
        for (auto const* name : {"saveButton", "screenSaveButton", "printButton"}) {
            EXPECT_EQ(find(view, name).isEnabled(), isEnabled) << name;
            EXPECT_EQ(find(view, name).toolTip(), reason);
        }
    };
    for (bool const hasPressed : {false, true}) {
        expectEnabled(false, "測定がまだありません");
        session.connect();
        session.receive(std::vector(hasPressed ? 1U : 0U, 20.0));
        expectEnabled(false, "測定中は使えません。先に「終了」を押してください");
        session.finish();
    }
    expectEnabled(true, QString());
    EXPECT_EQ(find<QPushButton>(view, "printButton").menu(), &menu);
    click(view, "saveButton");
    click(view, "screenSaveButton");
    EXPECT_EQ(session.saving.log.size(), 3U);
}
