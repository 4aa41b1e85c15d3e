#include "support/Session.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace tensio;

TEST(TensioManager, KeepsRawReadingsAndShowsThemClamped)
{
    Session session;
    session.connect();
    std::vector<float> shown;
    auto const observing = session.manager.currentPressure.observeChanges(
        [&](float pressure) { shown.push_back(pressure); });
    session.receive({1.0, -3.0, 12.5, 0.0, 7.0, 7.0});
    EXPECT_EQ(shown, (std::vector {1.0f, 0.0f, 12.5f, 0.0f, 7.0f, 7.0f}));
    EXPECT_EQ(session.manager.maxPressure.value(), 12.5f);
    EXPECT_EQ(session.manager.measurement->pressurePoints,
        (std::vector {1.0f, -3.0f, 12.5f, 0.0f, 7.0f, 7.0f}));
}

TEST(TensioManager, StartsIdleAndEachConnectionWithoutATarget)
{
    Session session;
    auto& manager = session.manager;
    EXPECT_EQ(manager.targetPressure.value(), 0.0f);
    EXPECT_EQ(manager.maxPressure.value(), 0.0f);
    EXPECT_EQ(manager.targetPressurePercent.value(), 1.0f);
    EXPECT_FALSE(manager.isShowingPopup.value() || manager.isMeasuring.value());
    session.connect(40.0f);
    manager.disconnectAction.apply(Nothing {});
    manager.connectAction.apply(Nothing {});
    EXPECT_EQ(manager.targetPressure.value(), 0.0f);
}

TEST(TensioManager, ReadingsOfNothingDoNotRestartTheTimer)
{
    Session session;
    session.connect();
    session.receive({0.0});
    session.runLoop.advance(Seconds(0.9));
    session.receive({0.0, 20.0});
    session.runLoop.advance(Seconds(1.15));
    EXPECT_FALSE(session.bestPressures().empty()) << "no record between the ticks at 1 s and 2 s";
}

TEST(TensioManager, ObserversSeeTheCurrentPressureBeforeTheMaximumRises)
{
    Session session;
    session.connect();
    std::vector<float> maximumSeen;
    auto const observing = session.manager.currentPressure.observeChanges(
        [&](float) { maximumSeen.push_back(session.manager.maxPressure.value()); });
    session.receive({5.0, 9.0});
    EXPECT_EQ(maximumSeen, (std::vector {0.0f, 5.0f}));
}

TEST(TensioManager, EndsAMeasurementAtTheFirstTickWithoutARecordSinceTheTickBefore)
{
    struct Row {
        double pause;
        std::size_t measurements;
    };
    // The burst's first record starts the timer; ticks come at 1, 2, 3 s.
    for (auto const& [pause, measurements] :
        std::vector<Row> {{0.9, 0U}, {1.9, 0U}, {2.0, 1U}, {2.1, 1U}}) {
        Session session;
        session.connect();
        session.receive({20.0});
        session.runLoop.advance(Seconds(pause));
        session.receive({25.0});
        EXPECT_EQ(session.bestPressures().size(), measurements) << pause;
    }
    Session session;
    session.connect();
    for (int record = 0; record < 200; ++record) {
        session.receive({20.0});
        session.runLoop.advance(Seconds(0.95));
    }
    EXPECT_TRUE(session.bestPressures().empty());
    session.runLoop.advance(Seconds(2.0));
    EXPECT_EQ(session.manager.measurementList.measurements().front()->pressurePoints->size(), 200U);
}

TEST(TensioManager, FinishedMeasurementsCarryWhatWasInForce)
{
    Session session;
    session.connect(40.0f);
    session.manager.changeTargetPressurePercentAction.apply(0.8f);
    session.press({10.0, 35.5});
    EXPECT_EQ(session.manager.maxPressure.value(), 0.0f);
    session.clock.date += std::chrono::seconds(60);
    session.press({22.0});
    auto const& list = session.manager.measurementList.measurements();
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[0]->number, 1);
    EXPECT_EQ(list[1]->number, 2);
    EXPECT_EQ(list[0]->bestPressure, 35.5f);
    EXPECT_FLOAT_EQ(*list[0]->targetPressure, 32.0f);
    EXPECT_EQ(*list[1]->timeStamp - *list[0]->timeStamp, std::chrono::seconds(60));
    EXPECT_EQ(session.manager.sliceOfMeasurements.value().size(), 2U);
}

TEST(TensioManager, ABurstWithoutPressureIsKeptForTheNextMeasurement)
{
    Session session;
    session.connect();
    session.press({0.0, -1.0});
    EXPECT_TRUE(session.bestPressures().empty());
    EXPECT_EQ(session.runLoop.liveTimers(), 1U) << "only the clock still runs";
    session.press({8.0});
    auto const& list = session.manager.measurementList.measurements();
    ASSERT_EQ(list.size(), 1U);
    EXPECT_EQ(list.front()->pressurePoints, (std::vector {0.0f, -1.0f, 8.0f}));
}

TEST(TensioManager, FinishAndLossBothKeepThePendingMeasurement)
{
    using End = std::function<void(Session&)>;
    std::vector<End> const ends {
        [](Session& session) { session.manager.disconnectAction.apply(Nothing {}); },
        [](Session& session) { session.port->playLoss(); },
    };
    for (auto const& end : ends) {
        Session session;
        session.connect();
        session.receive({15.0});
        end(session);
        EXPECT_EQ(session.bestPressures(), std::vector {15.0f});
        EXPECT_FALSE(session.manager.isMeasuring.value());
        EXPECT_EQ(session.port->calls.back(), "close");
        EXPECT_EQ(session.runLoop.liveTimers(), 1U);
        EXPECT_EQ(session.manager.currentPressure.value(), 15.0f);
        EXPECT_FALSE(session.manager.connectAction.isExecuting());
    }
}

TEST(TensioManager, EveryConnectionStartsAnew)
{
    Session session;
    session.connect();
    session.press({15.0});
    session.manager.disconnectAction.apply(Nothing {});
    int resets = 0;
    auto const observing = session.manager.shouldReset.observeChanges(
        [&](bool should) { resets += should ? 1 : 0; });
    session.connect();
    EXPECT_EQ(resets, 1);
    EXPECT_TRUE(session.manager.sliceOfMeasurements.value().empty());
    EXPECT_EQ(session.manager.currentPressure.value(), 0.0f);
    session.press({16.0});
    EXPECT_EQ(session.manager.measurementList.measurements().front()->number, 1);
}

TEST(TensioManager, AConnectThatFailsLeavesAStartedConnectionAndMayBeRepeated)
{
    Session session;
    session.ports.ports.clear();
    int failures = 0;
    auto const observing = session.manager.connectAction.observe([&](auto const& event) {
        failures += std::holds_alternative<FailedEvent<ErrorRef>>(event) ? 1 : 0;
    });
    session.manager.connectAction.apply(Nothing {});
    EXPECT_TRUE(session.manager.isMeasuring.value());
    session.manager.connectAction.apply(Nothing {});
    EXPECT_EQ(failures, 2);
    session.ports.ports.push_back(session.port);
    EXPECT_TRUE(session.manager.connectAction.apply(Nothing {}));
    EXPECT_FALSE(session.manager.connectAction.apply(Nothing {}))
        << "it executes until the port closes";
}

TEST(TensioManager, GoesOnNumberingWhenTheListIsFull)
{
    Session session;
    session.connect();
    for (int burst = 0; burst < 101; ++burst)
        session.press({20.0});
    EXPECT_EQ(session.bestPressures().size(), 99U);
    EXPECT_EQ(session.manager.measurement->number, 102);
}

TEST(TensioManager, SurvivesReadingsThatAreNotFinite)
{
    Session session;
    session.connect();
    session.port->delegate->serialPortDidReceiveData("+nan0X+0100X+inf0X-inf0X+1e95X");
    session.runLoop.advance(Seconds(3.0));
    auto const measurement = session.manager.measurementList.measurements().front();
    EXPECT_EQ(measurement->pressurePoints->size(), 5U);
    EXPECT_TRUE(std::isinf(*measurement->bestPressure));
}

TEST(TensioManager, TheClockTicksEverySecondWhateverElseHappens)
{
    Session session;
    int ticks = 0;
    auto const observing = session.manager.currentTime.observeChanges([&](Date) { ++ticks; });
    session.connect();
    session.runLoop.advance(Seconds(3600.0));
    EXPECT_EQ(ticks, 3600);
}

TEST(TensioManager, ScrollsTheHistoryBySignedSteps)
{
    Session session;
    session.connect();
    for (int burst = 0; burst < 7; ++burst)
        session.press({20.0});
    std::vector<std::ptrdiff_t> indices;
    for (int const step : {-1, -1, -1, 1, 1, 1}) {
        session.manager.changeSliceStartingIndex.apply(step);
        indices.push_back(session.manager.measurementList.startingIndex());
    }
    EXPECT_EQ(indices, (std::vector<std::ptrdiff_t> {1, 0, 0, 1, 2, 2}));
}
