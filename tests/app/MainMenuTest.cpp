#include "core/Utf16.h"
#include "support/Desk.h"
#include "support/PdfText.h"

#include <QMenu>
#include <QMenuBar>

#include <algorithm>
#include <gtest/gtest.h>
#include <set>

using namespace tensio;

namespace {

struct Menus : Desk {
    // Those with which the user can save or print now.
    std::size_t enabledCommands() const
    {
        std::size_t count = 0;
        for (auto const* action : commands({})) {
            bool const isCommand = action->text().contains(QStringLiteral("保存("))
                || action->text().contains(QStringLiteral("を印刷("));
            count += isCommand && action->isEnabled() ? 1U : 0U;
        }
        return count;
    }

    void measureOnce()
    {
        connect();
        press({20.0});
        finish();
    }
    MutableProperty<bool>& isCounted() const
    {
        return manager.measurementList.measurements()[0]->isCounted;
    }
};

} // namespace

TEST(MainMenu, EnablesItsCommandsAsTheSessionAllows)
{
    Menus menus;
    EXPECT_EQ(menus.enabledCommands(), 0U) << "nothing measured";
    menus.connect();
    menus.press({20.0});
    EXPECT_EQ(menus.enabledCommands(), 0U) << "measuring";
    EXPECT_TRUE(menus.isSleepInhibited);
    menus.finish();
    EXPECT_EQ(menus.enabledCommands(), 6U) << "nothing selected";
    EXPECT_FALSE(menus.isSleepInhibited);
    menus.isCounted().setValue(true);
    EXPECT_EQ(menus.enabledCommands(), 8U);
    menus.isCounted().setValue(false);
    EXPECT_EQ(menus.enabledCommands(), 6U);
    menus.connect();
    EXPECT_EQ(menus.enabledCommands(), 0U) << "measuring again";
}

TEST(MainMenu, RunsEachCommandOfTheDelegate)
{
    Menus menus;
    menus.port->isSimulator = true;
    menus.measureOnce();
    menus.isCounted().setValue(true);
    menus.saving.answer = "/folder/file";
    menus.saving.clipboard = "picture";
    auto const choose = [&](QString const& title) { menus.commands(title).value(0)->trigger(); };
    auto const csv = [](std::string const& part) { return encodeUtf16(part).substr(2); };
    struct Row {
        QString title;
        std::string panel;
        std::string written; // part of the file
    };
    std::vector<Row> const rows {{QStringLiteral("CSVを"), "panel csv", csv("1回目")},
        {QStringLiteral("選択した測定のCSV"), "panel csv", csv("①")},
        {QStringLiteral("一覧をPDF"), "panel pdf", "1 回目 20.0 kPa 30.0 kPa"},
        {QStringLiteral("グリッドをPDF"), "panel pdf", "計測回数： 1回目"},
        {QStringLiteral("画面を"), "panel png", "picture"}};
    for (auto const& [title, panel, written] : rows) {
        menus.saving.log.clear();
        choose(title);
        menus.runLoop.advance(Seconds(0.5));
        EXPECT_EQ(std::ranges::count(menus.saving.log, panel), 1) << title.toStdString();
        auto const& file = menus.saving.written;
        EXPECT_NE((panel == "panel pdf" ? pdfText(file) : file).find(written), std::string::npos)
            << title.toStdString() << (panel == "panel pdf" ? pdfText(file) : "");
    }
    for (auto const& [title, button] : {std::pair {"一覧を印刷", "listButton"},
             {"グリッドを印刷", "gridButton"}, {"選択した測定を印刷", "selectedButton"}}) {
        choose(QString::fromUtf8(title));
        auto& preview = *QApplication::activeModalWidget();
        EXPECT_TRUE(find(preview, button).isChecked()) << title;
        preview.close();
        QCoreApplication::processEvents();
    }
}

TEST(MainMenu, HasNoShortcutOrMnemonicTwice)
{
    Desk const desk;
    std::set<QString> shortcuts;
    for (auto const* item : desk.window.menuBar()->actions()) {
        std::set<QChar> mnemonics;
        for (auto const* action : item->menu()->actions()) {
            auto const at = action->text().indexOf(u'&');
            EXPECT_TRUE(at < 0 || mnemonics.insert(action->text()[at + 1]).second)
                << action->text().toStdString();
            auto const shortcut = action->shortcut().toString();
            EXPECT_TRUE(shortcut.isEmpty() || shortcuts.insert(shortcut).second);
        }
    }
}
