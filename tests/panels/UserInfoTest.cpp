#include "panels/InfoControlsViewController.h"
#include "panels/UserInfoWindow.h"
#include "support/Session.h"
#include "support/Ui.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
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

    QLineEdit& name() const { return find<QLineEdit>(mainWindow, "nameInput"); }
    QLineEdit& pressure() const { return find<QLineEdit>(mainWindow, "pressureInput"); }
    UserInfoWindow& window() const { return find<UserInfoWindow>(mainWindow); }
    void click(char const* button) const { tensio::click(mainWindow, button); }
    void fill(QString const& nameText, QString const& pressureText) const
    {
        name().setText(nameText);
        pressure().setText(pressureText);
    }
    void open() const { session.port->delegate->serialPortWasOpened(); }
    bool isConnecting() const { return session.manager.connectAction.isExecuting(); }
    bool isShowing() const { return session.manager.isShowingPopup.value(); }
};

} // namespace

TEST(UserInfo, TypingReplacesTheLastNameAndEnterKeepsIt)
{
    Dialog dialog;
    dialog.click("cancelButton");
    dialog.session.manager.username.setValue("山田 花子");
    dialog.session.manager.defaultTargetPressure.setValue(40.0f);
    dialog.click("segueButton");
    QCoreApplication::processEvents();
    QTest::keyClicks(&dialog.name(), QStringLiteral("Taro"));
    EXPECT_EQ(dialog.name().text(), QStringLiteral("Taro"));
    EXPECT_EQ(dialog.pressure().text(), QStringLiteral("40.0"));
    QTest::keyClick(&dialog.window(), Qt::Key_Escape);
    EXPECT_FALSE(dialog.isShowing());
    dialog.click("segueButton");
    EXPECT_EQ(dialog.name().text(), QStringLiteral("山田 花子"));
    QTest::keyClick(&dialog.name(), Qt::Key_Return);
    EXPECT_TRUE(dialog.isConnecting());
}

TEST(UserInfo, StepsStayWithinBoundsAndLeaveOtherTextsAlone)
{
    Dialog dialog;
    for (auto const& [text, button, result] :
        {std::tuple {QStringLiteral("79.95"), "incPressureButton", QStringLiteral("80.0")},
            {QStringLiteral("10.05"), "decPressureButton", QStringLiteral("10.0")},
            {QStringLiteral("12,5"), "decPressureButton", QStringLiteral("12,5")}}) {
        dialog.fill(QString(), text);
        dialog.click(button);
        EXPECT_EQ(dialog.pressure().text(), result);
        EXPECT_EQ(dialog.window().focusWidget(), &dialog.pressure());
    }
}

TEST(UserInfo, OkCorrectsOrFocusesTheFirstWrongEntry)
{
    // Ten characters as the user sees them: a kanji, one of two units, a combining mark, a flag, a
    // family, a skin tone, a dakuten.
    auto const ten
        = QStringLiteral("山𠮷e\u0301🇯🇵👨‍👩‍👧👍🏽か\u3099一二三");
    struct Row {
        QString name;
        QString pressure;
        QString nameAfter;
        QString pressureAfter;
        char refused; // n, p or no entry
    };
    for (auto const& row : std::vector<Row> {
             {QString(), QStringLiteral("5"), QString(), QStringLiteral("5"), 'n'},
             {ten + QStringLiteral("👨‍👩‍👧"), QStringLiteral("5"), ten,
                 QStringLiteral("5"), 'n'},
             {ten, QStringLiteral("nan"), ten, QStringLiteral("nan"), 'p'},
             {ten, QStringLiteral("5"), ten, QStringLiteral("10.0"), 'p'},
             {ten, QStringLiteral("95"), ten, QStringLiteral("80.0"), 'p'},
             {ten, QStringLiteral("80"), ten, QStringLiteral("80"), ' '},
         }) {
        Dialog dialog;
        dialog.fill(row.name, row.pressure);
        dialog.click("okButton");
        EXPECT_EQ(dialog.name().text(), row.nameAfter);
        EXPECT_EQ(dialog.pressure().text(), row.pressureAfter);
        EXPECT_EQ(dialog.isConnecting(), row.refused == ' ');
        for (auto* input : {&dialog.name(), &dialog.pressure()}) {
            bool const isRefused = input->objectName().startsWith(QLatin1Char(row.refused));
            EXPECT_EQ(input->property("refused").toBool(), isRefused);
            EXPECT_TRUE(!isRefused || dialog.window().focusWidget() == input);
            input->setText(QStringLiteral("31"));
            EXPECT_FALSE(input->property("refused").toBool());
        }
    }
}

TEST(UserInfo, StoresTheEntriesWhenThePortOpensWhileTheDialogIsOpen)
{
    // What is edited while the port opens, and the target.
    for (auto const& [edited, target] : {std::pair {QStringLiteral("42.5"), 42.5f},
             {QStringLiteral("5"), 10.0f}, {QStringLiteral("12,5"), 0.0f}}) {
        Dialog dialog;
        dialog.session.ports.ports.clear();
        dialog.fill(QStringLiteral("山田"), QStringLiteral("40"));
        dialog.click("okButton");
        EXPECT_TRUE(dialog.isShowing()) << "the connection has failed";
        dialog.session.ports.ports.push_back(dialog.session.port);
        dialog.click("okButton");
        dialog.pressure().setText(edited);
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
    }
}

TEST(UserInfo, ANameStaysOneCellOfATable)
{
    Dialog dialog;
    auto& name = dialog.name();
    for (auto const& [pasted, after] :
        {std::pair {QStringLiteral("\n\t山田\r\n花子\r\n"), QStringLiteral("山田 花子")},
            {QStringLiteral("山田\u2028花子\u2029"), QStringLiteral("山田 花子")},
            {QStringLiteral(" 山田　花子 "), QStringLiteral(" 山田　花子 ")}}) {
        name.clear();
        QGuiApplication::clipboard()->setText(pasted);
        name.paste();
        EXPECT_EQ(name.text(), after);
    }
    name.setCursorPosition(3);
    QGuiApplication::clipboard()->setText(QStringLiteral("\r\n"));
    name.paste();
    EXPECT_EQ(name.cursorPosition(), 4);
}
