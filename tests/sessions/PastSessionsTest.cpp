#include "output/Reports.h"
#include "sessions/PastSessionsWindow.h"
#include "sessions/SessionNotices.h"
#include "support/Desk.h"
#include "support/Page.h"

#include <QFileDialog>
#include <QLabel>
#include <QProgressDialog>
#include <QPushButton>
#include <QTest>
#include <QTreeView>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tensio;

TEST(PastSessions, ALineOffersTheUnsavedOneAndTheListAll)
{
    Desk desk({"太郎", "花子"});
    desk.store.stored.at(2).isComplete = false;
    auto const& line = find<QWidget>(desk.window, "unsavedSessionView");
    EXPECT_TRUE(line.isVisible());
    EXPECT_EQ(textOf(desk.window, "unsavedDetailLabel"), "花子　2024/03/05 14:07　1回");
    EXPECT_FALSE(find<QLabel>(desk.window, "unsavedSimulatedLabel").isVisible());
    click(desk.window, "openUnsavedButton");
    EXPECT_TRUE(desk.window.windowTitle().contains(u"花子"));
    auto const& damage = find<QLabel>(desk.window, "storeProblemLabel");
    EXPECT_TRUE(damage.isVisible() && damage.text().contains(u"壊れて"));
    EXPECT_FALSE(line.isVisible());
    EXPECT_FALSE(desk.store.unsavedSession());
    desk.command("以前の測定を開く").trigger();
    auto& list = find<QTreeView>(find<PastSessionsWindow>(desk.window));
    auto const first = list.visualRect(list.model()->index(1, 0)).center();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, first);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, first);
    EXPECT_TRUE(desk.window.windowTitle().contains(u"太郎"));
    auto const frame
        = [&](char const* label) { return find<QWidget>(desk.window, label).geometry(); };
    EXPECT_FALSE(frame("simulationLabel").intersects(frame("pastSessionLabel")));
    EXPECT_FALSE(damage.isVisible()) << "all of it was read";
    EXPECT_FALSE(find<PastSessionsWindow>(desk.window).isVisible());
}

TEST(PastSessions, ThatCannotBeStoredOrReadAreReportedWithTheReason)
{
    Session session;
    FakeSessionStore store;
    SessionArchive archive(session.manager, store, session.runLoop, session.clock);
    QWidget unsaved;
    QWidget view;
    SessionNotices const notices(archive, unsaved, view);
    std::string texts;
    for (int problem = 0; problem <= static_cast<int>(StoreProblem::Damaged); ++problem) {
        archive.problem.setValue(static_cast<StoreProblem>(problem));
        texts += textOf(view, "storeProblemLabel") + '\n';
    }
    EXPECT_EQ(texts, R"(
別のtensioが起動しているため、自動保存されず、以前の測定も開けません。CSVを保存してください。
自動保存の場所に書き込めません。以前の測定も開けません。測定を終えたらCSVを保存してください。
新しいバージョンの記録のため、別名で残しました。新しいtensioで開いてください。
以前の記録が壊れていたため、別名で残しました。管理者に知らせてください。
測定を自動保存できません。空き容量を確かめ、終了後、以前の測定を開く前にCSVを保存してください。
自動保存の場所に書き込めません。測定を終えたら、以前の測定を開く前にCSVを保存してください。
以前の測定の記録が見つからないため、新しく記録します。管理者に知らせてください。
自動保存の記録が壊れています。測定を終えたら、以前の測定を開く前にCSVを保存してください。
)");
}

TEST(PastSessions, CannotBeOpenedInASessionAndWhatIsNotStoredIsReported)
{
    Desk desk({"太郎"});
    EXPECT_TRUE(find<QLabel>(desk.window, "unsavedSimulatedLabel").isVisible());
    click(desk.window, "dismissButton");
    EXPECT_FALSE(find<QWidget>(desk.window, "unsavedSessionView").isVisible());
    EXPECT_FALSE(desk.store.unsavedSession());
    auto const& open = desk.command("以前の測定を開く");
    auto const& problem = find<QWidget>(desk.window, "storeProblemView");
    EXPECT_TRUE(open.isEnabled());
    desk.connect();
    EXPECT_FALSE(open.isEnabled());
    desk.store.reason = StoreProblem::NoSpace;
    desk.store.refusals = 100;
    desk.press({20.0});
    EXPECT_TRUE(problem.isVisible());
    click(problem, "hideProblemButton");
    EXPECT_FALSE(problem.isVisible());
}

TEST(PastSessions, OpenAsTheyStoodAfterFinishing)
{
    for (bool const isFinishedInAPress : {false, true}) {
        Desk desk;
        auto& manager = desk.manager;
        auto const measure = [&](char const* name, float percent, double pressure) {
            desk.connect(40.0f);
            manager.username.setValue(name);
            manager.changeTargetPressurePercentAction.apply(percent);
            desk.press({5.0, -2.0, pressure});
            manager.changeTargetPressureAction.apply(0.1f);
            desk.press(std::vector(700, pressure));
            desk.receive({pressure - 1.0, pressure + 1.0, 7.0});
            desk.runLoop.advance(Seconds(isFinishedInAPress ? 0.5 : 2.5));
            desk.clock.date += std::chrono::minutes(1);
            desk.finish();
        };
        auto const pictures = [&] {
            desk.clock.date = ManualClock().date;
            desk.runLoop.advance(Seconds(2.0));
            QList<QImage> all;
            for (auto const* name :
                {"headerView", "gaugeView", "graphView", "infoControlsView", "historyView"})
                all << find<QWidget>(desk.window, name).grab().toImage();
            return all;
        };
        desk.saving.answer = "/all.csv";
        auto const output = [&] {
            std::string all;
            for (auto const kind :
                {ReportKind::List, ReportKind::Grid, ReportKind::Curves, ReportKind::Selected}) {
                manager.measurementList.measurements().front()->isCounted.setValue(
                    kind == ReportKind::Selected);
                auto const report = makeReport(kind, manager);
                report->paginate({}, Page());
                for (auto const& line : Page(*report, 1).lines)
                    all += line + '\n';
            }
            manager.saveCsv();
            all += desk.saving.written;
            manager.saveSelectedCsv();
            all += desk.saving.written;
            return all;
        };
        measure("花子", 0.5f, 30.0);
        auto const before = pictures();
        auto const outputBefore = output();
        measure("太郎", 0.9f, 60.0);
        ASSERT_NE(pictures(), before);
        desk.command("以前の測定を開く").trigger();
        auto& list = find<QTreeView>(desk.window, "sessionList");
        list.setCurrentIndex(list.model()->index(1, 0));
        // Chosen is not what is current.
        list.selectionModel()->setCurrentIndex(
            list.model()->index(0, 0), QItemSelectionModel::NoUpdate);
        click(desk.window, "openButton");
        EXPECT_EQ(find<QLabel>(desk.window, "pastSessionLabel").text(),
            QStringLiteral("以前の測定　2024/03/05 14:07"));
        EXPECT_EQ(pictures(), before) << isFinishedInAPress;
        EXPECT_FALSE(find<QWidget>(desk.window, "simulationLabel").isVisible());
        EXPECT_EQ(output(), outputBefore);
        click(desk.window, "startButton");
        EXPECT_TRUE(find<QLabel>(desk.window, "percentNotice").text().contains(u"90%"));
        click(desk.window, "cancelButton");
        EXPECT_EQ(manager.targetPressurePercent.value(), 0.5f);
        desk.connect();
        EXPECT_EQ(manager.targetPressurePercent.value(), 0.9f);
        EXPECT_FALSE(find<QWidget>(desk.window, "pastSessionLabel").isVisible());
        EXPECT_FALSE(desk.window.windowTitle().contains(u"花子"));
    }
}

TEST(PastSessions, AreBackedUpInStepsUnlessCancelled)
{
    Desk desk;
    auto& store = desk.store;
    desk.saving.answer = "/stick/sessions.db";
    desk.saving.isSimulated = true;
    for (auto const& [command, end, count, text] :
        {std::tuple {"バックアップ(", TransferState::Done, 3, u"3件の測定をバックアップしました"},
            {"バックアップ(", TransferState::DoneInPart, 3, u"壊れていて読み取れない測定を除いて"},
            {"バックアップ(", TransferState::NoSpace, 3, u"空き容量が足りません"},
            {"バックアップから戻す", TransferState::Done, 3, u"3件の測定を戻しました。"},
            {"バックアップから戻す", TransferState::Done, 0,
                u"バックアップの測定はすべてすでにあるため、戻すものはありませんでした。"}}) {
        std::tie(store.transferEnd, store.transferCount) = std::tie(end, count);
        desk.command(command).trigger();
        if (auto* const chooser = desk.window.findChild<QFileDialog*>()) {
            Q_EMIT chooser->fileSelected(u"/stick/sessions.db"_s);
            delete chooser;
        }
        EXPECT_EQ(store.transferred, "/stick/sessions.db");
        EXPECT_TRUE(closedMessage(desk.window).startsWith(QString::fromUtf16(text)));
        EXPECT_EQ(store.transferred, "");
        EXPECT_TRUE(desk.saving.isSimulated) << "for what the window shows";
    }
    desk.command("バックアップ(").trigger();
    find(*desk.window.findChildren<QProgressDialog*>().last()).click();
    EXPECT_EQ(store.transferred, "") << "nothing stays of it";
    desk.connect();
    EXPECT_FALSE(desk.command("バックアップから戻す").isEnabled());
}
