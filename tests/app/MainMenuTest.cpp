#include "app/MainMenu.h"

#include "core/Utf16.h"
#include "output/GridPrintView.h"
#include "output/ListPrintView.h"
#include "support/Session.h"

#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

#include <algorithm>
#include <gtest/gtest.h>
#include <set>

using namespace tensio;

namespace {

struct Menus : ReportPrinter {
    Session session;
    QMenu defaultTargetMenu;
    QMenu printMenu;
    QMainWindow window;
    std::vector<ReportKind> printed;
    AppDelegate delegate {session.manager, session.runLoop, defaultTargetMenu, *this};
    MainMenu mainMenu {window, defaultTargetMenu, printMenu, delegate, session.manager};

    void print(ReportKind kind) override { printed.push_back(kind); }

    // Those with which the user can save or print now, by the beginning of their titles.
    std::size_t enabledCommands()
    {
        std::size_t count = 0;
        for (auto const* menu :
            {window.findChild<QMenu*>(QStringLiteral("fileMenu")), &printMenu}) {
            for (auto const* action : menu->actions())
                count += action->isEnabled() && action->text().contains(u'…') ? 1U : 0U;
        }
        return count;
    }

    void choose(QString const& title)
    {
        for (auto* action : window.findChildren<QAction*>() + printMenu.actions()) {
            if (action->text().startsWith(title))
                action->trigger();
        }
    }
};

} // namespace

TEST(MainMenu, EnablesItsCommandsAsTheSessionAllows)
{
    Menus menus;
    EXPECT_EQ(menus.enabledCommands(), 0U) << "nothing measured";
    menus.session.connect();
    menus.session.press({20.0});
    EXPECT_EQ(menus.enabledCommands(), 0U) << "measuring";
    menus.session.manager.disconnectAction.apply(Nothing {});
    EXPECT_EQ(menus.enabledCommands(), 6U) << "nothing selected";
    auto const measurement = menus.session.manager.measurementList.measurements()[0];
    measurement->isCounted.setValue(true);
    EXPECT_EQ(menus.enabledCommands(), 8U);
    measurement->isCounted.setValue(false);
    EXPECT_EQ(menus.enabledCommands(), 6U);
    menus.session.connect();
    EXPECT_EQ(menus.enabledCommands(), 0U) << "measuring again";
}

TEST(MainMenu, RunsEachCommandOfTheDelegate)
{
    Menus menus;
    menus.session.connect();
    menus.session.press({20.0});
    menus.session.manager.disconnectAction.apply(Nothing {});
    menus.session.manager.measurementList.measurements()[0]->isCounted.setValue(true);
    auto& saving = menus.session.saving;
    saving.answer = "/folder/file";
    saving.clipboard = "picture";
    auto const csv = [](std::string const& part) { return encodeUtf16(part).substr(2); };
    struct Row {
        QString title;
        std::string panel;
        std::string written; // part of the file
    };
    for (auto const& [title, panel, written] :
        std::vector<Row> {{QStringLiteral("CSVを"), "panel csv", csv("1回目")},
            {QStringLiteral("選択した測定のCSV"), "panel csv", csv("①")},
            {QStringLiteral("一覧をPDF"), "panel pdf", typeid(ListPrintView).name()},
            {QStringLiteral("グリッドをPDF"), "panel pdf", typeid(GridPrintView).name()},
            {QStringLiteral("画面を"), "panel png", "picture"}}) {
        saving.log.clear();
        menus.choose(title);
        menus.session.runLoop.advance(Seconds(0.5));
        EXPECT_EQ(std::ranges::count(saving.log, panel), 1) << title.toStdString();
        EXPECT_NE(saving.written.find(written), std::string::npos) << title.toStdString();
    }
    for (auto const& title : {QStringLiteral("一覧を印刷"), QStringLiteral("グリッドを印刷"),
             QStringLiteral("選択した測定を印刷")})
        menus.choose(title);
    EXPECT_EQ(
        menus.printed, (std::vector {ReportKind::List, ReportKind::Grid, ReportKind::Selected}));
}

TEST(MainMenu, HasNoShortcutOrMnemonicTwice)
{
    Menus menus;
    std::set<QString> shortcuts;
    for (auto const* item : menus.window.menuBar()->actions()) {
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
