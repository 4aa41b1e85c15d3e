#include "SessionWorker.h"

#include "core/SessionRecorder.h"
#include "platform/qt/QtSaving.h"
#include "platform/qt/QtSessionStore.h"
#include "support/Session.h"

#include <QCoreApplication>

#include <cstdlib>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

// session_worker STORE PROGRESS records bursts in virtual time until it is killed, and keeps what
// it has recorded in the file PROGRESS. session_worker STORE CSV once records three bursts, saves
// them, and ends with how often the user was told; with 100 when the session or the file is not
// whole. To be killed and lied to by StoreRuns.

using namespace tensio;

namespace {

struct Recording {
    explicit Recording(char const* path)
        : store(QString::fromLocal8Bit(path))
        , recorder(session.manager, store, session.runLoop, session.clock)
    {
        session.connect();
        session.manager.username.setValue("花子");
    }

    // Pressures that tell their place, and the silence after them; the time between records passes.
    template<typename Tell>
    void press(int seconds, Tell const& tell)
    {
        for (int point = 0; point < seconds * 20; ++point) {
            session.receive({workerPressure(point)});
            tell();
            session.runLoop.advance(Seconds(0.05));
            tell();
        }
        session.runLoop.advance(Seconds(2.0));
        tell();
    }

    Session session;
    QtSessionStore store;
    SessionRecorder recorder;
};

int recordForever(char const* path, char const* progressPath)
{
    int const file = open(progressPath, O_RDWR | O_CREAT, 0600);
    if (file < 0 || ftruncate(file, sizeof(Progress)) != 0)
        return 2;
    auto* const progress = static_cast<Progress*>(
        mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0));
    Recording recording(path);
    auto const& manager = recording.session.manager;
    auto const tell = [&] {
        progress->running = 0;
        progress->finished = manager.measurementList.measurements().size();
        progress->running = manager.measurement->pressurePoints->size();
    };
    for (int burst = 0; burst < 90; ++burst)
        recording.press(1 + burst % 5, tell);
    pause();
    return 0;
}

int recordOnce(char const* path, char const* csvPath)
{
    // Seen by who traces the system calls.
    [[maybe_unused]] auto marked = access("/store-begins", F_OK);
    int told = 0;
    bool isWhole = false;
    {
        Recording recording(path);
        auto& [session, store, recorder] = recording;
        told = recorder.problem.value().empty() ? 0 : 1;
        auto const counting = recorder.problem.observeChanges([&](auto const&) { ++told; });
        for (int burst = 0; burst < 3; ++burst)
            recording.press(3, [] {});
        session.manager.disconnectAction.apply(Nothing {});
        auto const& measurements = session.manager.measurementList.measurements();
        marked = access("/store-ended", F_OK);
        QtFileWriter writer;
        isWhole = measurements.size() == 3 && measurements[2]->pressurePoints->size() == 60
            && writer.writeAtomically(csvPath, session.csvReport.all("花子", "", measurements));
        marked = access("/store-begins", F_OK);
    }
    marked = access("/store-ended", F_OK);
    return isWhole ? told : 100;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication const application(argc, argv);
    if (argc < 3)
        return 2;
    return argc == 3 ? recordForever(argv[1], argv[2]) : recordOnce(argv[1], argv[2]);
}
