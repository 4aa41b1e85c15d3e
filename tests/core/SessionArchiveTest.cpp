#include "core/SessionArchive.h"

#include "support/FakeSessionStore.h"
#include "support/Session.h"

#include <gtest/gtest.h>

using namespace tensio;

namespace {

using Points = std::vector<float>;

struct Recorded : Session {
    FakeSessionStore store;
    SessionArchive archive {manager, store, runLoop, clock};

    void begin()
    {
        port->isSimulator = true;
        connect(40.0f);
        manager.targetPressurePercent.setValue(0.5f);
    }
    StoredMeasurement const& stored(std::size_t index)
    {
        return store.stored.at(1).measurements.at(index);
    }
};

} // namespace

TEST(SessionArchive, WritesAFinishedMeasurementAtOnceAndARunningOneEverySecond)
{
    Recorded session;
    session.begin();
    session.press({0.0, -3.0});
    EXPECT_TRUE(session.store.stored.empty()) << "nothing above 0 is no measurement";
    session.receive({20.0, 35.0});
    session.clock.date += std::chrono::minutes(1);
    session.runLoop.advance(Seconds(2.5));
    EXPECT_EQ(session.store.checkpoints, 1);
    EXPECT_EQ(session.stored(0).points, (Points {0.0f, -3.0f, 20.0f, 35.0f}));
    EXPECT_EQ(session.stored(0).timeStamp, session.clock.date);
    session.receive({10.0});
    session.runLoop.advance(Seconds(1.0));
    session.receive({11.0, 12.0});
    session.runLoop.advance(Seconds(0.9));
    session.receive({13.0});
    EXPECT_EQ(session.stored(1).points, Points {10.0f}) << "less than a second is missing";
    session.runLoop.advance(Seconds(0.2));
    EXPECT_EQ(session.stored(1).points, (Points {10.0f, 11.0f, 12.0f, 13.0f}));
    EXPECT_EQ(session.stored(1).target, 20.0f) << "50 % of 40";
    session.manager.sliceOfMeasurements.setValue(session.manager.sliceOfMeasurements.value());
    EXPECT_EQ(session.store.checkpoints, 1) << "a turned page waits for no disk";
    session.receive(std::vector(1300, 9.0));
    session.runLoop.advance(Seconds(1.0));
    EXPECT_EQ(session.stored(1).points.size(), 1304U);
    EXPECT_EQ(session.store.longestPart, 1200U) << "a write must stay short";
    EXPECT_TRUE(session.store.stored.at(1).summary.isSimulated);
}

TEST(SessionArchive, OffersAgainWhatTheStoreRefusedAndReportsItOnce)
{
    Recorded session;
    std::vector<StoreProblem> problems;
    auto const observing = session.archive.problem.observeChanges(
        [&](auto problem) { problems.push_back(problem); });
    session.begin();
    session.store.reason = StoreProblem::NoSpace;
    session.store.refusals = 100;
    session.receive({10.0});
    session.runLoop.advance(Seconds(1.0));
    for (int press = 0; press < 9; ++press)
        session.press({20.0});
    session.receive({30.0});
    EXPECT_EQ(problems, std::vector {StoreProblem::NoSpace});
    session.store.refusals = 0;
    session.runLoop.advance(Seconds(0.9));
    EXPECT_EQ(session.store.stored.at(1).summary.count, 4) << "a backlog must not stop the display";
    session.store.refusals = 100;
    session.finish();
    auto const end = std::exchange(session.clock.date, session.clock.date + std::chrono::hours(1));
    EXPECT_FALSE(session.archive.open(1)) << "what is not stored yet would be lost";
    session.store.refusals = 0;
    session.runLoop.advance(Seconds(1.0));
    EXPECT_EQ(session.store.stored.at(1).end, end) << "it ended in a press";
    EXPECT_EQ(problems.size(), 4U);
    EXPECT_EQ(problems.back(), StoreProblem::None);
    session.begin();
    session.store.reason = StoreProblem::Vanished;
    session.store.refusals = 1;
    session.press({20.0});
    session.finish();
    EXPECT_TRUE(session.store.stored.contains(2)) << "the store has gone on";
    EXPECT_EQ(session.archive.problem.value(), StoreProblem::Vanished) << "to be read";
    session.store.refusals = 3;
    EXPECT_TRUE(session.archive.open(1) && session.archive.open(2));
    session.runLoop.advance(Seconds(2.0));
    EXPECT_EQ(session.store.dismissed, (std::vector<SessionId> {1, 2}));
}
