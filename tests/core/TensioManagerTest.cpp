#include "platform/SessionStore.h"
#include "support/Session.h"

#include <gtest/gtest.h>

using namespace tensio;

TEST(TensioManager, FinishAndLossKeepThePendingMeasurementUntilTheNextConnection)
{
    for (bool const isLoss : {false, true}) {
        Session session;
        auto& manager = session.manager;
        std::size_t end = 0;
        auto const ending
            = manager.connectAction.observe([&](auto const& event) { end = event.index(); });
        session.connect();
        manager.changeTargetPressurePercentAction.apply(0.5f);
        session.receive({15.0});
        if (isLoss)
            session.port->playLoss();
        else
            session.finish();
        EXPECT_EQ(end, isLoss ? 3U : 2U) << "interrupted or completed";
        ASSERT_EQ(manager.measurementList.measurements().size(), 1U);
        auto const& pending = *manager.measurementList.measurements()[0];
        EXPECT_EQ(pending.bestPressure, 15.0f);
        EXPECT_EQ(pending.targetPressure, 30.0f * 0.5f);
        EXPECT_FALSE(manager.isMeasuring.value());
        EXPECT_FALSE(manager.isRecording.value());
        EXPECT_EQ(session.port->calls.back(), "close");
        EXPECT_EQ(session.port->delegate, nullptr) << "a closed port reports to nobody";
        EXPECT_EQ(session.runLoop.liveTimers(), 1U);
        EXPECT_EQ(manager.currentPressure.value(), 15.0f);

        EXPECT_TRUE(manager.connectAction.apply(Nothing {}));
        EXPECT_TRUE(manager.sliceOfMeasurements.value().empty());
        for (auto const* live :
            {&manager.currentPressure, &manager.targetPressure, &manager.maxPressure})
            EXPECT_EQ(live->value(), 0.0f);
        session.press({16.0});
        EXPECT_EQ(manager.measurementList.measurements().at(0)->number, 1);
    }
}

TEST(TensioManager, RestoresASessionInOneStepForAllWhoObserve)
{
    Session session;
    auto& manager = session.manager;
    session.connect();
    session.receive({60.0});
    session.finish();
    session.saving.answer = "/file.csv";
    manager.saveCsv();
    using State = std::tuple<std::string, std::size_t, bool, std::string, float, float, bool>;
    std::map<State, int> states;
    Subscriptions observing;
    auto const note = [&](auto&... properties) {
        (observing.push_back(properties.observeChanges([&](auto const&) {
            ++states[{manager.username.value(), manager.measurementList.measurements().size(),
                manager.isSavedAsCsv.value(), manager.savedPath().value(),
                manager.maxPressure.value(), manager.targetPressure.value(),
                manager.serialPortManager.isSimulated.value()}];
        })),
            ...);
    };
    note(manager.sliceOfMeasurements, manager.username, manager.savedPath(), manager.isMeasuring,
        manager.isSavedAsCsv, manager.shouldReset, manager.serialPortManager.isSimulated,
        manager.maxPressure, manager.targetPressure, manager.targetPressurePercent,
        manager.currentPressure, manager.measurementList.selectedAverage);
    StoredMeasurement const press {1, 20.0f, 30.0f, {}, {10.0f, 20.0f}};
    manager.restoreSession({{1, {}, "花子", 7, 20.0f, false, true}, std::vector(7, press), 30.0f,
        1.0f, std::nullopt, true});
    EXPECT_EQ(states, (std::map<State, int> {{{"花子", 7, false, "", 0.0f, 30.0f, true}, 12}}));
    EXPECT_EQ(manager.measurementList.startingIndex(), 2) << "as after the last press";
}

TEST(TensioManager, StepsOfTheTargetStayOnTheGridThatTheUserSees)
{
    std::tuple<float, float, float, float> const rows[] {{30.0f, 1.0f, 0.1f, 30.1f},
        {10.0f, 1.0f, -0.1f, 10.0f}, {80.0f, 1.0f, 0.1f, 80.0f}, {33.3f, 0.7f, 0.1f, 23.4f / 0.7f},
        {40.0f, 0.5f, -0.1f, 39.8f}, {80.0f, 0.5f, 0.1f, 80.0f}, {0.0f, 1.0f, 0.1f, 10.0f}};
    Session session;
    for (auto const& [base, percent, step, result] : rows) {
        session.manager.targetPressure.setValue(base);
        session.manager.changeTargetPressurePercentAction.apply(percent);
        session.manager.changeTargetPressureAction.apply(step);
        EXPECT_FLOAT_EQ(session.manager.targetPressure.value(), result)
            << base << " × " << percent << " + " << step;
    }
}

TEST(TensioManager, OpensTheFirstPortOfTheDeviceWithItsSettings)
{
    Session session;
    session.connect();
    std::string failure;
    auto const failing = session.manager.connectAction.observe([&](auto const& event) {
        failure = std::get<FailedEvent<ErrorRef>>(event).error->localizedDescription();
    });
    session.port->delegate->serialPortDidEncounterError(std::make_shared<Error>("os", 2, "故障"));
    EXPECT_EQ(failure, "故障");
    session.ports.ports.clear();
    for (auto const* name : {"cu.slab_usbtouart", "tty.SLAB_USBtoUART42", "SLAB_USBtoUART"})
        session.ports.ports.push_back(std::make_shared<FakeSerialPort>(name));
    session.manager.connectAction.apply(Nothing {});
    EXPECT_EQ(session.port->delegate, nullptr) << "left by a failed attempt";
    std::vector<std::vector<std::string>> calls;
    for (auto const& port : session.ports.ports)
        calls.push_back(dynamic_cast<FakeSerialPort&>(*port).calls);
    EXPECT_EQ(
        calls, (decltype(calls) {{}, {"baud rate 19200", "no parity", "stop bits 1", "open"}, {}}));
}
