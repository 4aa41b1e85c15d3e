#include "panels/HeaderViewController.h"
#include "panels/UserInfoViewController.h"
#include "support/Session.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <functional>
#include <gtest/gtest.h>
#include <initializer_list>
#include <optional>

using namespace tensio;

namespace {

struct Dialog {
    Session session;
    QWidget mainWindow;
    std::optional<UserInfoViewController> controller;

    Dialog() { open(); }

    void open()
    {
        controller.emplace(session.manager, mainWindow);
        controller->show();
    }

    QLineEdit& input(char const* name) const
    {
        return *mainWindow.findChild<QLineEdit*>(QString::fromLatin1(name));
    }
    void click(char const* name) const
    {
        mainWindow.findChild<QPushButton*>(QString::fromLatin1(name))->click();
    }
    void fill(QString const& name, QString const& pressure) const
    {
        input("nameInput").setText(name);
        input("pressureInput").setText(pressure);
    }
    bool isConnecting() const { return session.manager.connectAction.isExecuting(); }
    QString focused() const
    {
        return mainWindow.findChild<QWidget*>(QStringLiteral("UserInfo"))
            ->focusWidget()
            ->objectName();
    }
    // The entries that stand out.
    QStringList refused() const
    {
        QStringList names;
        for (auto const* input : mainWindow.findChildren<QLineEdit*>()) {
            if (input->property("refused").toBool())
                names << input->objectName();
        }
        return names;
    }
};

struct Entry {
    QString name;
    QString pressure;
    QString nameAfter;
    QString pressureAfter;
    QString focusAfter;
};

} // namespace

TEST(UserInfo, StartsWithTheLastNameAndTheDefaultTarget)
{
    Dialog dialog;
    dialog.session.manager.username.setValue("山田 花子");
    dialog.session.manager.defaultTargetPressure.setValue(40.0f);
    dialog.open();
    EXPECT_EQ(dialog.input("nameInput").text(), QStringLiteral("山田 花子"));
    EXPECT_EQ(dialog.input("pressureInput").text(), QStringLiteral("40.0"));
    EXPECT_TRUE(dialog.session.manager.isShowingPopup.value());
    dialog.click("cancelButton");
    EXPECT_FALSE(dialog.session.manager.isShowingPopup.value());
    EXPECT_FALSE(dialog.isConnecting());
}

TEST(UserInfo, StepsStayWithinBoundsAndLeaveOtherTextsAlone)
{
    Dialog dialog;
    struct Row {
        QString text;
        char const* button;
        QString result;
    };
    std::vector<Row> const rows {{u"79.95"_qs, "incPressureButton", u"80.0"_qs},
        {u"80.0"_qs, "incPressureButton", u"80.0"_qs},
        {u"10.05"_qs, "decPressureButton", u"10.0"_qs},
        {u"30.0"_qs, "incPressureButton", u"30.1"_qs}, {u"nan"_qs, "incPressureButton", u"nan"_qs},
        {u"12,5"_qs, "decPressureButton", u"12,5"_qs}, {u"abc"_qs, "incPressureButton", u"abc"_qs}};
    for (auto const& [text, button, result] : rows) {
        dialog.fill(QString(), text);
        dialog.input("nameInput").setFocus();
        dialog.click(button);
        EXPECT_EQ(dialog.input("pressureInput").text(), result);
        EXPECT_EQ(dialog.focused(), QStringLiteral("pressureInput"));
    }
}

TEST(UserInfo, OkCorrectsOrFocusesTheFirstWrongEntry)
{
    auto const eleven = QStringLiteral("一二三四五六七八九十百");
    auto const family = QStringLiteral("👨‍👩‍👧が");
    std::vector<Entry> const entries {
        {QString(), u"5"_qs, QString(), u"5"_qs, u"nameInput"_qs},
        {eleven, u"5"_qs, eleven.left(10), u"5"_qs, u"nameInput"_qs},
        {family.repeated(6), u"30"_qs, family.repeated(5), u"30"_qs, u"nameInput"_qs},
        {u"山田"_qs, u"12,5"_qs, u"山田"_qs, u"12,5"_qs, u"pressureInput"_qs},
        {u"山田"_qs, QString(), u"山田"_qs, QString(), u"pressureInput"_qs},
        {u"山田"_qs, u"nan"_qs, u"山田"_qs, u"nan"_qs, u"pressureInput"_qs},
        {u"山田"_qs, u"5"_qs, u"山田"_qs, u"10.0"_qs, u"pressureInput"_qs},
        {u"山田"_qs, u"95"_qs, u"山田"_qs, u"80.0"_qs, u"pressureInput"_qs},
    };
    for (auto const& entry : entries) {
        Dialog dialog;
        dialog.fill(entry.name, entry.pressure);
        dialog.click("okButton");
        EXPECT_EQ(dialog.input("nameInput").text(), entry.nameAfter);
        EXPECT_EQ(dialog.input("pressureInput").text(), entry.pressureAfter);
        EXPECT_EQ(dialog.focused(), entry.focusAfter);
        EXPECT_EQ(dialog.refused(), QStringList {entry.focusAfter});
        EXPECT_FALSE(dialog.isConnecting());
        dialog.fill(QStringLiteral("花"), QStringLiteral("31"));
        EXPECT_TRUE(dialog.refused().isEmpty());
    }
}

TEST(UserInfo, ClosesAndStoresTheEntriesWhenThePortHasOpened)
{
    Dialog dialog;
    dialog.fill(QStringLiteral("山田"), QStringLiteral("42.5"));
    dialog.click("okButton");
    EXPECT_TRUE(dialog.session.manager.isShowingPopup.value());
    dialog.session.port->delegate->serialPortWasOpened();
    EXPECT_FALSE(dialog.session.manager.isShowingPopup.value());
    EXPECT_EQ(dialog.session.manager.username.value(), "山田");
    EXPECT_EQ(dialog.session.manager.targetPressure.value(), 42.5f);
}

TEST(UserInfo, EditingWhileThePortOpensGivesNoTargetOutOfBounds)
{
    struct Row {
        QString edited;
        float target;
    };
    // A connection starts without a target.
    for (auto const& [edited, target] : std::vector<Row> {{u"50"_qs, 50.0f}, {u"5"_qs, 10.0f},
             {u"1e9"_qs, 80.0f}, {u"nan"_qs, 0.0f}, {u"12,5"_qs, 0.0f}}) {
        Dialog dialog;
        dialog.fill(QStringLiteral("山田"), QStringLiteral("42.5"));
        dialog.click("okButton");
        dialog.input("pressureInput").setText(edited);
        dialog.session.port->delegate->serialPortWasOpened();
        EXPECT_EQ(dialog.session.manager.targetPressure.value(), target) << edited.toStdString();
    }
}

TEST(UserInfo, StaysOpenWhenTheConnectionFailsAndMayBeTriedAgain)
{
    Dialog dialog;
    dialog.session.ports.ports.clear();
    dialog.fill(QStringLiteral("山田"), QStringLiteral("42.5"));
    dialog.click("okButton");
    EXPECT_TRUE(dialog.session.manager.isShowingPopup.value());
    EXPECT_TRUE(dialog.session.manager.username.value().empty());
    dialog.session.ports.ports.push_back(dialog.session.port);
    dialog.click("okButton");
    dialog.session.port->delegate->serialPortWasOpened();
    EXPECT_EQ(dialog.session.manager.username.value(), "山田");
}

TEST(UserInfo, AConnectionThatOpensAfterTheDialogHasGoneReachesNobody)
{
    Dialog dialog;
    dialog.fill(QStringLiteral("山田"), QStringLiteral("42.5"));
    dialog.click("okButton");
    dialog.controller.reset();
    EXPECT_FALSE(dialog.session.manager.isShowingPopup.value());
    dialog.session.port->delegate->serialPortWasOpened();
    EXPECT_TRUE(dialog.session.manager.username.value().empty());
}

TEST(UserInfo, EnterIsOkAndEscapeIsCancel)
{
    Dialog dialog;
    auto* const window = dialog.mainWindow.findChild<QWidget*>(QStringLiteral("UserInfo"));
    dialog.fill(QStringLiteral("山田"), QStringLiteral("5"));
    QTest::keyClick(&dialog.input("nameInput"), Qt::Key_Return);
    EXPECT_EQ(dialog.input("pressureInput").text(), QStringLiteral("10.0"));
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_FALSE(dialog.session.manager.isShowingPopup.value());
}

TEST(UserInfo, ANameStaysOneCellOfATableHoweverItGetsIn)
{
    struct Row {
        QString before; // with a | where the cursor is
        QString entered;
        QString after;
    };
    std::vector<Row> const rows {{u"|"_qs, u"山田 花子\t"_qs, u"山田 花子|"_qs},
        {u"|"_qs, u"山田 花子\r\n"_qs, u"山田 花子|"_qs},
        {u"|"_qs, u"\n\t山田\n\n"_qs, u"山田|"_qs}, {u"|"_qs, u"山田\t花子"_qs, u"山田 花子|"_qs},
        {u"|"_qs, u"山田\r\n花子\t"_qs, u"山田 花子|"_qs},
        {u"|"_qs, u"山田\u2028花子\u2029"_qs, u"山田 花子|"_qs}, {u"|"_qs, u"\t"_qs, u"|"_qs},
        {u"|"_qs, u" 山田　花子 "_qs, u" 山田　花子 |"_qs},
        {u"山田|花子"_qs, u"\r\n"_qs, u"山田 |花子"_qs},
        {u"|花子"_qs, u"\t山田\r\n"_qs, u"山田 |花子"_qs}, {u"山田|"_qs, u"\t\t"_qs, u"山田|"_qs}};
    Dialog dialog;
    auto& name = dialog.input("nameInput");
    auto const paste = [&](QString const& text) {
        QGuiApplication::clipboard()->setText(text);
        name.paste();
    };
    auto const compose = [&](QString const& text) {
        QInputMethodEvent event;
        event.setCommitString(text);
        QApplication::sendEvent(&name, &event);
    };
    for (auto const& [before, entered, after] : rows) {
        for (auto const& enter :
            std::initializer_list<std::function<void(QString const&)>> {paste, compose}) {
            name.setText(QString(before).remove(u'|'));
            name.setCursorPosition(static_cast<int>(before.indexOf(u'|')));
            enter(entered);
            EXPECT_EQ(name.text().insert(name.cursorPosition(), u'|'), after);
        }
    }
    name.clear();
    QTest::keyClicks(&name, QStringLiteral("a\tb"));
    EXPECT_EQ(name.text(), QStringLiteral("ab"));
}

TEST(UserInfo, TenCharactersAreTenAsTheUserSeesThem)
{
    // One character each: a kanji, one of two units, a combining mark, a flag, a family, a skin
    // tone, a dakuten.
    for (auto const* text :
        {u"山", u"𠮷", u"e\u0301", u"🇯🇵", u"👨‍👩‍👧", u"👍🏽", u"か\u3099"}) {
        auto const character = QString::fromUtf16(text);
        for (int const count : {1, 10, 11, 400}) {
            Dialog dialog;
            dialog.fill(character.repeated(count), QStringLiteral("30"));
            dialog.click("okButton");
            EXPECT_EQ(dialog.isConnecting(), count <= 10) << character.toStdString() << count;
            EXPECT_EQ(dialog.input("nameInput").text(), character.repeated(std::min(count, 10)));
        }
    }
}

TEST(UserInfo, SurvivesAMegabytePastedForAName)
{
    Dialog dialog;
    dialog.input("nameInput").clear();
    QGuiApplication::clipboard()->setText(QStringLiteral("山").repeated(1'000'000));
    dialog.input("nameInput").paste();
    EXPECT_FALSE(dialog.mainWindow.grab().isNull());
    dialog.input("pressureInput").setText(QStringLiteral("80"));
    dialog.click("okButton");
    EXPECT_EQ(dialog.input("nameInput").text(), QStringLiteral("山").repeated(10));
    dialog.click("okButton");
    EXPECT_TRUE(dialog.isConnecting());
    auto const calls = dialog.session.port->calls;
    dialog.click("okButton");
    EXPECT_EQ(dialog.session.port->calls, calls) << "a second OK while it connects does nothing";
}

TEST(Header, SavesBetweenSessionsOnceThereIsSomethingToSave)
{
    Session session;
    QWidget view;
    HeaderViewController const header(session.manager, view);
    auto& save = *view.findChild<QPushButton*>(QStringLiteral("saveButton"));
    auto& saveScreen = *view.findChild<QPushButton*>(QStringLiteral("screenSaveButton"));
    auto const expectEnabled = [&](bool isEnabled) {
        EXPECT_EQ(save.isEnabled(), isEnabled);
        EXPECT_EQ(saveScreen.isEnabled(), isEnabled);
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
    save.click();
    saveScreen.click();
    EXPECT_EQ(session.saving.log.size(), 3U);
    session.connect();
    expectEnabled(false);
}

TEST(Header, ShowsTheNameAndTheRunningTime)
{
    Session session;
    QWidget view;
    HeaderViewController const header(session.manager, view);
    auto const text = [&](char const* name) {
        return view.findChild<QLabel*>(QString::fromLatin1(name))->text();
    };
    EXPECT_EQ(text("dateTimeLabel"), QStringLiteral("2024/03/05 14:07:09"));
    session.clock.date -= std::chrono::hours(5);
    session.runLoop.advance(Seconds(1.0));
    EXPECT_EQ(text("dateTimeLabel"), QStringLiteral("2024/03/05 09:07:09"));
    session.manager.username.setValue("山田 花子");
    EXPECT_EQ(text("nameLabel"), QStringLiteral("山田 花子"));
}
