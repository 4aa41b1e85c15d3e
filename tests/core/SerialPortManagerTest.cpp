#include "support/Session.h"

#include <gtest/gtest.h>

using namespace tensio;

namespace {

using Texts = std::vector<std::string>;

struct Link : Session {
    Texts events;

    void open()
    {
        manager.serialPortManager.connect().start([this](auto const& event) {
            auto const* failure = std::get_if<FailedEvent<ErrorRef>>(&event);
            constexpr std::array names {"opened", "", "completed", "interrupted"};
            events.push_back(
                failure ? failure->error->localizedDescription() : names.at(event.index()));
        });
    }
    void fail() const
    {
        port->delegate->serialPortDidEncounterError(std::make_shared<Error>("os", 2, "故障"));
    }
};

} // namespace

TEST(SerialPortManager, OpensTheFirstPortOfTheDeviceWithItsSettings)
{
    Link session;
    session.open();
    session.fail();
    session.ports.ports.clear();
    session.open();
    EXPECT_EQ(session.events, (Texts {"故障", "COMポートがオープンできません。"}));
    for (auto const* name : {"cu.slab_usbtouart", "tty.SLAB_USBtoUART42", "SLAB_USBtoUART"})
        session.ports.ports.push_back(std::make_shared<FakeSerialPort>(name));
    session.open();
    EXPECT_EQ(session.port->delegate, nullptr) << "left by a failed attempt";
    std::vector<Texts> calls;
    for (auto const& port : session.ports.ports)
        calls.push_back(dynamic_cast<FakeSerialPort&>(*port).calls);
    EXPECT_EQ(calls,
        (std::vector<Texts> {{}, {"baud rate 19200", "no parity", "stop bits 1", "open"}, {}}));
}

TEST(SerialPortManager, OnlyTheFirstEndReachesTheSubscriber)
{
    std::pair<void (*)(Link&), std::string> const rows[] {
        {[](Link& session) { session.port->playLoss(); }, "interrupted"},
        {[](Link& session) { session.manager.serialPortManager.disconnect(); }, "completed"},
        {[](Link& session) { session.fail(); }, "故障"}};
    for (auto const& [end, event] : rows) {
        Link session;
        session.open();
        auto* const delegate = session.port->delegate;
        delegate->serialPortWasOpened();
        end(session);
        session.manager.serialPortManager.disconnect();
        delegate->serialPortWasClosed();
        EXPECT_EQ(session.events, (Texts {"opened", event}));
        EXPECT_EQ(session.port->calls.back(), "close");
        EXPECT_EQ(session.port->delegate, nullptr) << "a closed port reports to nobody";
    }
}
