#include "core/Course.h"
#include "core/DateText.h"
#include "core/Utf16.h"
#include "output/Reports.h"
#include "sessions/PastSessionsWindow.h"
#include "sessions/SessionNotices.h"
#include "support/Desk.h"
#include "support/Page.h"

#include <QAction>
#include <QComboBox>
#include <QDateEdit>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressDialog>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeView>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tensio;

namespace {

// That of the message that is shown now or soon, and is closed.
QString message(QWidget const& window)
{
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.findChild<QMessageBox*>() != nullptr; }));
    auto text = find<QMessageBox>(window).text();
    delete window.findChild<QMessageBox*>();
    return text;
}

} // namespace

TEST(PastSessions, ALineOffersTheUnsavedOneAndTheListAll)
{
    Desk desk({"太郎", "花子"});
    desk.store.stored.at(2).isComplete = false;
    auto const& line = find<QWidget>(desk.window, "unsavedSessionView");
    EXPECT_TRUE(line.isVisible());
    EXPECT_EQ(textOf(desk.window, "unsavedDetailLabel"), "花子　" + dateAndMinute({}) + "　1回");
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

TEST(PastSessions, CannotBeOpenedInASessionNorBeforeAllIsStored)
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
    desk.finish();
    EXPECT_FALSE(open.isEnabled()) << "it would be lost";
    EXPECT_TRUE(problem.isVisible());
    click(problem, "hideProblemButton");
    EXPECT_FALSE(problem.isVisible());
    desk.store.refusals = 0;
    desk.runLoop.advance(Seconds(1.5));
    EXPECT_TRUE(open.isEnabled());
}

TEST(PastSessions, TheListSearchesByNameAndAsksBeforeItDeletes)
{
    Desk desk({"山田　ﾊﾅｺ", "山田 花子Tarō", "山田 花子", "山田 花子"});
    desk.store.stored.at(2).summary.isSaved = true;
    desk.command("以前の測定を開く").trigger();
    auto& window = find<PastSessionsWindow>(desk.window);
    auto& list = find<QTreeView>(window, "sessionList");
    auto const& rows = *list.model();
    auto const& count = find<QLabel>(window, "countLabel");
    auto const& more = *find<QPushButton>(window, "moreButton").menu();
    QStringList cells;
    for (int row : {2, 3}) {
        for (int column = PastSessionsModel::Name; column < rows.columnCount(); ++column)
            cells << rows.index(row, column).data().toString();
    }
    EXPECT_EQ(cells.join(u' ').toStdString(),
        "山田 花子Tarō 1回 20.0 保存済み  山田　ﾊﾅｺ 1回 20.0 未保存 模擬装置");
    auto& search = find<QLineEdit>(window, "searchInput");
    for (auto const& [text, found] : {std::pair {"山田花", "3件"}, {"ﾔﾏﾀﾞ", "0件"},
             {"ハナコ", "1件"}, {"ＴＡＲ", "1件"}, {"", "4件"}}) {
        search.setText(QString::fromUtf8(text));
        EXPECT_EQ(count.text(), QString::fromUtf8(found)) << text;
    }
    auto const answer = [&](bool isSure) {
        auto& question = find<QMessageBox>(window);
        EXPECT_EQ(question.textFormat(), Qt::PlainText) << "a name may look like markup";
        EXPECT_EQ(question.defaultButton()->text(), QStringLiteral("キャンセル"));
        EXPECT_EQ(question.escapeButton(), question.defaultButton());
        auto text = question.text().section(u'\n', 0, 0).toStdString();
        question.buttons().at(isSure ? 0 : 1)->click();
        delete &question;
        return text;
    };
    auto unreadable = desk.store.stored.extract(4);
    QTest::keyClick(&list, Qt::Key_Return);
    EXPECT_EQ(message(window), u"この測定は読み込めませんでした。");
    EXPECT_EQ(window.findChild<QMessageBox*>(), nullptr) << "said once";
    desk.store.stored.insert(std::move(unreadable));
    click(window, "removeButton");
    EXPECT_TRUE(answer(false).ends_with("　山田 花子（1回）を削除します。"));
    EXPECT_EQ(desk.store.stored.size(), 4U);
    more.actions().first()->trigger();
    EXPECT_FALSE(find(window, "openButton").isEnabled()) << "two are chosen";
    auto const removeBoth = [&] {
        more.actions().first()->trigger();
        click(window, "removeButton");
        EXPECT_EQ(answer(true), "選択した2件の測定を削除します。");
    };
    for (auto const& [reason, text] :
        {std::pair {StoreProblem::NoSpace,
             u"削除できませんでした。ディスクの空き容量を確かめてください。"},
            {StoreProblem::Damaged, u"削除できませんでした。"}}) {
        desk.store.refusals = 1;
        desk.store.reason = reason;
        removeBoth();
        EXPECT_EQ(message(window), QString::fromUtf16(text));
    }
    removeBoth();
    EXPECT_FALSE(find<QWidget>(desk.window, "unsavedSessionView").isVisible());
    search.setText(QStringLiteral("太郎"));
    EXPECT_FALSE(find(window, "openButton").isEnabled()) << "nothing is left of that name";
    more.actions().last()->trigger();
    EXPECT_TRUE(answer(true).find("検索で見つからないものも含めて2件すべて") != std::string::npos);
    EXPECT_TRUE(desk.store.stored.empty());
}

TEST(PastSessions, TheListIsOfAPeriodLoadedInStepsAndSaysWhenDamageHidesSome)
{
    Desk desk(std::vector<std::string>(1001, "太郎"));
    SessionId id = 996;
    for (auto const* start : {"2023-03-04 23:59:59", "2023-12-04 23:59:59", "2024-02-28 23:59:59",
             "2024-02-29 23:59:59", "2024-03-01 00:00:00"})
        desk.store.stored.at(++id).summary.start = ManualClock::localTime(start);
    desk.command("以前の測定を開く").trigger();
    auto const& window = find<PastSessionsWindow>(desk.window);
    auto const& count = find<QLabel>(window, "countLabel");
    EXPECT_EQ(count.text(), u"500件");
    EXPECT_FALSE(find<QAction>(window, "removeAllAction").isEnabled()) << "its count is not known";
    EXPECT_FALSE(find<QLabel>(window, "damageLabel").isVisible());
    desk.store.isComplete = false;
    for (int page = 0; page < 2; ++page)
        QCoreApplication::sendPostedEvents();
    EXPECT_TRUE(find<QLabel>(window, "damageLabel").isVisible());
    find<QDateEdit>(window, "fromInput").setDate({2024, 3, 1});
    find<QDateEdit>(window, "toInput").setDate({2024, 2, 29});
    auto& period = find<QComboBox>(window, "periodInput");
    for (auto const& [text, found] : {std::pair {u"今月", u"1件"}, {u"3か月以内", u"3件"},
             {u"1年以内", u"4件"}, {u"日付を指定", u"2件"}, {u"すべて", u"1001件"}}) {
        period.setCurrentText(QString::fromUtf16(text));
        EXPECT_EQ(count.text(), found) << period.currentIndex();
    }
}

TEST(PastSessions, TheChosenMakeACourseAndFiles)
{
    Desk desk({std::string(59, 'a') + "𠮷", "太郎", "太郎", "山田/花子"});
    desk.command("以前の測定を開く").trigger();
    auto& window = find<PastSessionsWindow>(desk.window);
    auto& list = find<QTreeView>(window, "sessionList");
    list.selectAll();
    click(window, "courseButton");
    EXPECT_TRUE(message(window).startsWith(u"氏名の異なる"));
    list.setCurrentIndex(list.model()->index(3, 0));
    click(window, "courseButton");
    auto& preview = find<QDialog>(window, "PrintPreview");
    EXPECT_TRUE(preview.isVisible() && find<QLabel>(preview, "messageLabel").isVisible());
    EXPECT_TRUE(preview.windowTitle().endsWith(u"経過"));
    preview.close();
    auto const command = [&](int place) {
        find<QPushButton>(window, "moreButton").menu()->actions().at(place)->trigger();
    };
    desk.saving.answer = "/course.csv";
    command(2);
    EXPECT_EQ(message(window), u"経過のCSVを保存しました。\n/course.csv");
    EXPECT_TRUE(desk.saving.written.ends_with(encodeUtf16("\t1\t20.0\t20.0\t30.0\r\n").substr(2)));
    desk.saving.diskIsFull = true;
    command(2);
    EXPECT_EQ(message(window), u"保存に失敗しました。");

    QTemporaryDir const folder;
    auto const name = folder.filePath(
        QString::fromStdString(formatLocalTime({}, "%Y%m%d-%H%M_")) + u"山田_花子"_s);
    EXPECT_TRUE(QFile(name + u".csv"_s).open(QFile::WriteOnly));
    auto const saveEach = [&](bool isCancelled = false) {
        command(3);
        auto* const chooser = window.findChild<QFileDialog*>();
        EXPECT_EQ(chooser->fileMode(), QFileDialog::Directory);
        Q_EMIT chooser->fileSelected(folder.path());
        delete chooser;
        if (isCancelled) {
            while (desk.saving.log.empty())
                QCoreApplication::processEvents();
            find(find<QProgressDialog>(window)).click();
        }
        return message(window);
    };
    auto const damaged = std::exchange(desk.store.stored.at(3).measurements, {});
    for (bool const isFull : {true, false}) {
        desk.saving.log.clear();
        desk.saving.diskIsFull = isFull;
        list.selectAll();
        auto const text = saveEach();
        EXPECT_TRUE(
            text.contains(isFull ? u"山田/花子のCSVを保存できません" : u"太郎の記録は壊れ"));
        EXPECT_TRUE(text.contains(isFull ? u"その前の0件" : u"その前の1件"));
        EXPECT_EQ(desk.saving.log, std::vector {"write " + name.toStdString() + "_2.csv"});
        EXPECT_EQ(desk.store.stored.at(4).summary.isSaved, !isFull);
    }
    EXPECT_EQ(list.model()->index(0, PastSessionsModel::Saved).data(), u"保存済み"_s);
    EXPECT_FALSE(find<QWidget>(desk.window, "unsavedSessionView").isVisible());
    list.setCurrentIndex(list.model()->index(3, 0));
    EXPECT_TRUE(saveEach().startsWith(u"1件の測定のCSVを保存しました。"));
    EXPECT_TRUE(desk.saving.log.back().ends_with("_" + std::string(59, 'a') + "（模擬装置）.csv"));
    desk.store.stored.at(3).measurements = damaged;
    list.setCurrentIndex(list.model()->index(0, 0));
    QTest::keyClick(&list, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_TRUE(saveEach().startsWith(u"2件"));
    EXPECT_TRUE(desk.saving.written.starts_with(encodeUtf16("氏名\t太郎\r\n")));
    desk.saving.log.clear();
    list.selectAll();
    EXPECT_EQ(saveEach(true), u"キャンセルしました。\nそれまでに、1件の測定のCSVを保存しました。");
    list.setCurrentIndex(list.model()->index(1, 0));
    command(0);
    desk.store.stored.erase(2);
    command(2);
    EXPECT_NE(
        desk.saving.written.find(encodeUtf16(courseIncompleteMessage).substr(2)), std::string::npos)
        << "one cannot be read";
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
                for (int page = report->paginate({}, Page()); page > 0; --page) {
                    for (auto const& line : Page(*report, page).lines)
                        all += line + '\n';
                }
            }
            manager.saveCsv();
            all += desk.saving.written;
            manager.saveSelectedCsv();
            return all + desk.saving.written;
        };
        measure("花子", 0.5f, 30.0);
        auto const before = pictures();
        auto const outputBefore = output();
        measure("太郎", 0.9f, 60.0);
        ASSERT_NE(pictures(), before);
        desk.command("以前の測定を開く").trigger();
        auto& list = find<QTreeView>(desk.window, "sessionList");
        list.setCurrentIndex(list.model()->index(1, 0));
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
    for (auto const& [end, text] :
        {std::pair {TransferState::Done, u"3件の測定をバックアップしました"},
            {TransferState::DoneInPart, u"壊れていて読み取れない測定を除いて"},
            {TransferState::NoSpace, u"空き容量が足りません"}}) {
        store.transferEnd = end;
        desk.command("バックアップ(").trigger();
        EXPECT_EQ(store.transferred, "/stick/sessions.db");
        EXPECT_TRUE(message(desk.window).startsWith(QString::fromUtf16(text)));
        EXPECT_EQ(store.transferred, "");
    }
    EXPECT_TRUE(desk.saving.isSimulated) << "for what the window shows";
    store.transferEnd = TransferState::Done;
    for (auto const& [count, text] : {std::pair {3, u"3件の測定を戻しました。"},
             {0, u"バックアップの測定はすべてすでにあるため、戻すものはありませんでした。"}}) {
        store.transferCount = count;
        desk.command("バックアップから戻す").trigger();
        auto* const chooser = desk.window.findChild<QFileDialog*>();
        Q_EMIT chooser->fileSelected(u"/stick/old.db"_s);
        delete chooser;
        EXPECT_EQ(store.transferred, "/stick/old.db");
        EXPECT_EQ(message(desk.window), QString::fromUtf16(text));
    }
    desk.command("バックアップ(").trigger();
    find(*desk.window.findChildren<QProgressDialog*>().last()).click();
    EXPECT_EQ(store.transferred, "") << "nothing stays of it";
    desk.connect();
    EXPECT_FALSE(desk.command("バックアップから戻す").isEnabled());
}
