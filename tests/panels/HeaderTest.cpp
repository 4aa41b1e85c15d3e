#include "panels/HeaderViewController.h"
#include "support/Session.h"

#include <QLabel>
#include <QMenu>
#include <QPushButton>

#include <gtest/gtest.h>

using namespace tensio;

TEST(Header, SavesAndPrintsBetweenSessionsOnceThereIsSomethingToSave)
{
    Session session;
    QWidget view;
    QMenu menu;
    HeaderViewController const header(session.manager, menu, view);
    auto const button
        = [&](char const* name) { return view.findChild<QPushButton*>(QString::fromLatin1(name)); };
    auto const expectEnabled = [&](bool isEnabled) {
        for (auto const* name : {"saveButton", "screenSaveButton", "printButton"})
            EXPECT_EQ(button(name)->isEnabled(), isEnabled) << name;
    };
    auto const finish = [&] { session.manager.disconnectAction.apply(Nothing {}); };
    expectEnabled(false);
    session.connect();
    finish();
    expectEnabled(false);
    session.connect();
    session.press({20.0});
    expectEnabled(false);
    finish();
    expectEnabled(true);
    EXPECT_EQ(button("printButton")->menu(), &menu);
    button("saveButton")->click();
    button("screenSaveButton")->click();
    EXPECT_EQ(session.saving.log.size(), 3U);
    session.connect();
    expectEnabled(false);
}

TEST(Header, ShowsTheNameAndTheRunningTime)
{
    Session session;
    session.clock.date += std::chrono::seconds(1);
    QWidget view;
    QMenu menu;
    HeaderViewController const header(session.manager, menu, view);
    auto const text = [&](char const* name) {
        return view.findChild<QLabel*>(QString::fromLatin1(name))->text();
    };
    EXPECT_EQ(text("dateTimeLabel"), QStringLiteral("2024/03/05 14:07:10")) << "before any tick";
    session.clock.date -= std::chrono::hours(5);
    session.runLoop.advance(Seconds(1.0));
    EXPECT_EQ(text("dateTimeLabel"), QStringLiteral("2024/03/05 09:07:10"));
    session.manager.username.setValue("山田 花子");
    EXPECT_EQ(text("nameLabel"), QStringLiteral("山田 花子"));
}
