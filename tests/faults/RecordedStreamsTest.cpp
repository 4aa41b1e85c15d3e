#include "core/NumberFormat.h"
#include "device-simulator/RecordedStream.h"
#include "support/TerminalPlayer.h"

#include <algorithm>
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

Texts describe(Measurements const& measurements)
{
    Texts texts;
    for (auto const& measurement : measurements)
        texts.push_back(describe(*measurement));
    return texts;
}

} // namespace

class RecordedStreams : public testing::TestWithParam<std::filesystem::path> { };

TEST_P(RecordedStreams, YieldTheirMeasurements)
{
    auto const stream = readStream(GetParam());
    ASSERT_FALSE(stream.writes.empty());
    TerminalPlayer player;
    for (auto const& [pauseSeconds, bytes] : stream.writes) {
        player.pause(pauseSeconds);
        player.write(bytes);
    }
    if (stream.end == "pull")
        player.pull();
    else if (stream.end.empty())
        player.pause(3.0);
    player.session.manager.disconnectAction.apply(Nothing {});
    EXPECT_EQ(describe(player.measurements()), stream.measurements);
}

INSTANTIATE_TEST_SUITE_P(Streams, RecordedStreams,
    testing::ValuesIn(std::vector<std::filesystem::path>(
        std::filesystem::directory_iterator(TENSIO_STREAMS), {})),
    [](auto const& parameter) {
        auto name = parameter.param.stem().string();
        std::ranges::replace(name, '-', '_');
        return name;
    });
