#include "Figure.h"
#include "app/MainWindowController.h"
#include "core/NumberFormat.h"
#include "device-simulator/PressingStory.h"
#include "support/AllocationCount.h"
#include "support/Clinic.h"
#include "support/HangUpFlood.h"
#include "support/NoisyLine.h"
#include "support/Process.h"

#include <QElapsedTimer>
#include <QTimer>

#include <array>
#include <ctime>
#include <gtest/gtest.h>
#include <optional>
#include <random>
#include <utility>

// Long runs of the serial line, in real time where time is the matter.

using namespace tensio;

namespace {

double processorSeconds()
{
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

void turnFor(int milliseconds)
{
    QTimer timer;
    timer.setSingleShot(true);
    timer.start(milliseconds);
    while (timer.isActive())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

std::string number(double value)
{
    return formatFixed(static_cast<float>(value), 1);
}

// What a port tells, in words.
class Listener : public SerialPortDelegate {
public:
    std::string heard;

    void serialPortWasOpened() override { hear("opened"); }
    void serialPortDidReceiveData(std::string_view) override { hear("data"); }
    void serialPortDidEncounterError(ErrorRef) override { hear("error"); }
    void serialPortWasClosed() override { hear("closed"); }
    void serialPortWasRemovedFromSystem() override { hear("removed"); }

private:
    void hear(std::string const& event) { heard += (heard.empty() ? "" : ", ") + event; }
};

} // namespace

TEST(LineRuns, AStallBetweenTwoHalvesOfARecordLosesNothing)
{
    Clinic clinic;
    ASSERT_TRUE(clinic.connect());
    constexpr int stalls = 50;
    for (int stall = 0; stall < stalls; ++stall) {
        ASSERT_TRUE(clinic.write("+01"));
        clinic.session.terminal.write("01a");
        clinic.watch.waitForUnread(3);
        // Longer than the silence that gives a rest up.
        QElapsedTimer busy;
        busy.start();
        while (busy.elapsed() < 60) { }
        ASSERT_TRUE(QTest::qWaitFor([&] { return clinic.watch.unread() == 0; }));
    }
    auto const& points = *clinic.session.manager.measurement->pressurePoints;
    EXPECT_TRUE(QTest::qWaitFor([&] { return points.size() == stalls; })) << points.size();
    report(std::to_string(points.size()) + " of " + std::to_string(stalls)
        + " records read that a stall of 60 ms had halved");
}

TEST(LineRuns, TwoHundredPulledCables)
{
    constexpr int cycles = 200;
    std::ptrdiff_t descriptors = 0;
    std::ptrdiff_t blocks = 0;
    long memory = 0;
    qint64 longest = 0;
    for (int cycle = 0; cycle < cycles; ++cycle) {
        if (cycle == cycles / 4) {
            descriptors = openDescriptors();
            blocks = liveBlocks;
            memory = residentKilobytes();
        }
        Clinic clinic;
        ASSERT_TRUE(clinic.connect());
        ASSERT_TRUE(clinic.write("+0101a"));
        ASSERT_TRUE(cycle % 2 == 0 || clinic.write("+02"));
        QElapsedTimer sincePull;
        sincePull.start();
        ASSERT_TRUE(clinic.pull());
        longest = std::max(longest, sincePull.elapsed());
        // The port is closed; what is left is the watch of the terminal.
        ASSERT_TRUE(cycle < cycles / 4 || openDescriptors() == descriptors + 1) << cycle;
        ASSERT_EQ(clinic.session.alerts.messages.size(), 1U);
        ASSERT_EQ(clinic.session.manager.measurementList.measurements().size(), 1U);
    }
    EXPECT_EQ(openDescriptors(), descriptors);
    EXPECT_EQ(liveBlocks, blocks);
    // What Qt allocates for itself is not among the blocks.
    EXPECT_LE(residentKilobytes(), memory + 256);
    EXPECT_LE(longest, 500);
    report(std::to_string(cycles) + " cycles, told after at most " + std::to_string(longest)
        + " ms, " + std::to_string(openDescriptors() - descriptors) + " descriptors, "
        + std::to_string(liveBlocks - blocks) + " blocks and "
        + std::to_string(residentKilobytes() - memory) + " KB more after the last 150");
}

TEST(LineRuns, ThePulledCableLeavesTheProcessorIdle)
{
    Clinic clinic;
    ASSERT_TRUE(clinic.connect());
    ASSERT_TRUE(clinic.write("+0101a+02"));
    PseudoTerminal terminal;
    QtSerialPort port({"port", QString::fromStdString(terminal.path())}, deviceRecordShape,
        clinic.runLoop, clinic.queue);
    Listener listener;
    port.setDelegate(&listener);
    port.open();
    ASSERT_TRUE(QTest::qWaitFor([&] { return listener.heard == "opened"; })) << listener.heard;

    HangUpFlood const flood;
    auto const before = processorSeconds();
    terminal.unplug();
    ASSERT_TRUE(clinic.pull());
    auto const untilTold = processorSeconds() - before;
    turnFor(2000);
    auto const afterwards = processorSeconds() - before - untilTold;
    EXPECT_EQ(listener.heard, "opened, removed, closed");
    // Once a line.
    EXPECT_EQ(flood.reads, 2);
    EXPECT_LT(untilTold, 0.04);
    EXPECT_LT(afterwards, 0.04);
    report("the port tells: " + listener.heard + "; " + std::to_string(flood.reads)
        + " reads of two lines that hung up, " + number(untilTold * 1000.0)
        + " ms of processor until the user is told, " + number(afterwards * 1000.0)
        + " ms in 2 s afterwards");
}

TEST(LineRuns, TenMegabytesOfNoise)
{
    constexpr std::size_t total = 10'000'000;
    for (auto const& alphabet : noiseAlphabets()) {
        NoisyLine line(alphabet, 8);
        auto const& points = *line.player.session.manager.measurement->pressurePoints;
        std::optional<long> memory;
        std::size_t readings = 0;
        std::size_t records = 0;
        for (std::size_t written = 0; written < total; ++records) {
            written += line.play(60'000, static_cast<int>(records % 900));
            if (!memory && written > total / 4) {
                memory = residentKilobytes();
                readings = points.size();
            }
        }
        auto const growth = residentKilobytes() - *memory;
        EXPECT_EQ(line.recordsRead, records) << alphabet;
        // Noise that reads as records leaves readings, in an array that grows by doubling.
        auto const forReadings = static_cast<long>((points.size() - readings) * 2 * sizeof(float));
        EXPECT_LE(growth, 1024 + forReadings / 1024) << alphabet;
        report(std::to_string(line.recordsRead) + " of " + std::to_string(records)
            + " records read between 10 MB of noise out of " + std::to_string(alphabet.size())
            + " characters, " + std::to_string(growth) + " KB more after the last 7.5 MB for "
            + std::to_string(points.size() - readings) + " readings");
    }
}

TEST(LineRuns, AnHourAtLineRateHoweverItIsSplit)
{
    constexpr std::size_t records = 3600 * 320;
    TerminalPlayer player;
    std::size_t published = 0;
    std::size_t wrong = 0;
    auto const observing
        = player.session.manager.serialPortManager.pressure.observeChanges([&](float pressure) {
              wrong += pressure == static_cast<float>(published++ % 900) ? 0U : 1U;
          });
    constexpr std::array<std::size_t, 4> mostInAPiece {7, 31, 64, 2048};
    constexpr auto longest = mostInAPiece.back();
    std::mt19937 random(9);
    std::string ahead;
    for (std::size_t record = 0; record < records || !ahead.empty();) {
        while (ahead.size() < longest && record < records)
            ahead += deviceRecord(static_cast<double>(record++ % 900));
        // Bridges send what they have when they are asked, or only what fills a packet or a buffer.
        auto const most = mostInAPiece.at(random() % mostInAPiece.size());
        auto const length = std::min<std::size_t>(ahead.size(), 1 + random() % most);
        player.write(std::string_view(ahead).substr(0, length));
        ahead.erase(0, length);
        player.runLoop.advance(Seconds(static_cast<double>(length) / 1920.0));
    }
    player.pause(0.025);
    EXPECT_EQ(published, records);
    EXPECT_EQ(wrong, 0U);
    report(std::to_string(published) + " of " + std::to_string(records) + " records, "
        + std::to_string(wrong) + " wrong");
}

TEST(LineRuns, TenSecondsAtLineRateInRealTime)
{
    constexpr int records = 3200;
    MainQueue queue;
    QtRunLoop runLoop(queue);
    TerminalSession session(queue, runLoop);
    MainWindowController controller(session.manager, runLoop, session.alerts);
    controller.window().show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&controller.window()));
    ASSERT_TRUE(session.connect());
    // The window's own events must go on. How much of a pause is the program's own tells the
    // processor; the rest is that of whatever else the machine does.
    qint64 longestPause = 0;
    double longestWork = 0.0;
    QElapsedTimer sinceTick;
    auto before = processorSeconds();
    QTimer window;
    QObject::connect(&window, &QTimer::timeout, [&] {
        longestPause = std::max(longestPause, sinceTick.restart());
        auto const now = processorSeconds();
        longestWork = std::max(longestWork, now - std::exchange(before, now));
    });
    sinceTick.start();
    window.start(10);
    QTimer device;
    device.setTimerType(Qt::PreciseTimer);
    QElapsedTimer sinceStart;
    sinceStart.start();
    std::vector<float> sent;
    QObject::connect(&device, &QTimer::timeout, [&] {
        while (
            sent.size() < records && std::ssize(sent) * 3125 < sinceStart.nsecsElapsed() / 1000) {
            sent.push_back(static_cast<float>(sent.size() % 100));
            session.terminal.write(deviceRecord(static_cast<double>(sent.back())));
        }
    });
    device.start(3);
    auto const& points = *session.manager.measurement->pressurePoints;
    EXPECT_TRUE(QTest::qWaitFor([&] { return points.size() >= records; }, 30'000)) << points.size();
    EXPECT_EQ(points, sent);
    EXPECT_LT(longestWork, 0.05);
    EXPECT_LT(longestPause, 1000);
    report(std::to_string(points.size()) + " of " + std::to_string(records)
        + " records, the main window works for at most " + number(longestWork * 1000.0)
        + " ms and pauses for at most " + std::to_string(longestPause) + " ms at a time");
}
