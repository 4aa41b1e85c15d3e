#include "Figure.h"
#include "core/NumberFormat.h"
#include "device-simulator/PressingStory.h"
#include "support/Clinic.h"
#include "support/Process.h"
#include "support/TerminalPlayer.h"

#include <QElapsedTimer>
#include <QTimer>

#include <array>
#include <ctime>
#include <gtest/gtest.h>
#include <random>

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
    long memory = 0;
    qint64 longest = 0;
    for (int cycle = 0; cycle < cycles; ++cycle) {
        if (cycle == cycles / 4) {
            descriptors = openDescriptors();
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
        ASSERT_EQ(clinic.session.alerts.messages.size(), 1U);
        ASSERT_EQ(clinic.session.manager.measurementList.measurements().size(), 1U);
    }
    EXPECT_EQ(openDescriptors(), descriptors);
    EXPECT_LE(residentKilobytes(), memory + 1024);
    EXPECT_LE(longest, 500);
    report(std::to_string(cycles) + " cycles, told after at most " + std::to_string(longest)
        + " ms, " + std::to_string(openDescriptors() - descriptors) + " descriptors and "
        + std::to_string(residentKilobytes() - memory) + " KB more after the last 150");
}

TEST(LineRuns, ThePulledCableLeavesTheProcessorIdle)
{
    Clinic clinic;
    int errors = 0;
    auto const observing = clinic.session.manager.connectAction.observe([&](auto const& event) {
        errors += std::holds_alternative<InterruptedEvent>(event)
                || std::holds_alternative<FailedEvent<ErrorRef>>(event)
            ? 1
            : 0;
    });
    ASSERT_TRUE(clinic.connect());
    ASSERT_TRUE(clinic.write("+0101a+02"));
    ASSERT_TRUE(clinic.pull());
    auto const before = processorSeconds();
    turnFor(2000);
    auto const used = processorSeconds() - before;
    EXPECT_EQ(errors, 1);
    EXPECT_LT(used, 0.1);
    report(std::to_string(errors) + " handled, " + number(used * 1000.0)
        + " ms of processor in 2 s afterwards");
}

TEST(LineRuns, TenMegabytesOfNoise)
{
    constexpr std::size_t total = 10'000'000;
    TerminalPlayer player;
    std::mt19937 random(8);
    long memory = 0;
    std::size_t bursts = 0;
    for (std::size_t written = 0; written < total;) {
        std::string noise(1 + random() % 60'000, '\0');
        std::ranges::generate(noise, [&] { return static_cast<char>(random()); });
        player.write(noise);
        written += noise.size();
        player.pause(0.025);
        player.write("+0101a");
        player.pause(0.025);
        ++bursts;
        if (memory == 0 && written > total / 4)
            memory = residentKilobytes();
    }
    auto const read = player.session.manager.measurement->pressurePoints->size();
    auto const growth = residentKilobytes() - memory;
    EXPECT_EQ(read, bursts);
    EXPECT_LE(growth, 1024);
    report(std::to_string(read) + " of " + std::to_string(bursts)
        + " bursts between 10 MB of noise read, " + std::to_string(growth)
        + " KB more after the last 7.5 MB");
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
    Clinic clinic;
    ASSERT_TRUE(clinic.connect());
    // The window's own events must go on.
    qint64 longestPause = 0;
    QElapsedTimer sinceTick;
    QTimer window;
    QObject::connect(&window, &QTimer::timeout,
        [&] { longestPause = std::max(longestPause, sinceTick.restart()); });
    sinceTick.start();
    window.start(10);
    QTimer device;
    device.setTimerType(Qt::PreciseTimer);
    QElapsedTimer sinceStart;
    sinceStart.start();
    int sent = 0;
    QObject::connect(&device, &QTimer::timeout, [&] {
        for (; sent < records && sent * 3125 < sinceStart.nsecsElapsed() / 1000; ++sent)
            clinic.session.terminal.write(deviceRecord(sent % 100));
    });
    device.start(3);
    auto const& points = *clinic.session.manager.measurement->pressurePoints;
    EXPECT_TRUE(QTest::qWaitFor([&] { return points.size() >= records; }, 30'000)) << points.size();
    EXPECT_LT(longestPause, 100);
    report(std::to_string(points.size()) + " of " + std::to_string(records)
        + " records, the window never busy for more than " + std::to_string(longestPause) + " ms");
}
