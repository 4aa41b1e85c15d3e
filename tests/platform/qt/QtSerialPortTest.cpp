#include "platform/qt/QtSerialPort.h"

#include "core/DeviceRecord.h"
#include "platform/qt/MainQueue.h"
#include "platform/qt/PortPlaces.h"
#include "platform/qt/QtAlerts.h"
#include "platform/qt/QtRunLoop.h"
#include "platform/qt/QtSerialPortList.h"
#include "support/HangUpFlood.h"
#include "support/Process.h"
#include "support/RuntimeFolder.h"
#include "support/TerminalWatch.h"
#include "support/UnprivilegedUser.h"

#include <QApplication>
#include <QDateTime>
#include <QFile>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include <fstream>
#include <gtest/gtest.h>
#include <limits>
#include <sys/stat.h>
#include <termios.h>

using namespace tensio;

namespace {

using Texts = std::vector<std::string>;

// A published terminal, and all that its port reports.
struct Line : SerialPortDelegate {
    RuntimeFolder folder;
    std::optional<Terminal> terminal {"SLAB_USBtoUART-x"};
    TerminalWatch watch {*terminal};
    std::string path {terminal->path()};
    MainQueue queue;
    QtRunLoop runLoop {queue};
    QtSerialPortList list {queue, deviceRecordFormat};
    std::shared_ptr<SerialPort> port {list.availablePorts().back()};
    Texts events;
    std::function<void()> onFirstData = [] {};

    Line() { port->setDelegate(this); }

    void serialPortWasOpened() override { events.emplace_back("opened"); }
    void serialPortDidReceiveData(std::string_view bytes) override
    {
        events.emplace_back(bytes);
        std::exchange(onFirstData, [] {})();
    }
    void serialPortDidEncounterError(ErrorRef error) override
    {
        events.push_back(error->localizedDescription());
    }
    void serialPortWasClosed() override { events.emplace_back("closed"); }
    void serialPortWasRemovedFromSystem() override { events.emplace_back("removed"); }

    bool hears(std::size_t count)
    {
        return QTest::qWaitFor([&] { return events.size() >= count; });
    }
    void open()
    {
        port->open();
        EXPECT_TRUE(hears(1));
    }
    // Returns when the port has read it.
    void deliver(std::string_view bytes) const
    {
        terminal->write(bytes);
        watch.waitForUnread();
        EXPECT_TRUE(QTest::qWaitFor([&] { return !watch.hasUnread(); }));
    }
};

void turnEventLoop()
{
    for (int turn = 0; turn < 100; ++turn)
        QCoreApplication::processEvents();
}

} // namespace

TEST(QtSerialPort, SetsTheLineAndDropsWhatTheSystemKeptFromBeforeTheOpening)
{
    Line line;
    line.port->setBaudRate(19200);
    line.terminal->write("+0999x");
    line.watch.waitForUnread();
    line.open();
    // A pseudo-terminal has 8 bits and no parity, whatever is set.
    termios settings {};
    tcgetattr(line.watch.descriptor, &settings);
    EXPECT_EQ(cfgetispeed(&settings), speed_t(B19200));
    line.deliver("+0101a");
    ASSERT_TRUE(line.hears(2));
    EXPECT_EQ(line.events, (Texts {"opened", "+0101a"}));
}

TEST(QtSerialPort, ReportsALossOnceAfterEverythingThatArrivedAndEndsTheFloodOfErrors)
{
    for (bool const isSilent : {true, false}) {
        Line line;
        line.open();
        if (!isSilent)
            line.deliver("+0101a+02");
        HangUpFlood const flood;
        auto const descriptors = openDescriptors();
        line.terminal.reset();
        ASSERT_TRUE(line.hears(isSilent ? 3 : 5));
        turnEventLoop();
        EXPECT_EQ(flood.reads, 1);
        EXPECT_LE(openDescriptors(), descriptors - 3) << "both sides, and the link's lock";
        EXPECT_EQ(line.events,
            isSilent ? Texts({"opened", "removed", "closed"})
                     : Texts({"opened", "+0101a", "+02", "removed", "closed"}));
    }
}

TEST(QtSerialPort, SaysWhatToDoWhenItDoesNotOpen)
{
    // What another program has made that uses the port, or did before it crashed.
    auto const lockName = [](Line const& line) {
        return "/var/lock/LCK..pts_" + line.path.substr(line.path.rfind('/') + 1);
    };
    auto const lock = [&](Line const& line, int process) {
        std::ofstream(lockName(line)) << std::setw(10) << process << "\nother\nhost\n";
    };
    std::vector<std::pair<std::string, std::function<void(Line&)>>> rows {
        {"測定器が見つかりません", [](Line& line) { line.terminal.reset(); }},
        {"開く権限がありません", [](Line& line) { chmod(line.path.c_str(), 0); }},
        {"他のプログラムが使用中です", [&](Line& line) { lock(line, getppid()); }},
        {"ロックしたままです", [&](Line& line) { lock(line, std::numeric_limits<int>::max()); }},
    };
    // The last needs a lock of another user's.
    if (geteuid() != 0)
        rows.pop_back();
    for (auto const& [sentence, obstruct] : rows) {
        Line line;
        chmod(line.path.c_str(), 0666);
        obstruct(line);
        {
            // Root is refused nothing, and removes what others have left.
            UnprivilegedUser const user;
            line.port->open();
        }
        ASSERT_TRUE(line.hears(1)) << sentence;
        EXPECT_NE(line.events[0].find(sentence), std::string::npos) << line.events[0];
        std::remove(lockName(line).c_str());
    }
}

TEST(QtSerialPort, IsSilentAfterItsDelegateOrItselfIsGone)
{
    Line line;
    for (bool const isGone : {false, true}) {
        line.port = line.list.availablePorts().back();
        line.port->setDelegate(&line);
        line.port->open();
        if (isGone)
            line.port.reset();
        else
            line.port->setDelegate(nullptr);
        turnEventLoop();
        EXPECT_TRUE(line.events.empty());
    }
}

TEST(QtSerialPort, ClosingDropsDataIsReportedOnceAndMayBeFollowedByAnotherOpening)
{
    Line line;
    line.open();
    auto hold = line.queue.hold();
    line.deliver("+0101a");
    line.port->close();
    line.port->close();
    line.port->open();
    hold.end();
    ASSERT_TRUE(line.hears(3));
    EXPECT_EQ(line.events, (Texts {"opened", "closed", "opened"}));
}

TEST(HangUpWatch, ReportsThatTheOtherSideHasGoneUntilItIsStopped)
{
    Line quiet;
    Line pulled;
    std::string log;
    HangUpWatch watchOfQuiet([&] { log += "quiet "; });
    HangUpWatch watchOfPulled([&] {
        log += "pulled ";
        watchOfPulled.stop();
    });
    watchOfQuiet.start(quiet.watch.descriptor);
    watchOfPulled.start(pulled.watch.descriptor);
    pulled.terminal.reset();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !log.empty(); }));
    EXPECT_FALSE(QTest::qWaitFor([&] { return log != "pulled "; }, 300));
}

TEST(QtSerialPortList, ListsTheBridgeUnderANameThatTheLinkLooksFor)
{
    EXPECT_EQ(listedName("ttyUSB0", 0x10c4), "SLAB_USBtoUART (ttyUSB0)");
    EXPECT_EQ(listedName("cu.SLAB_USBtoUART", 0x10c4), "cu.SLAB_USBtoUART");
    EXPECT_EQ(listedName("ttyUSB0", 0x0403), "ttyUSB0");
}

TEST(QtSerialPortList, ListsVirtualPortsByTheNameOfTheirLink)
{
    Line line;
    VirtualPort const dangling("SLAB_USBtoUART-a", "/dev/pts/none");
    // What a simulator leaves that is killed, when its process number has been given to another.
    auto const stale = virtualPortsFolder() + "/SLAB_USBtoUART-y";
    QFile::link(QString::fromStdString(line.path), stale);
    QFile lock(stale + ".lock");
    ASSERT_TRUE(lock.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    lock.write(QByteArray::number(getpid()) + "\nplatform_qt_test\n\n");
    lock.setFileTime(QDateTime::fromSecsSinceEpoch(1), QFileDevice::FileModificationTime);
    lock.close();
    auto const ports = line.list.availablePorts();
    EXPECT_EQ(ports.back()->name(), "SLAB_USBtoUART-x");
    EXPECT_TRUE(ports.back()->isVirtual());
    EXPECT_TRUE(
        std::ranges::none_of(ports, [](auto const& port) { return port->name().ends_with("-a"); }));
}

TEST(QtSerialPortList, APanelOpenedByARecordHoldsLaterOnesBackButDoesNotMixThemWithNoise)
{
    Line line;
    QtAlerts alerts(line.queue);
    line.onFirstData = [&] {
        QTimer::singleShot(0, [&] {
            for (auto const* bytes : {"#+0202b", "+0303c"}) {
                line.deliver(bytes);
                // Longer than the port's own silence.
                EXPECT_FALSE(QTest::qWaitFor([&] { return line.events.size() > 2; }, 40));
            }
            line.events.emplace_back("closing");
            QApplication::activeModalWidget()->close();
        });
        alerts.runModal(AlertStyle::Warning, "開く", {"OK"});
    };
    line.open();
    line.terminal->write("+0101a");
    ASSERT_TRUE(line.hears(5));
    EXPECT_EQ(line.events, (Texts {"opened", "+0101a", "closing", "#+0202b", "+0303c"}));
}
