#include "panels/HistorySlice.h"
#include "support/Desk.h"
#include "support/PdfText.h"

#include <QDesktopServices>
#include <QFileDialog>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

using namespace tensio;

namespace {

// A running session with these presses.
struct Strip : Desk {
    explicit Strip(std::vector<double> const& presses)
    {
        saving.answer = "/folder/A&B";
        connect();
        for (auto const pressure : presses)
            press({pressure});
    }

    QList<HistorySlice*> tiles() const { return window.findChildren<HistorySlice*>(); }
    // The page, with the tile that has the focus in brackets: "2[3]456".
    std::string page() const
    {
        std::string page;
        for (auto const* tile : tiles()) {
            auto const number = std::to_string(tile->measurement()->number);
            page += tile == window.focusWidget() ? "[" + number + "]" : number;
        }
        return page;
    }
};

} // namespace

TEST(History, SelectsUpToThreeBetweenSessionsOnly)
{
    Strip strip({20.0, 30.0, 40.5, 60.0});
    auto const tiles = strip.tiles();
    EXPECT_EQ(tiles[1]->accessibleName(), "2回目 最大圧 30.0 kPa 14:07:09");
    auto const expectTile = [&](int index, QString const& hint, bool isChecked) {
        auto const state = QAccessible::queryAccessibleInterface(tiles[index])->state();
        EXPECT_EQ(tiles[index]->toolTip(), hint);
        EXPECT_EQ(state.disabled, !hint.isEmpty());
        EXPECT_EQ(state.checked && state.selected, isChecked);
    };
    auto const averageAfter = [&](int pressed) {
        QTest::mousePress(tiles[pressed], Qt::LeftButton);
        return strip.text("averageLabel");
    };
    EXPECT_EQ(averageAfter(0), "0.0");
    expectTile(0, "「終了」のあとに選べます", false);
    QContextMenuEvent rightClick(QContextMenuEvent::Mouse, {}, {});
    QApplication::sendEvent(tiles[3], &rightClick);
    EXPECT_EQ(tiles[3]->findChild<QMenu*>(), nullptr) << "reports wait for the end";
    strip.finish();
    QApplication::sendEvent(tiles[3], &rightClick);
    tiles[3]->findChild<QMenu*>()->actions().constFirst()->trigger();
    auto& preview = *QApplication::activeModalWidget();
    click(preview, "savePdfButton");
    EXPECT_NE(pdfText(strip.saving.written).find("4回目"), std::string::npos);
    preview.close();
    QTest::mousePress(tiles[0], Qt::RightButton);
    expectTile(0, QString(), false);
    EXPECT_EQ(averageAfter(0), "20.0");
    EXPECT_EQ(averageAfter(0), "0.0");
    EXPECT_EQ(averageAfter(1), "30.0");
    EXPECT_EQ(averageAfter(0), "25.0");
    QTest::keyClick(tiles[2], Qt::Key_Space);
    EXPECT_EQ(averageAfter(3), "30.2") << "a fourth cannot be selected";
    expectTile(3, "選べるのは3つまでです", false);
    expectTile(0, QString(), true);
    QTest::keyClick(tiles[0], Qt::Key_Return);
    EXPECT_EQ(strip.text("averageLabel"), "35.2");
    EXPECT_EQ(averageAfter(3), "43.5");
    strip.connect();
    EXPECT_EQ(strip.text("averageLabel"), "0.0");
}

TEST(History, SaysTheStateTheNextStepAndTheCount)
{
    Desk desk;
    auto const expect = [&](char const* state, char const* hint, char const* count) {
        EXPECT_EQ(desk.text("statusLabel"), state);
        EXPECT_EQ(desk.text("hintLabel"), hint);
        EXPECT_EQ(desk.text("countLabel"), count);
    };
    expect("待機中", "「開始」を押すと測定を始められます", "");
    desk.manager.connectAction.apply(Nothing {});
    expect("接続中…", "測定器に接続しています…", "");
    desk.port->delegate->serialPortWasOpened();
    expect("測定待ち", "測定器から値が届くのを待っています", "");
    desk.receive({0.0});
    expect("記録中", "値が途切れると、1回分として記録されます", "");
    desk.runLoop.advance(Seconds(2.5));
    for (int press = 0; press < 3; ++press)
        desk.press({20.0});
    expect("測定待ち", "「終了」のあと、測定を3つまで選べます", "全3回中 1〜3");
    for (int press = 3; press < 12; ++press)
        desk.press({20.0});
    desk.receive({20.0});
    desk.finish();
    for (std::size_t selected = 0; selected < 3; ++selected) {
        expect("待機中", "履歴の測定をクリックすると、3つまで選べます",
            ("全13回中 9〜13　選択 " + std::to_string(selected) + "/3").c_str());
        desk.manager.measurementList.measurements()[selected]->isCounted.setValue(true);
    }
    expect("待機中", "3つ選びました。保存・印刷できます", "全13回中 9〜13　選択 3/3");
    desk.manager.connectAction.apply(Nothing {});
    expect("接続中…", "測定器に接続しています…", "");
    desk.port->delegate->serialPortWasOpened();
    for (int press = 0; press < 101; ++press)
        desk.press({20.0});
    expect("測定待ち", "99回に達しました。これ以降は記録されません", "全99回中 95〜99");
}

TEST(History, TurnsThePageWhileTheFocusStaysWithItsMeasurement)
{
    Strip strip({1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0});
    EXPECT_EQ(strip.page(), "34567");
    strip.tiles()[1]->setFocus();
    std::string pages;
    for (auto const key : {Qt::Key_Left, Qt::Key_Left, Qt::Key_Left, Qt::Key_Left, Qt::Key_Right}) {
        QTest::keyClick(strip.window.focusWidget(), key);
        QCoreApplication::processEvents();
        pages += strip.page() + " ";
    }
    EXPECT_EQ(pages, "[3]4567 [2]3456 [1]2345 [1]2345 1[2]345 ");
    for (int count = 0; count < 3; ++count)
        strip.click("forwardButton");
    EXPECT_EQ(strip.page(), "[3]4567") << "at the end where its own left the page";
    strip.click("backButton");
    EXPECT_EQ(strip.page(), "2[3]456");
    strip.finish();
    strip.manager.saveCsvAction.apply(Nothing {});
    EXPECT_TRUE(find(strip.window, "savedButton").text().endsWith(u"A&&B"));
    EXPECT_TRUE(find(strip.window, "savedButton").isVisible());
    EXPECT_FALSE(find<QLabel>(strip.window, "hintLabel").isVisible());
    QFileDialog fileManager;
    QSignalSpy const opened(&fileManager, &QFileDialog::urlSelected);
    QDesktopServices::setUrlHandler("file", &fileManager, "urlSelected");
    strip.click("savedButton");
    QDesktopServices::unsetUrlHandler("file");
    EXPECT_EQ(opened.value(0).value(0).toUrl().path(), "/folder");
    strip.connect();
    EXPECT_EQ(strip.page(), "");
    EXPECT_TRUE(find<QLabel>(strip.window, "hintLabel").isVisible());
}
