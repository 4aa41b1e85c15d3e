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

} // namespace

TEST(StoreRuns, KilledAtEverySystemCall)
{
    int kills = 0;
    withEachFault("record", changingCalls, {"signal=KILL"},
        [&](QDir const& folder, WorkerResult const& result) {
            auto const finished = result.output.count('\n');
            auto const running = result.output.size() - result.output.lastIndexOf('\n') - 1;
            auto stored = storedMeasurements(folder);
            EXPECT_TRUE(areWhole(stored, finished)) << stored.size() << "of" << finished;
            stored.resize(static_cast<std::size_t>(finished) + 1);
            EXPECT_TRUE(isPress(stored.back().points));
            EXPECT_GE(std::ssize(stored.back().points) + 20, running);
            kills += result.code == -1 ? 1 : 0;
        });
    EXPECT_GT(kills, 20) << "calls that matter must be among them";
}

TEST(StoreRuns, EverySystemCallRefusedOnce)
{
    int runs = 0;
    withEachFault("record", changingCalls, {"error=ENOSPC", "error=EIO"},
        [&](QDir const& folder, WorkerResult const& result) {
            EXPECT_TRUE(
                result.code == 1 || (result.code == 0 && areWhole(storedMeasurements(folder), 3)))
                << result.code;
            ++runs;
        });
    EXPECT_GT(runs, 40) << "calls that matter must be among them";
}
