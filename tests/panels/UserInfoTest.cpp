#include "panels/UserInfoWindow.h"
#include "support/Desk.h"

#include <QClipboard>
#include <QLineEdit>
#include <QTest>

#include <gtest/gtest.h>

using namespace tensio;

namespace {

// The dialog as the control panel opens it.
struct Dialog : Desk {
    Dialog() { click("segueButton"); }

    QLineEdit& name() const { return find<QLineEdit>(window, "nameInput"); }
    QLineEdit& pressure() const { return find<QLineEdit>(window, "pressureInput"); }
    UserInfoWindow& frame() const { return find<UserInfoWindow>(window); }
    void fill(std::string const& nameText, char const* pressureText) const
    {
        name().setText(QString::fromStdString(nameText));
        pressure().setText(pressureText);
    }
    std::string entries() const
    {
        return QString("%1|%2").arg(name().text(), pressure().text()).toStdString();
    }
    bool isConnecting() const { return manager.connectAction.isExecuting(); }
    bool isShowing() const { return manager.isShowingPopup.value(); }
};

} // namespace

TEST(UserInfo, TypingReplacesTheLastNameAndEnterKeepsIt)
{
    Dialog dialog;
    auto& manager = dialog.manager;
    dialog.click("cancelButton");
    manager.username.setValue("山田 花子");
    manager.defaultTargetPressure.setValue(40.0f);
    dialog.click("segueButton");
    QCoreApplication::processEvents();
    QTest::keyClicks(&dialog.name(), "Taro");
    EXPECT_EQ(dialog.entries(), "Taro|40.0");
    QTest::keyClick(&dialog.frame(), Qt::Key_Escape);
    EXPECT_FALSE(dialog.isShowing());
    dialog.click("segueButton");
    QTest::keyClick(&dialog.name(), Qt::Key_Return);
    EXPECT_TRUE(dialog.isConnecting());
    dialog.name().setText("Taro");
    dialog.click("cancelButton");
    EXPECT_FALSE(dialog.isConnecting());
    EXPECT_EQ(manager.username.value(), "山田 花子");
}

TEST(UserInfo, StepsStayWithinBoundsAndLeaveOtherTextsAlone)
{
    Dialog dialog;
    for (auto const& [text, button, result] : {std::tuple {"79.95", "incPressureButton", "|80.0"},
             {"10.05", "decPressureButton", "|10.0"}, {"12,5", "decPressureButton", "|12,5"}}) {
        dialog.fill("", text);
        dialog.click(button);
        EXPECT_EQ(dialog.entries(), result);
        EXPECT_EQ(dialog.frame().focusWidget(), &dialog.pressure());
    }
    dialog.fill("", "30");
    QApplication::setActiveWindow(&dialog.frame());
    QTest::keyClick(&dialog.pressure(), Qt::Key_Up);
    auto& button = find(dialog.frame(), "decPressureButton");
    button.setFocus();
    QTest::keyClick(&button, Qt::Key_Up);
    EXPECT_EQ(dialog.entries(), "|30.2");
    QTest::keyClick(&dialog.pressure(), Qt::Key_Down);
    EXPECT_EQ(dialog.entries(), "|30.1");
}

TEST(UserInfo, OkCorrectsOrFocusesTheFirstWrongEntry)
{
    // Ten characters as the user sees them: a kanji, one of two units, a combining mark, a flag, a
    // family, a skin tone, a dakuten.
    std::string const ten = "山𠮷e\u0301🇯🇵👨‍👩‍👧👍🏽か\u3099一二三";
    // Entries, what becomes of them, and the first letter of the refused one.
    for (auto const& [name, pressure, after, refused] :
        std::vector<std::tuple<std::string, char const*, std::string, char>> {{"", "5", "|5", 'n'},
            {"\u3000 \u00a0\u2003\u200b", "5", "|5", 'n'},
            {ten + "👨‍👩‍👧", "5", ten + "|5", 'n'}, {ten, "nan", ten + "|nan", 'p'},
            {ten, "5", ten + "|10.0", 'p'}, {ten, "95", ten + "|80.0", 'p'},
            {ten, "80", ten + "|80", ' '}}) {
        Dialog dialog;
        dialog.fill(name, pressure);
        dialog.click("okButton");
        EXPECT_EQ(textOf(dialog.frame(), "pressureHint"), "10.0〜80.0 kPa");
        EXPECT_EQ(dialog.entries(), after);
        EXPECT_EQ(dialog.isConnecting(), refused == ' ');
        EXPECT_EQ(textOf(dialog.frame(), "nameHint"),
            dialog.name().text().isEmpty() ? "氏名を入力してください（10文字まで）" : "10文字まで");
        for (auto* input : {&dialog.name(), &dialog.pressure()}) {
            bool const isRefused = input->objectName().startsWith(QLatin1Char(refused));
            EXPECT_EQ(input->property("refused").toBool(), isRefused);
            EXPECT_TRUE(!isRefused || dialog.frame().focusWidget() == input);
            input->setText("31");
            EXPECT_FALSE(input->property("refused").toBool());
            EXPECT_EQ(textOf(dialog.frame(), "nameHint"), "10文字まで");
        }
    }
}

TEST(UserInfo, StoresTheEntriesWhenThePortOpensWhileTheDialogIsOpen)
{
    // What is edited while the port opens, and the target.
    for (auto const& [edited, target] : {std::pair {"42.5", 42.5f}, {"5", 10.0f}, {"12,5", 0.0f}}) {
        Dialog dialog;
        dialog.fill("山田", "40");
        dialog.ports.ports.clear();
        dialog.click("okButton");
        dialog.ports.ports.push_back(dialog.port);
        EXPECT_TRUE(dialog.isShowing()) << "the connection has failed";
        dialog.click("okButton");
        QHideEvent minimised;
        QSpontaneKeyEvent::setSpontaneous(&minimised);
        qApp->notify(&dialog.frame(), &minimised);
        EXPECT_TRUE(dialog.isShowing());
        dialog.fill("花子", edited);
        dialog.port->delegate->serialPortWasOpened();
        EXPECT_FALSE(dialog.isShowing());
        EXPECT_EQ(dialog.manager.username.value(), "花子");
        EXPECT_EQ(dialog.manager.targetPressure.value(), target) << edited;
    }
}

TEST(UserInfo, ANameStaysOneCellOfATable)
{
    Dialog dialog;
    dialog.name().setText("花子\u2028");
    dialog.name().home(false);
    QGuiApplication::clipboard()->setText("\n\t山田\r\n");
    dialog.name().paste();
    EXPECT_EQ(dialog.name().text(), "山田 花子");
}
