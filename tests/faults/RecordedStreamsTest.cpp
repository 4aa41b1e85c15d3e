#include "core/NumberFormat.h"
#include "device-simulator/RecordedStream.h"
#include "support/ManualRunLoop.h"
#include "support/TerminalSession.h"

#include <QCoreApplication>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

// Streams in tests/streams are what a device wrote, as the simulated device plays it, with what
// must come of it in lines of their own: "#> NUMBER, best PRESSURE: PRESSURE…" for each measurement
// ("×COUNT" for a pressure that repeats), and "#! pull" or "#! finish" for a stream that ends so at
// its last byte.

using namespace tensio;

namespace {

using Texts = std::vector<std::string>;

struct Stream {
    std::vector<TimedBytes> writes;
    Texts measurements;
    std::string end;
};

Stream readStream(std::filesystem::path const& path)
{
    Stream stream;
    std::ifstream file(path);
    stream.writes = readRecordedStream(file);
    std::ifstream again(path);
    for (std::string line; std::getline(again, line);) {
        if (line.starts_with("#> "))
            stream.measurements.push_back(line.substr(3));
        else if (line.starts_with("#! "))
            stream.end = line.substr(3);
    }
    return stream;
}

std::string describe(Measurement const& measurement)
{
    auto text = std::to_string(measurement.number) + ", best "
        + formatFixed(*measurement.bestPressure, 1) + ":";
    auto const& points = *measurement.pressurePoints;
    for (std::size_t begin = 0, end = 0; begin < points.size(); begin = end) {
        auto const pressure = formatFixed(points[begin], 1);
        while (end < points.size() && formatFixed(points[end], 1) == pressure)
            ++end;
        text += " " + pressure;
        if (end - begin > 1)
            text += "×" + std::to_string(end - begin);
    }
    return text;
}

// A session whose bytes go through a real terminal while its time is virtual.
struct Playing {
    MainQueue queue;
    ManualRunLoop runLoop;
    TerminalSession session {queue, runLoop};
    TerminalWatch watch {session.terminal};

    Playing()
    {
        bool isOpen = false;
        auto const observing
            = session.manager.connectAction.observe([&](auto const&) { isOpen = true; });
        session.manager.connectAction.apply(Nothing {});
        EXPECT_TRUE(QTest::qWaitFor([&] { return isOpen; }));
    }

    void write(std::string_view bytes)
    {
        session.terminal.write(bytes);
        watch.waitForUnread(bytes.size());
        while (watch.unread() > 0)
            QCoreApplication::processEvents();
        settle();
    }

    // Timers of the session fall due in between what the event loop delivers.
    void pause(double seconds)
    {
        constexpr double step = 0.001;
        for (auto left = std::lround(seconds / step); left > 0; --left) {
            runLoop.advance(Seconds(step));
            settle();
        }
    }

    void end(std::string const& how)
    {
        if (how == "pull") {
            session.terminal.unplug();
            EXPECT_TRUE(QTest::qWaitFor([&] { return !session.manager.isMeasuring.value(); }));
            return;
        }
        if (how.empty())
            pause(3.0);
        session.manager.disconnectAction.apply(Nothing {});
    }

    Texts measurements() const
    {
        Texts texts;
        for (auto const& measurement : session.manager.measurementList.measurements())
            texts.push_back(describe(*measurement));
        return texts;
    }

private:
    static void settle()
    {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::sendPostedEvents();
    }
};

} // namespace

class RecordedStreams : public testing::TestWithParam<std::filesystem::path> { };

TEST_P(RecordedStreams, YieldTheirMeasurements)
{
    auto const stream = readStream(GetParam());
    ASSERT_FALSE(stream.writes.empty());
    Playing playing;
    for (auto const& [pauseSeconds, bytes] : stream.writes) {
        playing.pause(pauseSeconds);
        playing.write(bytes);
    }
    playing.end(stream.end);
    EXPECT_EQ(playing.measurements(), stream.measurements);
}

INSTANTIATE_TEST_SUITE_P(Streams, RecordedStreams,
    testing::ValuesIn(std::vector<std::filesystem::path>(
        std::filesystem::directory_iterator(TENSIO_STREAMS), {})),
    [](auto const& parameter) {
        auto name = parameter.param.stem().string();
        std::ranges::replace(name, '-', '_');
        return name;
    });
