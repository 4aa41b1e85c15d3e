#include "core/SerialPortManager.h"

#include "core/TensioError.h"
#include "support/FakeSerialPort.h"

#include <gtest/gtest.h>

using namespace tensio;

namespace {

struct Link {
    FakeSerialPortList ports;
    std::shared_ptr<FakeSerialPort> port {plugIn("cu.SLAB_USBtoUART")};
    SerialPortManager manager {ports};
    std::vector<std::string> events;

    std::shared_ptr<FakeSerialPort> plugIn(std::string const& name)
    {
        auto plugged = std::make_shared<FakeSerialPort>(name);
        ports.ports.push_back(plugged);
        return plugged;
    }

    void connect()
    {
        manager.connect().start([this](auto const& event) {
            if (std::holds_alternative<ValueEvent<Nothing>>(event))
                events.emplace_back("opened");
            else if (auto const* failure = std::get_if<FailedEvent<ErrorRef>>(&event))
                events.push_back("failed: " + failure->error->localizedDescription());
            else
                events.emplace_back(
                    std::holds_alternative<CompletedEvent>(event) ? "completed" : "interrupted");
        });
    }
};

using Texts = std::vector<std::string>;

} // namespace

TEST(SerialPortManager, OpensTheFirstPortOfTheDeviceWithItsSettings)
{
    Link link;
    link.ports.ports.clear();
    auto const other = link.plugIn("cu.slab_usbtouart");
    auto const first = link.plugIn("tty.SLAB_USBtoUART42");
    auto const second = link.plugIn("SLAB_USBtoUART");
    link.connect();
    EXPECT_EQ(first->calls, (Texts {"baud rate 19200", "no parity", "stop bits 1", "open"}));
    EXPECT_TRUE(other->calls.empty());
    EXPECT_TRUE(second->calls.empty());
    EXPECT_EQ(link.manager.pressure.value(), 0.0f);
    EXPECT_TRUE(link.events.empty()) << "opening is reported by the port, not by the call";
    first->delegate->serialPortWasOpened();
    EXPECT_EQ(link.events, Texts {"opened"});
}

TEST(SerialPortManager, FailsWithItsOwnErrorWhenNoPortMatches)
{
    Link link;
    link.ports.ports.clear();
    ErrorRef error;
    link.manager.connect().start(
        [&](auto const& event) { error = std::get<FailedEvent<ErrorRef>>(event).error; });
    ASSERT_NE(dynamic_cast<TensioError const*>(error.get()), nullptr);
    EXPECT_EQ(error->code(), 1);
    EXPECT_EQ(error->localizedDescription(), "COMポートがオープンできません。");
}

TEST(SerialPortManager, OnlyTheFirstEndReachesTheSubscriber)
{
    struct Row {
        std::function<void(Link&)> end;
        std::string event;
    };
    std::vector<Row> const rows {
        {[](Link& link) { link.port->playLoss(); }, "interrupted"},
        {[](Link& link) { link.manager.disconnect(); }, "completed"},
        {[](Link& link) {
             link.port->delegate->serialPortDidEncounterError(
                 std::make_shared<Error>("os", 2, "故障"));
         },
            "failed: 故障"},
    };
    for (auto const& [end, event] : rows) {
        Link link;
        link.connect();
        auto* const delegate = link.port->delegate;
        delegate->serialPortWasOpened();
        end(link);
        link.manager.disconnect();
        delegate->serialPortWasClosed();
        delegate->serialPortDidEncounterError(std::make_shared<Error>("os", 1));
        EXPECT_EQ(link.events, (Texts {"opened", event}));
        EXPECT_EQ(link.port->calls.back(), "close");
        EXPECT_EQ(link.port->delegate, nullptr) << "a closed port has nobody to talk to";
    }
}

TEST(SerialPortManager, ThePortOfAFailedAttemptIsNotHeardDuringTheNext)
{
    Link link;
    link.connect();
    link.port->delegate->serialPortDidEncounterError(std::make_shared<Error>("os", 1));
    link.ports.ports.clear();
    link.plugIn("SLAB_USBtoUART");
    link.connect();
    EXPECT_EQ(link.port->delegate, nullptr);
}

TEST(SerialPortManager, PublishesEveryRecordInOrderAndCarriesNothingOver)
{
    Link link;
    link.connect();
    std::vector<float> pressures;
    auto const observing
        = link.manager.pressure.observeChanges([&](float value) { pressures.push_back(value); });
    for (auto const* chunk : {"+0235X-0012X", "+0235X+01", "01X", "+0010X+0010X"})
        link.port->delegate->serialPortDidReceiveData(chunk);
    EXPECT_EQ(pressures, (std::vector {23.5f, -1.2f, 1.0f, 1.0f}));
}
