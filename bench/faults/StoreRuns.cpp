#include "EachFault.h"
#include "Recording.h"

#include <atomic>
#include <csignal>
#include <random>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

// A session's store whose program is killed, or refused by the system at each of its calls.

using namespace tensio;

namespace {

// What a session has recorded when it is killed.
struct Progress {
    std::atomic<std::size_t> finished = 0;
    // Points of the running measurement.
    std::atomic<std::size_t> running = 0;
};

void recordUntilKilled(QString const& path, Progress& progress)
{
    Recording recording(path);
    auto const& manager = recording.session.manager;
    auto const observe = [&] {
        progress.running = 0;
        progress.finished = manager.measurementList.measurements().size();
        progress.running = manager.measurement->pressurePoints->size();
    };
    for (int burst = 0; burst < 90; ++burst)
        recording.press(1 + burst % 5, observe);
    pause();
}

// Of a session that has not been seen before; nothing when there is none.
std::vector<StoredMeasurement> newMeasurements(QString const& path, SessionId& seen)
{
    QtSessionStore store(path);
    EXPECT_EQ(store.problem(), StoreProblem::None);
    auto const unsaved = store.unsavedSession();
    if (!unsaved || unsaved->id == seen)
        return {};
    seen = unsaved->id;
    return store.load(seen)->measurements;
}

} // namespace

TEST(StoreRuns, KilledFiveHundredTimes)
{
    std::mt19937 random(14);
    QTemporaryDir const folder;
    auto const path = folder.filePath(storeFile);
    auto* const shared = mmap(
        nullptr, sizeof(Progress), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    SessionId seen = 0;
    for (int kill = 0; kill < 500; ++kill) {
        auto const& progress = *new (shared) Progress;
        auto const worker = fork();
        if (worker == 0)
            recordUntilKilled(path, *static_cast<Progress*>(shared));
        while (progress.running == 0)
            usleep(1000);
        usleep(static_cast<useconds_t>(random() % 400'000));
        ::kill(worker, SIGKILL);
        waitpid(worker, nullptr, 0);
        auto stored = newMeasurements(path, seen);
        EXPECT_GE(stored.size(), progress.finished);
        for (std::size_t index = 0; index < stored.size(); ++index) {
            auto const& points = stored[index].points;
            bool const isWhole = points.size() == 20 * (1 + index % 5);
            EXPECT_TRUE(isPress(points) && (isWhole || index >= progress.finished));
        }
        stored.resize(progress.finished + 1);
        EXPECT_GE(stored.back().points.size() + 20, progress.running);
    }
}

TEST(StoreRuns, EverySystemCallRefusedOnce)
{
    constexpr auto const* changing = "^(p?write(64)?|f(data)?sync|rename|unlink|ftruncate|mkdir|f?"
                                     "chmod)\\(|^openat.*sessions.db";
    int runs = 0;
    withEachFault(
        "record", changing, {"error=ENOSPC", "error=EIO"}, [&](QDir const& folder, int result) {
            QtSessionStore store(folder.filePath(storeFile));
            auto const unsaved = store.unsavedSession();
            bool const isKept = unsaved && unsaved->count == 3
                && std::ranges::all_of(store.load(unsaved->id)->measurements, [](auto const& each) {
                       return each.points.size() == 60 && isPress(each.points);
                   });
            EXPECT_TRUE(result == 1 || (result == 0 && isKept)) << result;
            ++runs;
        });
    EXPECT_GT(runs, 40) << "calls that matter must be among them";
}
