#include "platform/qt/QtSerialPort.h"

#include "core/DeviceRecord.h"
#include "device-simulator/Terminal.h"
#include "platform/qt/MainQueue.h"
#include "platform/qt/PortPlaces.h"
#include "platform/qt/QtSerialPortList.h"
#include "support/RuntimeFolder.h"
#include "support/UnprivilegedUser.h"

#include <QSerialPort>
#include <QTest>
#include <QTimer>

#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

using namespace tensio;

namespace {

using Texts = std::vector<std::string>;

struct PluggedIn {
    QString portName() const { return name; }
    quint16 vendorIdentifier() const { return vendor; }
    char const* name;
    quint16 vendor;
};

// A published terminal, and all that its port reports.
struct Line
    : QObject
    , SerialPortDelegate {
    // Some Qt do not notice that a line has hung up, and read it without end.
    int reads = 0;
    bool isHangUpNoticed = true;
    RuntimeFolder folder;
    std::optional<Terminal> terminal {"SLAB_USBtoUART-x"};
    std::string path {terminal->path()};
    // Sees what the port has not read yet. Opened first: the port may keep others out.
    pollfd watch {::open(path.c_str(), O_RDONLY | O_NOCTTY), POLLIN, 0};
    MainQueue queue;
    QtSerialPortList list {queue, tonguePressureDevice};
    std::shared_ptr<SerialPort> port {list.availablePorts().back()};
    Texts events;

    Line()
    {
        port->setDelegate(this);
        QCoreApplication::instance()->installEventFilter(this);
    }
    Q_DISABLE_COPY_MOVE(Line)
    ~Line() override { ::close(watch.fd); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        bool const isRead
            = event->type() == QEvent::SockAct && qobject_cast<QSerialPort*>(watched->parent());
        reads += isRead ? 1 : 0;
        errno = 0;
        return isRead && !isHangUpNoticed;
    }

    void serialPortWasOpened() override { events.emplace_back("opened"); }
    void serialPortDidReceiveData(std::string_view bytes) override { events.emplace_back(bytes); }
    void serialPortDidEncounterError(ErrorRef error) override
    {
        events.push_back(error->localizedDescription());
    }
    void serialPortWasClosed() override { events.emplace_back("closed"); }
    void serialPortWasRemovedFromSystem() override { events.emplace_back("removed"); }

    bool hears(std::size_t count) const
    {
        return QTest::qWaitFor([&] { return events.size() >= count; });
    }
    // Timers fire in order: those that take less time have fired, however late all of them are.
    static void pass(int milliseconds)
    {
        QTimer timer;
        timer.setSingleShot(true);
        timer.start(milliseconds);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !timer.isActive(); }));
        QCoreApplication::processEvents(); // what they have posted
    }
    void open()
    {
        port->open();
        EXPECT_TRUE(hears(1));
    }
    // What is written arrives at the other side a moment later.
    void write(std::string_view bytes)
    {
        terminal->write(bytes);
        EXPECT_EQ(poll(&watch, 1, 5000), 1);
    }
    // Returns when the port has read it.
    void deliver(std::string_view bytes)
    {
        write(bytes);
        EXPECT_TRUE(QTest::qWaitFor([&] { return poll(&watch, 1, 0) == 0; }));
    }
};

} // namespace

TEST(QtSerialPort, SetsTheLineAndDropsWhatCameBeforeTheOpeningOrWasNotDeliveredAtTheClosing)
{
    Line line;
    line.port->setBaudRate(19200);
    line.write("+0999x");
    line.open();
    Line::pass(50);
    // A pseudo-terminal has 8 bits and no parity, whatever is set.
    termios settings {};
    tcgetattr(line.watch.fd, &settings);
    EXPECT_EQ(cfgetispeed(&settings), speed_t(B19200));
    auto hold = line.queue.hold();
    line.deliver("+0101a+02");
    line.port->close();
    line.port->close();
    line.port->open();
    line.port->open();
    hold.end();
    ASSERT_TRUE(line.hears(3));
    line.deliver("+0303c");
    Line::pass(50);
    EXPECT_EQ(line.events, (Texts {"opened", "closed", "opened", "+0303c"}));
}

TEST(QtSerialPort, ReportsALossOnceAfterAllBurstsThatArrivedEvenIfQtDoesNotNoticeIt)
{
    for (bool const isNoticed : {true, false}) {
        Line line;
        line.open();
        auto hold = line.queue.hold();
        line.deliver("+0101a+02");
        Line::pass(50); // longer than the silence that ends a burst
        line.deliver("+0303c+04");
        hold.end();
        Line::pass(50);
        EXPECT_EQ(line.events.size(), 4U) << "still there";
        line.isHangUpNoticed = isNoticed;
        line.reads = 0;
        line.terminal.reset();
        ASSERT_TRUE(line.hears(7));
        Line::pass(50);
        EXPECT_EQ(
            line.events, (Texts {"opened", "+0101a", "+02", "+0303c", "+04", "removed", "closed"}));
        EXPECT_LE(line.reads, 2);
    }
}

TEST(QtSerialPort, SaysWhatToDoWhenItDoesNotOpen)
{
    // The last with the process that has locked the port.
    for (auto const& [sentence, process] :
        std::vector<std::pair<std::string, int>> {{"測定器が見つかりません", 0},
            {"開く権限がありません", 0}, {"他のプログラムが使用中です", getppid()},
            {"ロックしたままです", std::numeric_limits<int>::max()}}) {
        Line line;
        auto const lock = "/var/lock/LCK..pts_" + line.path.substr(line.path.rfind('/') + 1);
        chmod(line.path.c_str(), sentence.starts_with("開く") ? 0 : 0666);
        if (sentence.starts_with("測定器"))
            line.terminal.reset();
        if (process != 0)
            std::ofstream(lock) << std::setw(10) << process << "\nother\nhost\n";
        {
            // Root is refused nothing.
            UnprivilegedUser const user;
            line.port->open();
        }
        ASSERT_TRUE(line.hears(1));
        EXPECT_NE(line.events[0].find(sentence), std::string::npos) << line.events[0];
        std::remove(lock.c_str());
    }
}

TEST(QtSerialPortList, NamesTheBridgeAsTheLinkLooksForItAndVirtualPortsAsTheirLinks)
{
    for (auto const& [info, listed] :
        {std::pair {PluggedIn {"ttyUSB0", 0x10c4}, "SLAB_USBtoUART (ttyUSB0)"},
            {{"cu.SLAB_USBtoUART", 0x10c4}, "cu.SLAB_USBtoUART"}, {{"ttyUSB0", 0x0403}, "ttyUSB0"}})
        EXPECT_EQ(listedName(tonguePressureDevice, info), listed);
    Line line;
    VirtualPort const other("Other", line.path.c_str());
    VirtualPort const dangling("SLAB_USBtoUART-a", "/dev/pts/none");
    // What a simulator leaves that is killed.
    QFile::link(QString::fromStdString(line.path), virtualPortsFolder() + "/SLAB_USBtoUART-y");
    QtSerialPortList others(line.queue, tonguePressureDevice);
    auto const port = others.availablePorts().back();
    EXPECT_EQ(port->name(), "SLAB_USBtoUART-x");
    EXPECT_TRUE(port->isVirtual());
    line.open();
    auto const here = line.list.inspect();
    auto const elsewhere = others.inspect();
    EXPECT_TRUE(here.at(0).isOpen && here[0].isSimulated && here[0].obstacle.empty());
    EXPECT_EQ(elsewhere.back().name, "Other");
    EXPECT_TRUE(elsewhere.back().isOther && elsewhere.back().obstacle.empty()) << "not opened";
    EXPECT_NE(elsewhere.at(0).obstacle.find("使用中"), std::string::npos);
}
