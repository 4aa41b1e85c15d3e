#include "Recording.h"
#include "sessions/PastSessionsWindow.h"
#include "support/Ui.h"

#include <QAction>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTreeView>

#include <gtest/gtest.h>

// What storing costs the main thread, what many stored sessions cost the start and the list, and
// what damage costs.

using namespace tensio;

namespace {

// Milliseconds, in order.
template<typename Work>
std::vector<double> timesOf(int runs, Work const& work)
{
    std::vector<double> times;
    for (int run = 0; run < runs; ++run) {
        QElapsedTimer timer;
        timer.start();
        work();
        times.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
    }
    std::ranges::sort(times);
    return times;
}

struct Place {
    // Not in memory, as /tmp may be.
    QTemporaryDir folder {QCoreApplication::applicationDirPath() + "/store-XXXXXX"};
    QString path {folder.filePath("sessions.db")};
};

// Sessions of ten persons, each of that many measurements of three seconds.
void fill(QString const& path, int sessions, int measurements)
{
    SessionDatabase database(path);
    auto const insert = [&](int count, QString const& rows) {
        return database.run(QString("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 "
                                    "FROM n WHERE i < %1) INSERT INTO ")
                                .arg(count)
            + rows);
    };
    database.change(SessionDatabase::Durability::ProgramEnd, [&] {
        return insert(sessions,
                   QString(
                       "session (start, name, simulated, count, best, identity) "
                       "SELECT i, '被験者' || (i % 10), 0, %1, 30.0, hex(randomblob(16)) FROM n")
                       .arg(measurements))
            && insert(measurements, "measurement SELECT id, i, 30.0, 30.0, 0, 1 FROM session, n")
            && insert(
                3, "points SELECT session, number, 20 * i, randomblob(80) FROM measurement, n");
    });
}

// Milliseconds of each step but the last, which waits for the disk.
std::vector<double> stepsOf(SessionTransfer& transfer)
{
    std::vector<double> steps;
    auto state = TransferState::Running;
    while (state == TransferState::Running)
        steps.push_back(timesOf(1, [&] { state = transfer.step(); })[0]);
    EXPECT_EQ(state, TransferState::Done);
    steps.pop_back();
    std::ranges::sort(steps);
    return steps;
}

// The list, once all sessions are in it.
std::unique_ptr<PastSessionsWindow> shownList(Recording& recording, QWidget& parent)
{
    auto& session = recording.session;
    auto list = std::make_unique<PastSessionsWindow>(recording.archive,
        SessionServices {session.saving, session.saving, session.clock, {}}, parent);
    list->show();
    list->grab();
    while (!find<QAction>(*list, "removeAllAction").isEnabled())
        QCoreApplication::processEvents();
    return list;
}

} // namespace

TEST(StoreDamage, LosesOnlyWhatLiesOnADamagedPage)
{
    QTemporaryDir const folder;
    auto const sound = folder.filePath("sessions.db");
    fill(sound, 150, 1);
    constexpr int pageSize = 4096;
    auto const pages = QFileInfo(sound).size() / pageSize;
    int damagedRoots = 0;
    std::ptrdiff_t unnamed = 0;
    // The first page tells what the tables are.
    for (int page = 1; page < pages; ++page) {
        QTemporaryDir const place;
        auto const path = place.filePath("sessions.db");
        ASSERT_TRUE(QFile::copy(sound, path));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadWrite) && file.seek(qint64 {page} * pageSize)
            && file.write(QByteArray(pageSize, '\xff')));
        file.close();
        std::ptrdiff_t whole = 0;
        // Damage that shows late is repaired at the next start.
        for (int start = 0; start < 2; ++start) {
            QtSessionStore store(path);
            auto const found = store.sessions(std::nullopt, 1000);
            whole = std::ranges::count_if(found.sessions, [&](auto const& session) {
                return store.load(session.id, StoredPoints::Loaded).value().isComplete;
            });
            EXPECT_TRUE(whole == 150 || start == 1 || store.problem() != StoreProblem::None);
            EXPECT_TRUE(found.isComplete && found.sessions.size() == 150) << page;
            unnamed += std::ranges::count_if(found.sessions,
                [](auto const& session) { return session.name.starts_with("氏名・装置不明 "); });
            EXPECT_TRUE(start == 0 || store.problem() != StoreProblem::Damaged) << page;
        }
        damagedRoots += whole < 75 ? 1 : 0;
    }
    EXPECT_GT(pages, 15);
    EXPECT_GE(unnamed, 150) << "when the table of the names is damaged";
    EXPECT_EQ(damagedRoots, 2) << "of measurements and of points";
}

TEST(StoreTimes, OfTheMainThreadInAnHourAndAtTheEndOfMeasurements)
{
    Place const place;
    Recording recording(place.path);
    auto const record = [&](double silence) {
        recording.session.receive(std::vector<double>(20, 30.0));
        recording.session.runLoop.advance(Seconds(silence));
    };
    auto const seconds = timesOf(3600, [&] { record(1.0); });
    recording.session.runLoop.advance(Seconds(2.0));
    auto const ends = timesOf(90, [&] { record(2.0); });
    recording.session.finish();
    EXPECT_EQ(recording.store.unsavedSession()->count, 91);
    EXPECT_LT(seconds[1800], 0.2);
    EXPECT_LT(seconds[3564], 5.0);
    EXPECT_LT(ends[45], 20.0);
    EXPECT_LT(QFileInfo(place.path).size() + QFileInfo(place.path + "-wal").size(), 1'000'000);
}

TEST(StoreTimes, WithTenThousandSessions)
{
    Place const place;
    Place const empty;
    fill(place.path, 10'000, 20);
    auto const startTime = [](Place const& of) {
        return timesOf(11, [&] { QtSessionStore(of.path).unsavedSession(); })[5];
    };
    EXPECT_LT(startTime(place) - startTime(empty), 20.0);
    Recording recording(place.path);
    QWidget parent;
    EXPECT_LT(timesOf(5, [&] { shownList(recording, parent); })[2], 200.0);
    auto const backup = place.folder.filePath("backup").toStdString();
    QtSessionStore other(empty.path);
    for (auto const& transfer : {recording.store.backUp(backup), other.restore(backup)}) {
        auto const steps = stepsOf(*transfer);
        EXPECT_LT(steps[steps.size() * 95 / 100], 20.0);
        EXPECT_EQ(transfer->count(), 10'000);
    }
}

TEST(StoreTimes, WithAHundredThousandSessions)
{
    Place const place;
    fill(place.path, 100'000, 20);
    Recording recording(place.path);
    std::optional<SessionSummary> last;
    auto const pages
        = timesOf(500, [&] { last = recording.store.sessions(last, 200).sessions.back(); });
    EXPECT_EQ(last->id, 1);
    EXPECT_LT(pages[495], 33.0);
    QWidget parent;
    auto const window = shownList(recording, parent);
    auto& list = find<QTreeView>(*window);
    EXPECT_LT(timesOf(1, [&] { list.selectAll(); })[0], 33.0);
    list.setCurrentIndex(list.model()->index(0, 0));
    EXPECT_LT(timesOf(1, [&] { find<QAction>(*window, "sameNameAction").trigger(); })[0], 33.0);
    EXPECT_EQ(list.selectionModel()->selection().size(), 10'000);
    EXPECT_LT(timesOf(1, [&] { EXPECT_TRUE(recording.store.removeAll()); })[0], 2000.0);
    EXPECT_LT(QFileInfo(place.path).size(), 100'000);
}
