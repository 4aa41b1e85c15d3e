#include "FaultWorker.h"
#include "Recording.h"

#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <functional>
#include <gtest/gtest.h>
#include <map>

// Saves, and changes of a session's store, that the system refuses, or whose program is killed, at
// each of their calls.

using namespace tensio;

namespace {

struct WorkerResult {
    // -1 when it was killed.
    int code;
    QByteArray output;
    QString fault;
};

WorkerResult runWorker(QString const& task, QTemporaryDir const& folder, QStringList const& strace)
{
    QProcess process;
    process.start("strace",
        QStringList {"-f"} + strace + QStringList {TENSIO_FAULT_WORKER, task, folder.path()});
    EXPECT_TRUE(process.waitForFinished(-1)) << "tools/install-dependencies strace";
    bool const isKilled = process.exitStatus() != QProcess::NormalExit;
    return {isKilled ? -1 : process.exitCode(), process.readAllStandardOutput(), strace.back()};
}

// The system calls of this kind that the main thread makes, as their names and their counts since
// the start.
std::vector<std::pair<QString, int>> callsOf(QString const& task, char const* kind)
{
    QTemporaryDir const folder;
    EXPECT_EQ(runWorker(task, folder, {"-o", folder.filePath("log")}).code, 0);
    QFile file(folder.filePath("log"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    std::vector<std::pair<QString, int>> calls;
    std::map<QString, int> counts;
    bool isBetweenMarks = false;
    auto const lines = QString::fromUtf8(file.readAll()).split('\n');
    auto const mainThread = lines.first().section(' ', 0, 0);
    for (auto const& line : lines) {
        if (line.section(' ', 0, 0) != mainThread)
            continue;
        auto const call = line.section(' ', 1).trimmed();
        auto const name = call.section('(', 0, 0);
        auto const count = ++counts[name];
        if (call.contains(faultsBegin) || call.contains(faultsEnd))
            isBetweenMarks = call.contains(faultsBegin);
        else if (isBetweenMarks && call.contains(QRegularExpression(kind)))
            calls.emplace_back(name, count);
    }
    return calls;
}

// Runs the task with each of the faults at each of its calls of this kind.
void withEachFault(QString const& task, char const* kind, QStringList const& faults,
    std::function<void(QDir const&, WorkerResult const&)> const& check)
{
    for (auto const& [call, count] : callsOf(task, kind)) {
        for (auto const& fault : faults) {
            auto const injection = QString("inject=%1:%2:when=%3").arg(call, fault).arg(count);
            SCOPED_TRACE(injection.toStdString());
            QTemporaryDir const folder;
            auto const result = runWorker(task, folder, {"-o", "/dev/null", "-e", injection});
            check(QDir(folder.path()), result);
        }
    }
}

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

// As a press makes them, from its beginning.
bool isPress(std::vector<float> const& points)
{
    float place = 0.0f;
    return std::ranges::all_of(points, [&](float point) { return point == ++place; });
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

TEST(FaultRuns, LeaveTheOldFileOrTheNewWhateverCallFails)
{
    EXPECT_EQ(callsOf("create", "^f(data)?sync").size(), 2U) << "survives a power cut";
    int refusals = 0;
    QStringList const faults {
        "error=ENOSPC", "error=EDQUOT", "error=EIO", "error=EINTR", "error=EACCES", "signal=KILL"};
    for (auto const* task : {"create", "replace"}) {
        QByteArray const old(task == std::string("create") ? 0 : savedSize / 2, 'o');
        withEachFault(task, ".", faults, [&](QDir const& folder, WorkerResult const& result) {
            QFile file(folder.filePath(savedFile));
            auto const found = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
            bool const isNew = found == QByteArray(savedSize, 'n');
            EXPECT_TRUE(isNew || found == old);
            EXPECT_TRUE(result.code == -1 || isNew == (result.code == 0));
            auto const files = folder.entryList(QDir::Files | QDir::Hidden).size();
            EXPECT_TRUE(result.code == -1 || files == (file.exists() ? 1 : 0));
            refusals += result.code == 1 ? 1 : 0;
        });
    }
    EXPECT_GT(refusals, 20) << "calls that matter must be among them";
}

TEST(FaultRuns, KilledOrRefusedAtEverySystemCall)
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

TEST(FaultRuns, AFinishedMeasurementIsOnTheDisk)
{
    int cuts = 0;
    withEachFault(
        "cut", R"(^write\(1, "\\n)", {"signal=KILL"}, [&](QDir const& folder, WorkerResult const&) {
            EXPECT_TRUE(areWhole(storedMeasurements(QDir(folder.filePath("flushed"))), ++cuts));
        });
    EXPECT_EQ(cuts, 3);
}

TEST(FaultRuns, AWholeChangeIsMadeOrNoneWhereverItEndsAndAFullDiskIsNamed)
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
