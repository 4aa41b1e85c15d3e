#include "core/SavingMessages.h"
#include "output/ListPrintView.h"
#include "platform/SessionStore.h"
#include "support/Session.h"

#include <gtest/gtest.h>

using namespace tensio;

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

TEST(TensioManager, OpensTheFirstPortOfTheDevice)
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
    std::vector<std::shared_ptr<FakeSerialPort>> others;
    for (auto const* name : {"cu.slab_usbtouart", "tty.SLAB_USBtoUART42", "SLAB_USBtoUART"})
        session.ports.ports.push_back(others.emplace_back(std::make_shared<FakeSerialPort>(name)));
    session.manager.connectAction.apply(Nothing {});
    EXPECT_EQ(session.port->delegate, nullptr) << "left by a failed attempt";
    EXPECT_EQ(others[1]->calls.back(), "open");
    EXPECT_TRUE(others[0]->calls.empty() && others[2]->calls.empty());
}

TEST(Saving, AsksForNoFileThatCannotBe)
{
    Session session;
    ListPrintView view("", {});
    session.manager.saveCsv();
    session.manager.saveSelectedCsv();
    session.pdfRenderer.hasRoom = false;
    session.manager.saveViewAsPdf(view);
    EXPECT_EQ(session.alerts.messages, std::vector<std::string> {paperTooSmallMessage});
    EXPECT_TRUE(session.saving.log.empty());
    session.pdfRenderer.hasRoom = session.pdfRenderer.fails = true;
    session.saving.answer = "/folder/file";
    session.manager.saveViewAsPdf(view);
    session.manager.saveScreenshot();
    EXPECT_EQ(session.saving.log.size(), 3U) << "PDF panel, capture, PNG panel; nothing to write";
    EXPECT_EQ(session.alerts.messages.back(), saveFailedMessage);
}
