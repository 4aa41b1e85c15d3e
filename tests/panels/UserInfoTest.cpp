#include "panels/InfoControlsViewController.h"
#include "panels/UserInfoWindow.h"
#include "support/Session.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>
#include <optional>

using namespace tensio;

namespace {

// The dialog as the control panel opens it.
struct Dialog {
    Session session;
    QWidget mainWindow;
    std::optional<InfoControlsViewController> panel {
        std::in_place, session.manager, session.runLoop, session.alerts, mainWindow};

    Dialog() { click("segueButton"); }

    QLineEdit& input(char const* name) const
    {
        return *mainWindow.findChild<QLineEdit*>(QString::fromLatin1(name));
    }
    UserInfoWindow& window() const { return *mainWindow.findChild<UserInfoWindow*>(); }
    void click(char const* name) const
    {
        mainWindow.findChild<QPushButton*>(QString::fromLatin1(name))->click();
    }
    void fill(QString const& name, QString const& pressure) const
    {
        input("nameInput").setText(name);
        input("pressureInput").setText(pressure);
    }
    void open() const { session.port->delegate->serialPortWasOpened(); }
    bool isConnecting() const { return session.manager.connectAction.isExecuting(); }
    bool isShowing() const { return session.manager.isShowingPopup.value(); }
    // The entries that are highlighted.
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

} // namespace

TEST(UserInfo, TypingReplacesTheLastNameAndEnterKeepsIt)
{
    Dialog dialog;
    dialog.click("cancelButton");
    dialog.session.manager.username.setValue("山田 花子");
    dialog.session.manager.defaultTargetPressure.setValue(40.0f);
    for (auto const& typed : {QString(), QStringLiteral("Taro")}) {
        dialog.click("segueButton");
        QCoreApplication::processEvents();
        QTest::keyClicks(&dialog.input("nameInput"), typed);
        EXPECT_EQ(dialog.input("nameInput").text(),
            typed.isEmpty() ? QStringLiteral("山田 花子") : typed);
        EXPECT_EQ(dialog.input("pressureInput").text(), QStringLiteral("40.0"));
        QTest::keyClick(&dialog.window(), Qt::Key_Escape);
        EXPECT_FALSE(dialog.isShowing());
    }
    dialog.click("segueButton");
    QTest::keyClick(&dialog.input("nameInput"), Qt::Key_Return);
    EXPECT_TRUE(dialog.isConnecting());
}

TEST(UserInfo, StepsStayWithinBoundsAndLeaveOtherTextsAlone)
{
    Dialog dialog;
    struct Row {
        QString text;
        char const* button;
        QString result;
    };
    for (auto const& [text, button, result] :
        std::vector<Row> {{u"79.95"_qs, "incPressureButton", u"80.0"_qs},
            {u"80.0"_qs, "incPressureButton", u"80.0"_qs},
            {u"10.05"_qs, "decPressureButton", u"10.0"_qs},
            {u"30.0"_qs, "incPressureButton", u"30.1"_qs},
            {u"nan"_qs, "incPressureButton", u"nan"_qs},
            {u"12,5"_qs, "decPressureButton", u"12,5"_qs}}) {
        dialog.fill(QString(), text);
        dialog.input("nameInput").setFocus();
        dialog.click(button);
        EXPECT_EQ(dialog.input("pressureInput").text(), result);
        EXPECT_EQ(dialog.window().focusWidget(), &dialog.input("pressureInput"));
    }
}

TEST(UserInfo, OkCorrectsOrFocusesTheFirstWrongEntry)
{
    // Ten characters as the user sees them: a kanji, one of two units, a combining mark, a flag, a
    // family, a skin tone, a dakuten.
    auto const ten
        = QStringLiteral("山𠮷e\u0301🇯🇵👨‍👩‍👧👍🏽か\u3099一二三");
    struct Entry {
        QString name;
        QString pressure;
        QString nameAfter;
        QString pressureAfter;
        QString refused;
    };
    for (auto const& entry : std::vector<Entry> {
             {QString(), u"5"_qs, QString(), u"5"_qs, u"nameInput"_qs},
             {ten + u"👨‍👩‍👧"_qs, u"5"_qs, ten, u"5"_qs, u"nameInput"_qs},
             {ten, u"12,5"_qs, ten, u"12,5"_qs, u"pressureInput"_qs},
             {ten, QString(), ten, QString(), u"pressureInput"_qs},
             {ten, u"nan"_qs, ten, u"nan"_qs, u"pressureInput"_qs},
             {ten, u"5"_qs, ten, u"10.0"_qs, u"pressureInput"_qs},
             {ten, u"95"_qs, ten, u"80.0"_qs, u"pressureInput"_qs},
             {ten, u"80"_qs, ten, u"80"_qs, QString()},
         }) {
        Dialog dialog;
        dialog.fill(entry.name, entry.pressure);
        dialog.click("okButton");
        EXPECT_EQ(dialog.input("nameInput").text(), entry.nameAfter);
        EXPECT_EQ(dialog.input("pressureInput").text(), entry.pressureAfter);
        EXPECT_EQ(dialog.refused().join(u' '), entry.refused);
        EXPECT_EQ(dialog.isConnecting(), entry.refused.isEmpty());
        if (!entry.refused.isEmpty()) {
            EXPECT_EQ(dialog.window().focusWidget()->objectName(), entry.refused);
        }
        dialog.fill(QStringLiteral("花"), QStringLiteral("31"));
        EXPECT_TRUE(dialog.refused().isEmpty());
    }
}

TEST(UserInfo, StoresTheEntriesWhenThePortOpensWhileTheDialogIsOpen)
{
    struct Row {
        QString edited; // while the port opens
        float target;
    };
    for (auto const& [edited, target] : std::vector<Row> {{u"42.5"_qs, 42.5f}, {u"5"_qs, 10.0f},
             {u"1e9"_qs, 80.0f}, {u"nan"_qs, 0.0f}, {u"12,5"_qs, 0.0f}}) {
        Dialog dialog;
        dialog.session.ports.ports.clear();
        dialog.fill(QStringLiteral("山田"), QStringLiteral("40"));
        dialog.click("okButton");
        EXPECT_TRUE(dialog.isShowing()) << "the connection has failed";
        dialog.session.ports.ports.push_back(dialog.session.port);
        dialog.click("okButton");
        dialog.input("pressureInput").setText(edited);
        QHideEvent minimised;
        QSpontaneKeyEvent::setSpontaneous(&minimised);
        qApp->notify(&dialog.window(), &minimised);
        EXPECT_TRUE(dialog.isShowing());
        dialog.open();
        EXPECT_FALSE(dialog.isShowing());
        EXPECT_EQ(dialog.session.manager.username.value(), "山田");
        EXPECT_EQ(dialog.session.manager.targetPressure.value(), target) << edited.toStdString();
    }
}

TEST(UserInfo, StoresNothingOnceItHasClosedOrGone)
{
    for (bool const isClosed : {true, false}) {
        Dialog dialog;
        dialog.fill(QStringLiteral("山田"), QStringLiteral("42.5"));
        dialog.click("okButton");
        if (isClosed)
            dialog.click("cancelButton");
        else
            dialog.panel.reset();
        EXPECT_FALSE(dialog.isShowing());
        EXPECT_EQ(dialog.isConnecting(), !isClosed);
        if (!isClosed)
            dialog.open();
        EXPECT_TRUE(dialog.session.manager.username.value().empty());
        EXPECT_EQ(dialog.session.manager.targetPressure.value(), 0.0f);
        QCoreApplication::processEvents();
        EXPECT_TRUE(dialog.mainWindow.findChildren<UserInfoWindow*>().isEmpty());
    }
}

TEST(UserInfo, ANameStaysOneCellOfATable)
{
    struct Row {
        QString before; // with a | where the cursor is
        QString pasted;
        QString after;
    };
    Dialog dialog;
    auto& name = dialog.input("nameInput");
    for (auto const& [before, pasted, after] :
        std::vector<Row> {{u"|"_qs, u"\n\t山田 花子\r\n"_qs, u"山田 花子|"_qs},
            {u"|"_qs, u"山田\r\n花子\t"_qs, u"山田 花子|"_qs},
            {u"|"_qs, u"山田\u2028花子\u2029"_qs, u"山田 花子|"_qs},
            {u"|"_qs, u" 山田　花子 "_qs, u" 山田　花子 |"_qs},
            {u"山田|花子"_qs, u"\r\n"_qs, u"山田 |花子"_qs}, {u"|"_qs, u"\t"_qs, u"|"_qs}}) {
        name.setText(QString(before).remove(u'|'));
        name.setCursorPosition(static_cast<int>(before.indexOf(u'|')));
        QGuiApplication::clipboard()->setText(pasted);
        name.paste();
        EXPECT_EQ(name.text().insert(name.cursorPosition(), u'|'), after);
    }
}
