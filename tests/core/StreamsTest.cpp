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

struct Gathering {
    ManualRunLoop runLoop;
    int chunks = 0;
    std::vector<float> read;
    RecordGatherer gatherer {runLoop, deviceRecordFormat, [this](std::string_view chunk) {
                                 ++chunks;
                                 std::ranges::copy(readRecords(chunk), std::back_inserter(read));
                             }};
};

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
    session.connect(30.0f);
    session.manager.changeTargetPressurePercentAction.apply(0.5f);
    RecordGatherer gatherer(session.runLoop, deviceRecordFormat,
        [&](std::string_view chunk) { session.port->delegate->serialPortDidReceiveData(chunk); });
    for (auto const& [pauseSeconds, bytes] : writes) {
        session.runLoop.advance(Seconds(pauseSeconds));
        gatherer.receive(bytes);
    }
    if (end == "pull") {
        gatherer.flush();
        session.port->playLoss();
    } else {
        session.runLoop.advance(Seconds(end.empty() ? 3.0 : 0.0));
        EXPECT_TRUE(session.runLoop.liveTimers() == 1 || !end.empty()) << "the clock's";
        gatherer.discard();
        session.finish();
    }
    EXPECT_FALSE(session.manager.isMeasuring.value() || session.manager.isRecording.value());
    EXPECT_EQ(session.runLoop.liveTimers(), 1U);
    EXPECT_EQ(session.port->calls.back(), "close");
    EXPECT_EQ(session.port->delegate, nullptr) << "a closed port reports to nobody";
    std::string measurements;
    for (auto const& measurement : session.manager.measurementList.measurements()) {
        measurements += describe(*measurement);
        EXPECT_EQ(measurement->targetPressure, 15.0f);
    }
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

TEST(RecordGatherer, LosesNoRecordHoweverTheReadsFall)
{
    std::string_view const stream = "+0101a-0202b+0303c";
    for (unsigned cuts = 0; cuts < 1U << 17U; ++cuts) {
        Gathering gathering;
        std::size_t begin = 0;
        for (std::size_t end = 1; end <= stream.size(); ++end) {
            if (end < stream.size() && (cuts >> (end - 1) & 1U) == 0)
                continue;
            gathering.gatherer.receive(stream.substr(begin, end - begin));
            gathering.runLoop.advance(Seconds(end % 2 == 0 ? 0.019 : 1.5));
            begin = end;
        }
        ASSERT_EQ(gathering.read, (std::vector {10.1f, -20.2f, 30.3f})) << "cuts " << cuts;
        ASSERT_EQ(gathering.runLoop.liveTimers(), 0U);
    }
}

TEST(RecordGatherer, LimitsItsBuffer)
{
    Gathering gathering;
    gathering.gatherer.receive("x");
    for (std::size_t bytes = 0; bytes < RecordGatherer::maxBufferSize; bytes += 6)
        gathering.gatherer.receive("xxxxxx");
    EXPECT_EQ(gathering.chunks, 1) << "noise without a pause";
}
