#include "device-simulator/PressingStory.h"
#include "support/AllocationCount.h"
#include "support/Program.h"

#include <QElapsedTimer>

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <gtest/gtest.h>
#include <unistd.h>

// The serial line of the whole program in real time.

using namespace tensio;

namespace {

double processorSeconds()
{
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

std::ptrdiff_t openDescriptors()
{
    std::filesystem::directory_iterator const descriptors("/proc/self/fd");
    return std::distance(begin(descriptors), end(descriptors));
}

} // namespace

TEST(LineRuns, TwoHundredPulledCables)
{
    Program program;
    std::ptrdiff_t descriptors = 0;
    std::ptrdiff_t blocks = 0;
    for (int cycle = 0; cycle < 200; ++cycle) {
        program.plugIn();
        program.manager().connectAction.apply(Nothing {});
        ASSERT_TRUE(program.press()) << cycle;
        QElapsedTimer sincePull;
        sincePull.start();
        ASSERT_TRUE(program.pull());
        EXPECT_LE(sincePull.elapsed(), 500);
        ASSERT_TRUE(QTest::qWaitFor([&] { return !QApplication::activeModalWidget(); }));
        ASSERT_EQ(program.alerts.size(), 1) << cycle;
        ASSERT_EQ(program.manager().measurementList.measurements().size(), 1U);
        if (cycle == 50) {
            descriptors = openDescriptors();
            blocks = liveBlocks;
        }
    }
    EXPECT_EQ(openDescriptors(), descriptors);
    EXPECT_LE(liveBlocks, blocks + 50);
    auto const before = processorSeconds();
    EXPECT_FALSE(QTest::qWaitFor([&] { return program.alerts.size() > 1; }, 2000));
    EXPECT_LT(processorSeconds() - before, 0.15) << "the window is drawn once a second";
}

TEST(LineRuns, TenSecondsAtLineRateInRealTime)
{
    constexpr int records = 3200;
    Program program;
    ASSERT_TRUE(program.connect());
    // How long the window's own events wait for the program's work, which the processor's time
    // tells apart from whatever else the machine does.
    double longestWork = 0.0;
    auto before = processorSeconds();
    QTimer window;
    QObject::connect(&window, &QTimer::timeout, [&] {
        auto const now = processorSeconds();
        longestWork = std::max(longestWork, now - std::exchange(before, now));
    });
    window.start(10);
    std::vector<float> sent;
    QElapsedTimer sinceStart;
    sinceStart.start();
    QTimer device;
    device.setTimerType(Qt::PreciseTimer);
    QObject::connect(&device, &QTimer::timeout, [&] {
        while (
            sent.size() < records && std::ssize(sent) * 3125 < sinceStart.nsecsElapsed() / 1000) {
            sent.push_back(static_cast<float>(sent.size() % 100));
            program.terminal->write(deviceRecord(static_cast<double>(sent.back())));
        }
    });
    device.start(3);
    auto const& points = *program.manager().measurement->pressurePoints;
    EXPECT_TRUE(QTest::qWaitFor([&] { return points.size() >= records; }, 30'000)) << points.size();
    EXPECT_EQ(points, sent);
    EXPECT_LT(longestWork, 0.05);
}

// As Qt does when the X server has gone.
TEST(LineRuns, ALibraryThatEndsTheProcessLeavesNoLockOfThePort)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    static std::string lock;
    auto const measureAndExit = [] {
        std::atexit(
            [] { std::fputs(access(lock.c_str(), F_OK) == 0 ? "locked" : "free", stderr); });
        Program program;
        bool const isConnected = program.connect();
        program.folder.remove();
        auto const terminal = program.terminal->path();
        lock = "/var/lock/LCK..pts_" + terminal.substr(terminal.rfind('/') + 1);
        std::exit(isConnected && access(lock.c_str(), F_OK) == 0 ? 3 : 1);
    };
    EXPECT_EXIT(measureAndExit(), testing::ExitedWithCode(3), "free");
}
