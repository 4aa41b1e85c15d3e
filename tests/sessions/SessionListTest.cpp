#include "core/Course.h"
#include "core/Utf16.h"
#include "sessions/PastSessionsWindow.h"
#include "support/Desk.h"

#include <QAction>
#include <QComboBox>
#include <QDateEdit>
#include <QFileDialog>
#include <QLineEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTreeView>

using namespace Qt::StringLiterals;
using namespace tensio;

namespace {

// The list of past sessions is open, the newest in its first row.
struct SessionList : Desk {
    PastSessionsWindow& list;
    QTreeView& rows;

    using Stored = std::map<SessionId, StoredSession>;
    explicit SessionList(
        std::vector<std::string> const& names,
        std::function<void(Stored&)> const& prepare = [](auto&) {})
        : Desk(names)
        , list(opened(prepare))
        , rows(find<QTreeView>(list))
    {
    }

    void choose(int row) const { rows.setCurrentIndex(rows.model()->index(row, 0)); }
    void run(char const* action) const { find<QAction>(list, action).trigger(); }

private:
    PastSessionsWindow& opened(std::function<void(Stored&)> const& prepare)
    {
        prepare(store.stored);
        command("以前の測定を開く").trigger();
        return find<PastSessionsWindow>(window);
    }
};

} // namespace

TEST(SessionList, SearchesByNameAndAsksBeforeItDeletes)
{
    SessionList desk({"山田　ﾊﾅｺ", "山田 花子Tarō", "山田 花子", "山田 花子"},
        [](auto& stored) { stored.at(2).summary.isSaved = true; });
    auto& window = desk.list;
    auto const& rows = *desk.rows.model();
    auto const& count = find<QLabel>(window, "countLabel");
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
    QTest::keyClick(&desk.rows, Qt::Key_Return);
    EXPECT_EQ(closedMessage(window), u"この測定は読み込めませんでした。");
    EXPECT_EQ(window.findChild<QMessageBox*>(), nullptr) << "said once";
    desk.store.stored.insert(std::move(unreadable));
    click(window, "removeButton");
    EXPECT_TRUE(answer(false).ends_with("　山田 花子（1回）を削除します。"));
    EXPECT_EQ(desk.store.stored.size(), 4U);
    desk.run("sameNameAction");
    EXPECT_FALSE(find(window, "openButton").isEnabled()) << "two are chosen";
    auto const removeBoth = [&] {
        desk.run("sameNameAction");
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
        EXPECT_EQ(closedMessage(window), QString::fromUtf16(text));
    }
    removeBoth();
    EXPECT_FALSE(find<QWidget>(desk.window, "unsavedSessionView").isVisible());
    search.setText(QStringLiteral("太郎"));
    EXPECT_FALSE(find(window, "openButton").isEnabled()) << "nothing is left of that name";
    desk.run("removeAllAction");
    EXPECT_TRUE(answer(true).find("検索で見つからないものも含めて2件すべて") != std::string::npos);
    EXPECT_TRUE(desk.store.stored.empty());
}

TEST(SessionList, IsOfAPeriodLoadedInStepsAndSaysWhenDamageHidesSome)
{
    SessionList desk(std::vector<std::string>(1001, "太郎"), [](auto& stored) {
        for (auto& [id, session] : stored)
            session.summary.start = {};
        SessionId id = 996;
        for (auto const* start : {"2023-03-04 23:59:59", "2023-12-04 23:59:59",
                 "2024-02-28 23:59:59", "2024-02-29 23:59:59", "2024-03-01 00:00:00"})
            stored.at(++id).summary.start = ManualClock::localTime(start);
    });
    auto const& window = desk.list;
    auto const& count = find<QLabel>(window, "countLabel");
    EXPECT_EQ(count.text(), u"500件");
    EXPECT_FALSE(find<QAction>(window, "removeAllAction").isEnabled()) << "its count is not known";
    EXPECT_FALSE(find<QLabel>(window, "damageLabel").isVisible());
    desk.store.isComplete = false;
    for (int page = 0; page < 2; ++page)
        QCoreApplication::sendPostedEvents();
    EXPECT_TRUE(find<QLabel>(window, "damageLabel").isVisible());
    EXPECT_TRUE(desk.rows.currentIndex().row() == 0 && desk.rows.model()->rowCount() == 1001);
    find<QDateEdit>(window, "fromInput").setDate({2024, 3, 1});
    find<QDateEdit>(window, "toInput").setDate({2024, 2, 29});
    auto& period = find<QComboBox>(window, "periodInput");
    for (auto const& [text, found] : {std::pair {u"今月", u"1件"}, {u"3か月以内", u"3件"},
             {u"1年以内", u"4件"}, {u"日付を指定", u"2件"}, {u"すべて", u"1001件"}}) {
        period.setCurrentText(QString::fromUtf16(text));
        EXPECT_EQ(count.text(), found) << period.currentIndex();
    }
}

TEST(SessionList, TheChosenMakeACourse)
{
    SessionList desk({"山田/花子", "太郎", "太郎"});
    desk.rows.selectAll();
    click(desk.list, "courseButton");
    EXPECT_TRUE(closedMessage(desk.list).startsWith(u"氏名の異なる"));
    desk.choose(2);
    click(desk.list, "courseButton");
    auto& preview = find<QDialog>(desk.list, "PrintPreview");
    EXPECT_TRUE(preview.isVisible() && find<QLabel>(preview, "messageLabel").isVisible());
    EXPECT_TRUE(preview.windowTitle().endsWith(u"経過"));
    preview.close();
    desk.saving.answer = "/course.csv";
    for (bool const isFull : {true, false}) {
        desk.saving.diskIsFull = isFull;
        desk.run("courseCsvAction");
        EXPECT_EQ(closedMessage(desk.list),
            isFull ? u"保存に失敗しました。" : u"経過のCSVを保存しました。\n/course.csv");
    }
    EXPECT_TRUE(desk.saving.written.ends_with(encodeUtf16("\t1\t20.0\t20.0\t30.0\r\n").substr(2)));
    desk.choose(0);
    desk.run("sameNameAction");
    desk.store.stored.erase(2);
    desk.run("courseCsvAction");
    EXPECT_NE(
        desk.saving.written.find(encodeUtf16(courseIncompleteMessage).substr(2)), std::string::npos)
        << "one cannot be read";
}

TEST(SessionList, TheChosenAreSavedAFileEachUntilOneFailsOrTheUserCancels)
{
    SessionList desk({std::string(59, 'a') + "𠮷", "太郎", "山田/花子"});
    auto& window = desk.list;
    QTemporaryDir const folder;
    auto const name = folder.filePath(u"20240305-1407_山田_花子"_s);
    EXPECT_TRUE(QFile(name + u".csv"_s).open(QFile::WriteOnly));
    auto const saveEach = [&](bool isCancelled = false) {
        desk.run("eachCsvAction");
        auto* const chooser = window.findChild<QFileDialog*>();
        EXPECT_EQ(chooser->fileMode(), QFileDialog::Directory);
        Q_EMIT chooser->fileSelected(folder.path());
        delete chooser;
        if (isCancelled) {
            while (desk.saving.log.empty())
                QCoreApplication::processEvents();
            find(find<QProgressDialog>(window)).click();
        }
        return closedMessage(window);
    };
    auto const damaged = std::exchange(desk.store.stored.at(2).measurements, {});
    for (bool const isFull : {true, false}) {
        desk.saving.log.clear();
        desk.saving.diskIsFull = isFull;
        desk.rows.selectAll();
        auto const text = saveEach();
        EXPECT_TRUE(
            text.contains(isFull ? u"山田/花子のCSVを保存できません" : u"太郎の記録は壊れ"));
        EXPECT_TRUE(text.contains(isFull ? u"その前の0件" : u"その前の1件"));
        EXPECT_EQ(desk.saving.log, std::vector {"write " + name.toStdString() + "_2.csv"});
        EXPECT_EQ(desk.store.stored.at(3).summary.isSaved, !isFull);
    }
    EXPECT_EQ(desk.rows.model()->index(0, PastSessionsModel::Saved).data(), u"保存済み"_s);
    EXPECT_FALSE(find<QWidget>(desk.window, "unsavedSessionView").isVisible());
    desk.choose(2);
    EXPECT_TRUE(saveEach().startsWith(u"1件の測定のCSVを保存しました。"));
    EXPECT_TRUE(desk.saving.log.back().ends_with("_" + std::string(59, 'a') + "（模擬装置）.csv"));
    desk.store.stored.at(2).measurements = damaged;
    desk.choose(0);
    QTest::keyClick(&desk.rows, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_TRUE(saveEach().startsWith(u"2件"));
    EXPECT_TRUE(desk.saving.written.starts_with(encodeUtf16("氏名\t太郎\r\n")));
    desk.saving.log.clear();
    desk.rows.selectAll();
    EXPECT_EQ(saveEach(true), u"キャンセルしました。\nそれまでに、1件の測定のCSVを保存しました。");
}
