#include "support/Session.h"

#include <gtest/gtest.h>

using namespace tensio;

TEST(SerialPortManager, OpensTheFirstPortOfTheDeviceWithItsSettings)
{
    using Texts = std::vector<std::string>;
    Session session;
    Texts failures;
    auto const open = [&] {
        session.manager.serialPortManager.connect().start([&](auto const& event) {
            if (auto const* failure = std::get_if<FailedEvent<ErrorRef>>(&event))
                failures.push_back(failure->error->localizedDescription());
        });
    };
    open();
    session.port->delegate->serialPortDidEncounterError(std::make_shared<Error>("os", 2, "故障"));
    session.ports.ports.clear();
    open();
    EXPECT_EQ(failures, (Texts {"故障", "COMポートがオープンできません。"}));
    for (auto const* name : {"cu.slab_usbtouart", "tty.SLAB_USBtoUART42", "SLAB_USBtoUART"})
        session.ports.ports.push_back(std::make_shared<FakeSerialPort>(name));
    open();
    EXPECT_EQ(session.port->delegate, nullptr) << "left by a failed attempt";
    std::vector<Texts> calls;
    for (auto const& port : session.ports.ports)
        calls.push_back(dynamic_cast<FakeSerialPort&>(*port).calls);
    EXPECT_EQ(calls,
        (std::vector<Texts> {{}, {"baud rate 19200", "no parity", "stop bits 1", "open"}, {}}));
}
