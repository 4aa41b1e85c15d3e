#include "support/Session.h"

#include <gtest/gtest.h>

using namespace tensio;

TEST(TensioManager, KeepsRawReadingsAndShowsThemClamped)
{
    Session session;
    session.connect();
    std::vector<float> shown;
    std::vector<float> maximumSeen;
    auto const observing = session.manager.currentPressure.observeChanges([&](float pressure) {
        shown.push_back(pressure);
        maximumSeen.push_back(session.manager.maxPressure.value());
    });
    session.receive({1.0, -3.0, 12.5, 7.0, 7.0});
    EXPECT_EQ(shown, (std::vector {1.0f, 0.0f, 12.5f, 7.0f, 7.0f}));
    EXPECT_EQ(maximumSeen, (std::vector {0.0f, 1.0f, 1.0f, 12.5f, 12.5f}))
        << "the current pressure changes first";
    EXPECT_EQ(session.manager.measurement->pressurePoints,
        (std::vector {1.0f, -3.0f, 12.5f, 7.0f, 7.0f}));
}

TEST(TensioManager, EndsAMeasurementAtTheFirstTickWithoutARecordSinceTheLastTick)
{
    // The first record starts the timer; ticks come at 1, 2, 3 s.
    for (auto const& [pause, measurements] :
        {std::pair {0.9, 0U}, {1.9, 0U}, {2.0, 1U}, {2.1, 1U}}) {
        Session session;
        session.connect();
        session.receive({0.0, 20.0});
        session.runLoop.advance(Seconds(pause));
        session.receive({0.0});
        EXPECT_EQ(session.bestPressures().size(), measurements) << pause;
    }
}

TEST(TensioManager, ABurstWithoutPressureIsKeptForTheNextMeasurement)
{
    Session session;
    session.connect();
    session.press({0.0, -1.0});
    EXPECT_TRUE(session.bestPressures().empty());
    EXPECT_EQ(session.runLoop.liveTimers(), 1U) << "only the clock still runs";
    session.press({8.0});
    EXPECT_EQ(session.manager.measurementList.measurements().at(0)->pressurePoints,
        (std::vector {0.0f, -1.0f, 8.0f}));
}

TEST(TensioManager, ClearsEverythingAtAConnection)
{
    Session session;
    auto& manager = session.manager;
    int resets = 0;
    auto const observing = manager.shouldReset.observeChanges([&](bool) { ++resets; });
    session.connect();
    session.press({15.0});
    session.receive({14.0});
    manager.disconnectAction.apply(Nothing {});
    manager.connectAction.apply(Nothing {});
    EXPECT_EQ(resets, 2);
    EXPECT_TRUE(manager.shouldReset.value());
    EXPECT_TRUE(manager.sliceOfMeasurements.value().empty());
    EXPECT_EQ(manager.currentPressure.value(), 0.0f);
    EXPECT_EQ(manager.targetPressure.value(), 0.0f);
    EXPECT_EQ(manager.maxPressure.value(), 0.0f);
    session.press({16.0});
    EXPECT_EQ(manager.measurementList.measurements().at(0)->number, 1);
}

TEST(TensioManager, CountsOnWhenTheListIsFullAndScrollsIt)
{
    Session session;
    int ticks = 0;
    auto const observing = session.manager.currentTime.observeChanges([&](Date) { ++ticks; });
    session.connect();
    for (int burst = 0; burst < 102; ++burst)
        session.press({20.0});
    EXPECT_EQ(ticks, 255) << "a tick each second";
    EXPECT_EQ(session.bestPressures().size(), 99U);
    EXPECT_EQ(session.manager.measurement->number, 103);
    session.manager.changeSliceStartingIndex.apply(-3);
    session.manager.changeSliceStartingIndex.apply(1);
    EXPECT_EQ(session.manager.sliceOfMeasurements.value().at(0)->number, 93);
}

TEST(TensioManager, FinishedMeasurementsCarryTheirTargetAndTime)
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
