#include "support/Session.h"

#include <gtest/gtest.h>

using namespace tensio;

namespace {

using Texts = std::vector<std::string>;

struct Link : Session {
    SerialPortManager& link {manager.serialPortManager};
    Texts events;

    void open()
    {
        link.connect().start([this](auto const& event) {
            if (std::holds_alternative<ValueEvent<Nothing>>(event))
                events.emplace_back("opened");
            else if (auto const* failure = std::get_if<FailedEvent<ErrorRef>>(&event))
                events.push_back(failure->error->localizedDescription());
            else
                events.emplace_back(
                    std::holds_alternative<CompletedEvent>(event) ? "completed" : "interrupted");
        });
    }
};

} // namespace

TEST(SerialPortManager, OpensTheFirstPortOfTheDeviceWithItsSettings)
{
    Link session;
    session.ports.ports.clear();
    session.open();
    EXPECT_EQ(session.events, Texts {"COMポートがオープンできません。"});
    for (auto const* name : {"cu.slab_usbtouart", "tty.SLAB_USBtoUART42", "SLAB_USBtoUART"})
        session.ports.ports.push_back(std::make_shared<FakeSerialPort>(name));
    session.open();
    std::vector<Texts> calls;
    for (auto const& port : session.ports.ports)
        calls.push_back(dynamic_cast<FakeSerialPort&>(*port).calls);
    EXPECT_EQ(calls,
        (std::vector<Texts> {{}, {"baud rate 19200", "no parity", "stop bits 1", "open"}, {}}));
}

TEST(SerialPortManager, OnlyTheFirstEndReachesTheSubscriber)
{
    auto const failure = std::make_shared<Error>("os", 2, "故障");
    std::pair<std::function<void(Link&)>, std::string> const rows[] {
        {[](Link& session) { session.port->playLoss(); }, "interrupted"},
        {[](Link& session) { session.link.disconnect(); }, "completed"},
        {[&](Link& session) { session.port->delegate->serialPortDidEncounterError(failure); },
            "故障"},
    };
    for (auto const& [end, event] : rows) {
        Link session;
        session.open();
        auto* const delegate = session.port->delegate;
        delegate->serialPortWasOpened();
        end(session);
        session.link.disconnect();
        delegate->serialPortWasClosed();
        delegate->serialPortDidEncounterError(failure);
        EXPECT_EQ(session.events, (Texts {"opened", event}));
        EXPECT_EQ(session.port->calls.back(), "close");
        EXPECT_EQ(session.port->delegate, nullptr) << "a closed port reports to nobody";
    }
}

TEST(SerialPortManager, APortLeftByAFailedAttemptReportsToNobody)
{
    Link session;
    session.open();
    session.port->delegate->serialPortDidEncounterError(std::make_shared<Error>("os", 2));
    session.ports.ports = {std::make_shared<FakeSerialPort>("SLAB_USBtoUART")};
    session.open();
    EXPECT_EQ(session.port->delegate, nullptr);
}
