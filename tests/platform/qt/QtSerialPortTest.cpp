#include "platform/qt/QtSerialPort.h"

#include "core/DeviceRecord.h"
#include "platform/qt/MainQueue.h"
#include "platform/qt/PortPlaces.h"
#include "platform/qt/QtAlerts.h"
#include "platform/qt/QtRunLoop.h"
#include "platform/qt/QtSerialPortList.h"
#include "support/HangUpFlood.h"
#include "support/Process.h"
#include "support/PseudoTerminal.h"
#include "support/RuntimeFolder.h"
#include "support/UnprivilegedUser.h"

#include <QApplication>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <sys/stat.h>
#include <unistd.h>

using namespace tensio;

namespace {

struct Listener : SerialPortDelegate {
    std::string data;
    std::vector<std::string> events;
    std::vector<std::string> chunks;
    std::function<void()> onData;

    void serialPortWasOpened() override { events.emplace_back("opened"); }
    void serialPortDidReceiveData(std::string_view bytes) override
    {
        if (data.empty())
            events.emplace_back("data");
        data += bytes;
        chunks.emplace_back(bytes);
        if (onData)
            onData();
    }
    void serialPortDidEncounterError(ErrorRef error) override
    {
        events.push_back(error->localizedDescription());
    }
    void serialPortWasClosed() override { events.emplace_back("closed"); }
    void serialPortWasRemovedFromSystem() override { events.emplace_back("removed"); }
};

struct Line {
    PseudoTerminal terminal;
    MainQueue queue;
    QtRunLoop runLoop {queue};
    Listener listener;
    std::unique_ptr<QtSerialPort> port {makePort(QString::fromStdString(terminal.path()))};
    QFile lockFile;

    ~Line()
    {
        if (lockFile.exists())
            lockFile.remove();
    }

    std::unique_ptr<QtSerialPort> makePort(QString const& node)
    {
        auto made = std::make_unique<QtSerialPort>(
            QtSerialPort::Location {"port", node}, deviceRecordFormat, runLoop, queue);
        made->setDelegate(&listener);
        return made;
    }

    // What another program does that uses the port, or did before it crashed.
    void lock(int process)
    {
        lockFile.setFileName(
            QStringLiteral("/var/lock/LCK..pts_%1")
                .arg(QFileInfo(QString::fromStdString(terminal.path())).fileName()));
        EXPECT_TRUE(lockFile.open(QIODevice::WriteOnly));
        lockFile.write(QByteArray::number(process).rightJustified(10) + "\nother\nhost\n");
        lockFile.close();
    }

    void open()
    {
        port->open();
        EXPECT_TRUE(QTest::qWaitFor([&] { return !listener.events.empty(); }));
    }

    bool hears(std::string const& event)
    {
        return QTest::qWaitFor([&] { return std::ranges::count(listener.events, event) > 0; });
    }
};

using Texts = std::vector<std::string>;

} // namespace

TEST(QtSerialPort, SetsTheLine)
{
    Line line;
    TerminalWatch const watch(line.terminal);
    line.port->setBaudRate(19200);
    line.port->setNumberOfStopBits(1);
    line.open();
    // A pseudo-terminal has 8 bits and no parity, whatever is set.
    auto const settings = watch.settings();
    EXPECT_EQ(cfgetispeed(&settings), speed_t(B19200));
    EXPECT_EQ(settings.c_cflag & CSTOPB, tcflag_t(0));
}

TEST(QtSerialPort, TellsALossOnceAfterEverythingThatArrived)
{
    Line line;
    line.open();
    line.terminal.write("+0101a+02");
    // The system itself drops what nobody had read when the other side went.
    QCoreApplication::processEvents();
    line.terminal.unplug();
    ASSERT_TRUE(line.hears("closed"));
    EXPECT_EQ(line.listener.events, (Texts {"opened", "data", "removed", "closed"}));
    EXPECT_EQ(line.listener.chunks, (Texts {"+0101a", "+02"}));
}

TEST(QtSerialPort, TellsALossAlsoInSilenceAndEndsTheFloodOfErrors)
{
    Line line;
    line.open();
    HangUpFlood const flood;
    auto const descriptors = openDescriptors();
    line.terminal.unplug();
    ASSERT_TRUE(line.hears("closed"));
    for (int turn = 0; turn < 100; ++turn)
        QCoreApplication::processEvents();
    EXPECT_EQ(flood.reads, 1);
    EXPECT_LE(openDescriptors(), descriptors - 2) << "both sides are closed";
    EXPECT_EQ(line.listener.events, (Texts {"opened", "removed", "closed"}));
}

TEST(QtSerialPort, DropsWhatTheSystemKeptFromBeforeTheOpening)
{
    Line line;
    line.terminal.write("+0999x");
    line.open();
    line.terminal.write("+0101a");
    ASSERT_TRUE(line.hears("data"));
    EXPECT_EQ(line.listener.data, "+0101a");
}

TEST(QtSerialPort, SaysWhatToDoWhenItDoesNotOpen)
{
    struct Row {
        std::string sentence;
        std::function<void(Line&)> obstruct;
    };
    std::vector<Row> rows {
        {"装置が見つかりません", [](Line& line) { line.terminal.unplug(); }},
        {"開く権限がありません", [](Line& line) { chmod(line.terminal.path().c_str(), 0); }},
        {"他のプログラムが使用中です",
            [](Line& line) {
                chmod(line.terminal.path().c_str(), 0444);
                line.port->setDelegate(nullptr);
                line.port->open();
            }},
        {"他のプログラムが使用中です", [](Line& line) { line.lock(getppid()); }},
        {"ロックしたままです", [](Line& line) { line.lock(std::numeric_limits<int>::max()); }},
    };
    // The last needs a lock of another user's.
    if (geteuid() != 0)
        rows.pop_back();
    for (auto const& [sentence, obstruct] : rows) {
        Line line;
        auto const node = QString::fromStdString(line.terminal.path());
        chmod(line.terminal.path().c_str(), 0666);
        obstruct(line);
        auto const port = line.makePort(node);
        {
            // Root is refused nothing, and removes what others have left.
            UnprivilegedUser const user;
            port->open();
        }
        ASSERT_TRUE(QTest::qWaitFor([&] { return !line.listener.events.empty(); })) << sentence;
        EXPECT_NE(line.listener.events[0].find(sentence), std::string::npos)
            << line.listener.events[0];
    }
}

TEST(QtSerialPort, IsSilentAfterItsDelegateOrItselfIsGone)
{
    Line line;
    line.port->open();
    line.port->setDelegate(nullptr);
    line.port->close();
    line.port.reset();
    line.port = line.makePort(QString::fromStdString(line.terminal.path()));
    line.port->open();
    line.port.reset();
    for (int turn = 0; turn < 10; ++turn)
        QCoreApplication::processEvents();
    EXPECT_TRUE(line.listener.events.empty());
}

TEST(QtSerialPort, ClosingDropsDataIsToldOnceAndMayBeFollowedByAnotherOpening)
{
    Line line;
    TerminalWatch const watch(line.terminal);
    line.open();
    auto hold = line.queue.hold();
    line.terminal.write("+0101a");
    watch.waitForUnread(1);
    ASSERT_TRUE(QTest::qWaitFor([&] { return watch.unread() == 0; }));
    line.port->close();
    line.port->close();
    line.port->open();
    hold.end();
    ASSERT_TRUE(QTest::qWaitFor([&] { return line.listener.events.size() == 3; }));
    EXPECT_EQ(line.listener.events, (Texts {"opened", "closed", "opened"}));
}

TEST(HangUpWatch, TellsThatTheOtherSideHasGoneUntilItIsStopped)
{
    struct Watched {
        PseudoTerminal terminal;
        int descriptor = ::open(terminal.path().c_str(), O_RDONLY | O_NOCTTY);
        int told = 0;
        HangUpWatch watch {[this] {
            ++told;
            watch.stop();
        }};

        Watched() { watch.start(descriptor); }
        ~Watched() { ::close(descriptor); }
        bool tells()
        {
            terminal.unplug();
            return QTest::qWaitFor([this] { return told > 0; });
        }
    };
    Watched first;
    // Its turn comes after the first one's.
    Watched second;
    ASSERT_TRUE(second.tells());
    EXPECT_EQ(first.told, 0);
    ASSERT_TRUE(first.tells());
    EXPECT_TRUE(Watched().tells());
    EXPECT_EQ(first.told + second.told, 2);
}

namespace {

// A virtual port on a line, as a list finds it.
struct Published {
    RuntimeFolder folder;
    Line line;
    QtSerialPortList list {line.queue, deviceRecordFormat};

    Published() { folder.publish(line.terminal.path(), QStringLiteral("x")); }
};

} // namespace

TEST(QtSerialPortList, ListsTheBridgeUnderANameThatTheLinkLooksFor)
{
    EXPECT_EQ(
        listedName(QStringLiteral("ttyUSB0"), 0x10c4), QStringLiteral("SLAB_USBtoUART (ttyUSB0)"));
    EXPECT_EQ(listedName(QStringLiteral("cu.SLAB_USBtoUART"), 0x10c4),
        QStringLiteral("cu.SLAB_USBtoUART"));
    EXPECT_EQ(listedName(QStringLiteral("ttyUSB0"), 0x0403), QStringLiteral("ttyUSB0"));
}

TEST(QtSerialPortList, ListsVirtualPortsByTheNameOfTheirLink)
{
    Published published;
    published.folder.publish("/dev/pts/none", QStringLiteral("a"));
    // What a simulator leaves that is killed, when its process number has been given to another.
    QString const stale = virtualPortsFolder() + QStringLiteral("/SLAB_USBtoUART-b");
    QFile::link(QString::fromStdString(published.line.terminal.path()), stale);
    QFile lock(stale + QStringLiteral(".lock"));
    ASSERT_TRUE(lock.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    lock.write(QByteArray::number(getpid()) + "\nplatform_qt_test\n\n");
    lock.setFileTime(QDateTime::fromSecsSinceEpoch(1), QFileDevice::FileModificationTime);
    lock.close();
    auto const ports = published.list.availablePorts();
    ASSERT_FALSE(ports.empty());
    EXPECT_EQ(ports.back()->name(), "SLAB_USBtoUART-x");
    EXPECT_TRUE(std::ranges::none_of(ports, [](auto const& port) {
        return port->name().ends_with("-a") || port->name().ends_with("-b");
    }));
    EXPECT_TRUE(ports.back()->isVirtual());
}

TEST(QtSerialPortList, APanelOpenedByARecordHoldsLaterOnesBackButDoesNotMixThemWithNoise)
{
    Published published;
    auto& chunks = published.line.listener.chunks;
    TerminalWatch const watch(published.line.terminal);
    QtAlerts alerts(published.line.queue);
    auto const writeWhileOpen = [&] {
        for (auto const* bytes : {"#+0202b", "+0303c"}) {
            published.line.terminal.write(bytes);
            watch.waitForUnread(1);
            ASSERT_TRUE(QTest::qWaitFor([&] { return watch.unread() == 0; }));
            // Falls due after the port's own silence.
            QTimer later;
            later.setSingleShot(true);
            later.start(40);
            ASSERT_TRUE(QTest::qWaitFor([&] { return !later.isActive(); }));
        }
        chunks.emplace_back("closed");
        QApplication::activeModalWidget()->close();
    };
    published.line.listener.onData = [&] {
        if (chunks.size() > 1)
            return;
        QTimer::singleShot(0, writeWhileOpen);
        alerts.runModal(AlertStyle::Warning, "開く", {"OK"});
    };
    auto const port = published.list.availablePorts().back();
    port->setDelegate(&published.line.listener);
    port->open();
    ASSERT_TRUE(published.line.hears("opened"));
    published.line.terminal.write("+0101a");
    ASSERT_TRUE(QTest::qWaitFor([&] { return chunks.size() >= 4; }));
    EXPECT_EQ(chunks, (Texts {"+0101a", "closed", "#+0202b", "+0303c"}));
}
