#include "platform/RecordGatherer.h"

#include "core/DeviceRecord.h"
#include "support/ManualRunLoop.h"

#include <gtest/gtest.h>

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

    void receive(std::string_view bytes, double pause)
    {
        gatherer.receive(bytes);
        runLoop.advance(Seconds(pause));
    }
};

} // namespace

TEST(RecordGatherer, LosesNoRecordHoweverTheReadsFall)
{
    std::string_view const stream = "+0101a-0202b+0303c";
    for (unsigned cuts = 0; cuts < 1U << 17U; ++cuts) {
        Gathering gathering;
        std::size_t begin = 0;
        for (std::size_t end = 1; end <= stream.size(); ++end) {
            if (end < stream.size() && (cuts >> (end - 1) & 1U) == 0)
                continue;
            gathering.receive(stream.substr(begin, end - begin), end % 2 == 0 ? 0.019 : 1.5);
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
