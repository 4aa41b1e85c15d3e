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

// What storing costs the main thread, and what many stored sessions cost the start and the list.

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
