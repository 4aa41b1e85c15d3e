#include "core/DeviceRecord.h"
#include "core/NumberText.h"
#include "device-simulator/RecordedStream.h"
#include "platform/RecordGatherer.h"
#include "support/Session.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

// Streams in tests/streams are what a device wrote, as the simulated device plays it, with the
// expected measurements in lines of their own: "#> NUMBER, best PRESSURE: PRESSURE…" ("×COUNT" for
// a pressure that repeats). "#! pull" or "#! finish" says that the stream ends so at its last byte.

using namespace tensio;

namespace {

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
    return text + "\n";
}

std::string play(std::vector<TimedBytes> const& writes, std::string const& end)
{
    Session session;
    session.connect();
    RecordGatherer gatherer(session.runLoop, deviceRecordFormat,
        [&](std::string_view chunk) { session.port->delegate->serialPortDidReceiveData(chunk); });
    for (auto const& [pauseSeconds, bytes] : writes) {
        session.runLoop.advance(Seconds(pauseSeconds));
        gatherer.receive(bytes);
    }
    if (end == "pull") {
        gatherer.flush();
        session.port->playLoss();
    } else if (end.empty()) {
        session.runLoop.advance(Seconds(3.0));
        EXPECT_EQ(session.runLoop.liveTimers(), 1U) << "the clock's";
    }
    session.finish();
    std::string measurements;
    for (auto const& measurement : session.manager.measurementList.measurements())
        measurements += describe(*measurement);
    return measurements;
}

} // namespace

TEST(Streams, YieldTheirMeasurements)
{
    for (auto const& entry : std::filesystem::directory_iterator(TENSIO_STREAMS)) {
        std::ifstream file(entry.path());
        auto const writes = readRecordedStream(file);
        std::string expected;
        std::string end;
        file.clear();
        file.seekg(0);
        for (std::string line; std::getline(file, line);) {
            if (line.starts_with("#> "))
                expected += line.substr(3) + "\n";
            else if (line.starts_with("#! "))
                end = line.substr(3);
        }
        EXPECT_EQ(play(writes, end), expected) << entry.path();
    }
}
