#include "output/Reports.h"
#include "sessions/PastSessionsWindow.h"
#include "support/Desk.h"
#include "support/Page.h"

#include <QComboBox>
#include <QDateEdit>
#include <QFileDialog>
#include <QProgressDialog>
#include <QTemporaryDir>
#include <QTreeView>

using namespace Qt::StringLiterals;
using namespace tensio;

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
        EXPECT_EQ(pictures(), before) << isFinishedInAPress;
        EXPECT_EQ(output(), outputBefore);
        click(desk.window, "startButton");
        EXPECT_TRUE(find<QLabel>(desk.window, "percentNotice").text().contains(u"90%"));
        click(desk.window, "cancelButton");
        EXPECT_EQ(manager.targetPressurePercent.value(), 0.5f);
        desk.connect();
        EXPECT_EQ(manager.targetPressurePercent.value(), 0.9f);
    }
}

TEST(PastSessions, AreListedInStepsAndByPeriod)
{
    Desk desk(std::vector<std::string>(1001, "太郎"));
    for (auto& [id, session] : desk.store.stored)
        session.summary.start = {};
    SessionId id = 996;
    for (auto const* start : {"2023-03-04 23:59:59", "2023-12-04 23:59:59", "2024-02-28 23:59:59",
             "2024-02-29 23:59:59", "2024-03-01 00:00:00"})
        desk.store.stored.at(++id).summary.start = ManualClock::localTime(start);
    desk.command("以前の測定を開く").trigger();
    auto const& window = find<PastSessionsWindow>(desk.window);
    auto const& count = find<QLabel>(window, "countLabel");
    EXPECT_EQ(count.text(), u"500件");
    EXPECT_FALSE(find<QAction>(window, "removeAllAction").isEnabled()) << "its count is not known";
    for (int page = 0; page < 2; ++page)
        QCoreApplication::sendPostedEvents();
    EXPECT_EQ(find<QTreeView>(window).currentIndex().row(), 0);
    find<QDateEdit>(window, "fromInput").setDate({2024, 3, 1});
    find<QDateEdit>(window, "toInput").setDate({2024, 2, 29});
    auto& period = find<QComboBox>(window, "periodInput");
    for (auto const& [text, found] : {std::pair {u"今月", u"1件"}, {u"3か月以内", u"3件"},
             {u"1年以内", u"4件"}, {u"日付を指定", u"2件"}, {u"すべて", u"1001件"}}) {
        period.setCurrentText(QString::fromUtf16(text));
        EXPECT_EQ(count.text(), found) << period.currentIndex();
    }
}

TEST(PastSessions, AreSavedUnderFreeNamesUntilTheUserCancels)
{
    Desk desk({"太郎", "花子"});
    desk.command("以前の測定を開く").trigger();
    auto const& list = find<PastSessionsWindow>(desk.window);
    find<QTreeView>(list).selectAll();
    QTemporaryDir const folder;
    auto const name = folder.filePath(u"20240305-1407_花子"_s);
    for (auto const* taken : {".csv", "_2.csv"})
        EXPECT_TRUE(QFile(name + taken).open(QFile::WriteOnly));
    find<QAction>(list, "eachCsvAction").trigger();
    auto* const chooser = &find<QFileDialog>(list);
    Q_EMIT chooser->fileSelected(folder.path());
    delete chooser;
    while (desk.saving.log.empty())
        QCoreApplication::processEvents();
    EXPECT_GT(find<QProgressDialog>(list).value(), 0);
    find(find<QProgressDialog>(list)).click();
    EXPECT_EQ(
        closedMessage(list), u"キャンセルしました。\nそれまでに、1件の測定のCSVを保存しました。");
    EXPECT_EQ(desk.saving.log, std::vector {"write " + name.toStdString() + "_3.csv"});
}
