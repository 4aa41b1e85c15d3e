#include "EachFault.h"
#include "Recording.h"

// A session's store whose program is killed, or refused by the system, at each call that changes a
// file.

using namespace tensio;

namespace {

// Not what the worker prints.
constexpr auto const* changingCalls = "^(p?write(64)?|f(data)?sync|rename|unlink|ftruncate|mkdir|f?"
                                      "chmod)\\((?!1,)|^openat.*sessions.db";

std::vector<StoredMeasurement> storedMeasurements(QDir const& folder)
{
    QtSessionStore store(folder.filePath(storeFile));
    EXPECT_EQ(store.problem(), StoreProblem::None);
    auto const unsaved = store.unsavedSession();
    return unsaved ? store.load(unsaved->id, StoredPoints::Loaded).value().measurements
                   : std::vector<StoredMeasurement>();
}

// The points of each measurement, from the first.
bool areWhole(std::vector<StoredMeasurement> const& measurements, std::ptrdiff_t count)
{
    return std::ssize(measurements) >= count
        && std::all_of(measurements.begin(), measurements.begin() + count,
            [](auto const& each) { return each.points.size() == 60 && isPress(each.points); });
}

// The names of whole sessions; "?" for one that is not whole.
std::string namesIn(QString const& path)
{
    QtSessionStore store(path);
    std::string names;
    for (auto const& session : store.sessions(std::nullopt, 100).sessions) {
        auto const loaded = store.load(session.id, StoredPoints::Loaded);
        names += loaded && areWhole(loaded->measurements, session.count) ? session.name : "?";
    }
    EXPECT_EQ(store.problem(), StoreProblem::None);
    return names;
}

} // namespace

TEST(StoreRuns, KilledOrRefusedAtEverySystemCall)
{
    int kills = 0;
    int refusals = 0;
    withEachFault("record", changingCalls, {"signal=KILL", "error=ENOSPC", "error=EIO"},
        [&](QDir const& folder, WorkerResult const& result) {
            if (result.code != -1) {
                bool const isStored = result.code == 0 && areWhole(storedMeasurements(folder), 3);
                EXPECT_TRUE(isStored || result.code == 1) << result.code;
                ++refusals;
                return;
            }
            auto const finished = result.output.count('\n');
            auto const running = result.output.size() - result.output.lastIndexOf('\n') - 1;
            auto stored = storedMeasurements(folder);
            EXPECT_TRUE(areWhole(stored, finished)) << stored.size() << "of" << finished;
            stored.resize(static_cast<std::size_t>(finished) + 1);
            EXPECT_TRUE(isPress(stored.back().points));
            EXPECT_GE(std::ssize(stored.back().points) + 20, running);
            ++kills;
        });
    EXPECT_GT(kills, 20) << "calls that matter must be among them";
    EXPECT_GE(refusals, 2 * kills);
}

TEST(StoreRuns, AFinishedMeasurementIsOnTheDisk)
{
    int cuts = 0;
    withEachFault(
        "cut", R"(^write\(1, "\\n)", {"signal=KILL"}, [&](QDir const& folder, WorkerResult const&) {
            EXPECT_TRUE(areWhole(storedMeasurements(QDir(folder.filePath("flushed"))), ++cuts));
        });
    EXPECT_EQ(cuts, 3);
}

TEST(StoreRuns, AWholeChangeIsMadeOrNoneWhereverItEndsAndAFullDiskIsNamed)
{
    struct {
        std::string task;
        std::string before;
        std::string after;
    } const rows[] {{"start", "", ""}, {"update", "ba", "ba"}, {"remove", "ba", ""},
        {"removeAll", "ba", ""}, {"backUp", "edc", "ba"}, {"restore", "ba", "edcba"}};
    for (auto const& row : rows) {
        int runs = 0;
        int refusals = 0;
        withEachFault(row.task.c_str(), changingCalls, {"signal=KILL", "error=ENOSPC", "error=EIO"},
            [&](QDir const& folder, WorkerResult const& result) {
                auto const* const file = row.task == "backUp" ? backupFile : storeFile;
                auto const found = namesIn(folder.filePath(file));
                bool const isDone = result.code == 0;
                EXPECT_TRUE(found == row.after || (found == row.before && !isDone)) << found;
                // The overwriting of deleted files needs no space.
                bool const isFull = row.task != "removeAll"
                    && result.fault.contains(QRegularExpression("write.*ENOSPC"));
                EXPECT_TRUE(
                    isDone || !isFull || result.code == static_cast<int>(StoreProblem::NoSpace));
                refusals += isFull && !isDone ? 1 : 0;
                ++runs;
            });
        EXPECT_GT(runs, 30) << row.task << ": calls that matter must be among them";
        EXPECT_TRUE(refusals > 0 || row.task == "removeAll") << row.task;
    }
}

TEST(StoreRuns, LosesOnlyWhatLiesOnADamagedPage)
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
