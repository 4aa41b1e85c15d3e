#include "core/Utf16.h"
#include "support/Desk.h"
#include "support/PdfText.h"

#include <QClipboard>
#include <QPushButton>

#include <gtest/gtest.h>
#include <set>

using namespace tensio;

TEST(MainMenu, EnablesItsCommandsAsTheSessionAllows)
{
    Desk desk;
    // Those with which the user can save or print now.
    auto const enabled = [&] {
        return std::ranges::count_if(desk.commands(), [](QAction const* action) {
            return action->isEnabled()
                && (action->text().contains("保存(") || action->text().contains("を印刷("));
        });
    };
    EXPECT_EQ(enabled(), 0) << "nothing measured";
    desk.connect();
    desk.press({20.0});
    EXPECT_EQ(enabled(), 0) << "measuring";
    EXPECT_TRUE(desk.isSleepInhibited);
    desk.finish();
    EXPECT_FALSE(desk.isSleepInhibited);
    for (bool const isSelected : {false, true, false}) {
        desk.manager.measurementList.measurements()[0]->isCounted.setValue(isSelected);
        EXPECT_EQ(enabled(), isSelected ? 10 : 8);
    }
}

TEST(MainMenu, RunsEachCommand)
{
    Desk desk;
    desk.port->isSimulator = true;
    desk.connect();
    desk.press({20.0});
    desk.finish();
    desk.manager.measurementList.measurements()[0]->isCounted.setValue(true);
    desk.saving.answer = "/folder/file";
    desk.saving.picture = "picture";
    auto const csv = [](std::string const& part) { return encodeUtf16(part).substr(2); };
    // Title, panel and part of the file.
    using Row = std::tuple<char const*, std::string, std::string>;
    for (auto const& [title, panel, written] :
        {Row {"CSVを", "panel csv", csv("1回目")}, {"選択した測定のCSV", "panel csv", csv("①")},
            {"一覧をPDF", "panel pdf", "1 回目 20.0 kPa 30.0 kPa"},
            {"グリッドをPDF", "panel pdf", "計測回数： 1回目"},
            {"波形をPDF", "panel pdf", "選択した測定 ① 1回目"},
            {"画面を", "panel png", "picture"}}) {
        desk.saving.log.clear();
        desk.command(title).trigger();
        desk.runLoop.advance(Seconds(0.1));
        EXPECT_EQ(desk.saving.log.empty(), panel == "panel png") << "while a menu may be on it";
        desk.runLoop.advance(Seconds(0.4));
        EXPECT_EQ(std::ranges::count(desk.saving.log, panel), 1) << title;
        auto const& file = desk.saving.written;
        auto const text = panel == "panel pdf" ? pdfText(file) : file;
        EXPECT_NE(text.find(written), std::string::npos) << title << text;
        EXPECT_EQ(text.find("模擬装置の値です") < text.size(), panel == "panel pdf");
    }
    for (auto const& [title, button] :
        {std::pair {"一覧を印刷", "listButton"}, {"グリッドを印刷", "gridButton"},
            {"選択した測定を印刷", "selectedButton"}, {"波形を印刷", "curvesButton"}}) {
        desk.command(title).trigger();
        auto& preview = *QApplication::activeModalWidget();
        EXPECT_TRUE(find(preview, button).isChecked()) << title;
        preview.close();
        QCoreApplication::processEvents();
    }
    for (auto const* title : {"以前の測定を開く", "接続の確認", "使い方", "tensioについて"}) {
        QApplication::setActiveWindow(&desk.window);
        desk.command(title).trigger();
        QCoreApplication::processEvents();
        EXPECT_NE(QApplication::activeWindow(), &desk.window) << title;
        QApplication::activeWindow()->close();
    }
}

TEST(MainMenu, OffersDefaultTargetsAndStoresAndChecksTheChosenOne)
{
    Desk desk({}, {{"target pressure", 45.0f}});
    desk.connect(20.0f);
    auto const targets = [&](bool isChecked) {
        QStringList titles;
        for (auto const* command : desk.commands()) {
            if (command->text().endsWith(u" kPa") && (command->isChecked() || !isChecked))
                titles << command->text();
        }
        return titles;
    };
    EXPECT_EQ(targets(false).size(), 15);
    EXPECT_EQ(targets(false).front() + targets(false).back(), "80.0 kPa10.0 kPa");
    EXPECT_EQ(targets(true).join(u' '), "45.0 kPa");
    desk.command("55.0 kPa").trigger();
    EXPECT_EQ(targets(true).join(u' '), "55.0 kPa");
    EXPECT_EQ(desk.userDefaults.stored["target pressure"], 55.0f);
    EXPECT_EQ(desk.userDefaults.synchronizations, 1) << "none at the start";
    EXPECT_EQ(desk.manager.targetPressure.value(), 20.0f);
}

TEST(MainMenu, ReportsWhichDeviceIsTakenAndWhatKeepsAnotherFromBeingRead)
{
    Desk desk;
    desk.command("接続の確認").trigger();
    auto const buttons = QApplication::activeModalWidget()->findChildren<QPushButton*>();
    auto const report = [&] {
        buttons.at(0)->click(); // 再読込
        buttons.at(1)->click(); // コピー
        return QGuiApplication::clipboard()->text().simplified().toStdString();
    };
    EXPECT_TRUE(report().starts_with("測定器が見つかりません"));
    desk.inspected = {{"a", "tty1", "", "", "", false, true, true, ""},
        {"b", "tty2", "c", "d", "e", false, false, false, "権限\nなし"},
        {"f", "tty3", "g", "h", "i", true, false, false, ""}};
    EXPECT_EQ(report(),
        "接続する測定器 種類 模擬装置（実際の測定ではありません） 名前 a ポート tty1 "
        "製造元 — 製品 — 製造番号 — 状態 測定に使用中です 使わない測定器（上の測定器を使います） "
        "名前 b ポート tty2 製造元 c 製品 d 製造番号 e 状態 権限 なし "
        "ほかのシリアルポート 名前 f ポート tty3 製造元 g 製品 h 製造番号 i");
    desk.inspected.erase(desk.inspected.begin(), desk.inspected.end() - 1);
    EXPECT_TRUE(report().starts_with("測定器が見つかりません")) << "none of the device's";
}

TEST(MainMenu, HasItsShortcutsAndNoMnemonicTwice)
{
    Desk const desk;
    QStringList shortcuts;
    std::set<QString> mnemonics;
    for (auto const* item : desk.window.menuBar()->actions()) {
        for (auto const* action : item->menu()->actions()) {
            auto const mnemonic = action->text().section(u'&', 1).left(1);
            EXPECT_TRUE(mnemonic.isEmpty() || mnemonics.insert(item->text() + mnemonic).second)
                << action->text().toStdString();
            if (auto const key = action->shortcut().toString(); !key.isEmpty())
                shortcuts << key + u' ' + action->text().section(u'(', 0, 0);
        }
    }
    EXPECT_EQ(shortcuts.join(u'、').toStdString(),
        "Ctrl+O 以前の測定を開く、Ctrl+S CSVを保存、Ctrl+Shift+S 選択した測定のCSVを保存、"
        "Ctrl+Q tensioを終了、F5 測定を開始、Shift+F5 測定を終了、F11 全画面表示、"
        "Home 最初の測定へ、End 最後の測定へ、Ctrl+P 一覧を印刷、Ctrl+Shift+P グリッドを印刷、"
        "F1 使い方");
}
