#include "core/SessionRecorder.h"

#include "support/FakeSessionStore.h"
#include "support/Session.h"

#include <gtest/gtest.h>

using namespace tensio;

namespace {

struct RecordedSession {
    Session session;
    FakeSessionStore store;
    SessionRecorder recorder {session.manager, store, session.runLoop, session.clock};

    RecordedSession()
    {
        session.port->isSimulator = true;
        session.connect(40.0f);
        session.manager.username.setValue("山田 花子");
        session.manager.targetPressurePercent.setValue(0.5f);
    }
    StoredSession const& stored() { return store.stored.at(1); }
};

using Points = std::vector<float>;

} // namespace

TEST(SessionRecorder, WritesAFinishedMeasurementAtOnceAndARunningOneEverySecond)
{
    RecordedSession recorded;
    auto& [session, store, recorder] = recorded;
    session.press({0.0, -3.0});
    EXPECT_TRUE(store.stored.empty()) << "nothing above 0 is no measurement";
    session.press({20.0, 35.0});
    EXPECT_EQ(store.finishedMeasurements, 1U);
    session.receive({10.0});
    session.runLoop.advance(Seconds(1.0));
    session.receive({11.0, 12.0});
    session.runLoop.advance(Seconds(0.9));
    session.receive({13.0});
    ASSERT_EQ(recorded.stored().measurements.size(), 2U);
    auto const& [first, running]
        = std::tie(recorded.stored().measurements[0], recorded.stored().measurements[1]);
    EXPECT_EQ(first.points, (Points {0.0f, -3.0f, 20.0f, 35.0f}));
    EXPECT_EQ(std::tuple(first.best, first.target, first.timeStamp),
        std::tuple(35.0f, 20.0f, session.clock.date));
    EXPECT_EQ(running.points, Points {10.0f}) << "less than a second is missing";
    session.runLoop.advance(Seconds(0.2));
    EXPECT_EQ(running.points, (Points {10.0f, 11.0f, 12.0f, 13.0f}));
    EXPECT_EQ(std::tuple(running.best, running.target), std::tuple(13.0f, 20.0f));
    EXPECT_EQ(std::tuple(recorded.stored().summary.name, recorded.stored().summary.isSimulated),
        std::tuple("山田 花子", true));
}

TEST(SessionRecorder, OffersAgainWhatTheStoreRefusedAndSaysSoOnce)
{
    RecordedSession recorded;
    auto& [session, store, recorder] = recorded;
    int problems = 0;
    auto const observing = recorder.problem.observeChanges([&](auto const&) { ++problems; });
    store.refusals = 100;
    session.receive({10.0});
    session.runLoop.advance(Seconds(1.0));
    session.press({20.0});
    session.manager.disconnectAction.apply(Nothing {});
    EXPECT_FALSE(recorder.open(1)) << "what is not stored yet would be lost";
    store.refusals = 0;
    session.runLoop.advance(Seconds(1.0));
    ASSERT_EQ(store.finishedMeasurements, 1U);
    EXPECT_EQ(recorded.stored().measurements[0].points, (Points {10.0f, 20.0f}));
    EXPECT_EQ(problems, 1);
    EXPECT_TRUE(recorder.canOpen.value());
}

TEST(SessionRecorder, PutsAPastSessionBackOnlyBetweenSessions)
{
    RecordedSession recorded;
    auto& [session, store, recorder] = recorded;
    session.press({20.0});
    ASSERT_FALSE(recorder.open(1));
    session.manager.disconnectAction.apply(Nothing {});
    session.port->isSimulator = false;
    session.connect();
    session.manager.username.setValue("別の人");
    session.press({50.0});
    session.manager.disconnectAction.apply(Nothing {});
    ASSERT_TRUE(recorder.open(1));
    EXPECT_EQ(session.bestPressures(), std::vector {20.0f});
    EXPECT_EQ(session.manager.username.value(), "山田 花子");
    EXPECT_EQ(session.manager.maxPressure.value(), 0.0f) << "of another person";
    EXPECT_TRUE(session.manager.serialPortManager.isSimulated.value());
    ASSERT_TRUE(recorder.open(2));
    EXPECT_FALSE(session.manager.serialPortManager.isSimulated.value());
    ASSERT_TRUE(recorder.open(1));
    ASSERT_EQ(recorder.pastSession.value()->id, 1);
    session.saving.answer = "/file.csv";
    session.manager.saveCsv();
    EXPECT_TRUE(store.stored[1].summary.isSaved);
    EXPECT_FALSE(store.stored[2].summary.isSaved);
    session.connect();
    EXPECT_FALSE(recorder.pastSession.value());
}
