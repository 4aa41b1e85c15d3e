#include "platform/RecordGatherer.h"

#include "core/DeviceRecord.h"
#include "support/ManualRunLoop.h"

#include <algorithm>
#include <gtest/gtest.h>

using namespace tensio;

namespace {

struct Gathering {
    ManualRunLoop runLoop;
    std::vector<std::string> chunks;
    std::vector<float> read;
    RecordGatherer gatherer {runLoop, deviceRecordFormat, [this](std::string_view chunk) {
                                 chunks.emplace_back(chunk);
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

TEST(RecordGatherer, KeepsWhatIsNoRecordApartFromTheNextBurst)
{
    using Texts = std::vector<std::string>;
    std::pair<Texts, Texts> const rows[] {
        {{"#+0101a", "+0202b"}, {"#+0101a", "+0202b"}},
        {{"#+0101", "+0202b"}, {"+0202b"}},
        {{"+011a+0202b", "+0303c"}, {"+011a+0202b", "+0303c"}},
        {{"+0101a+01", "+02", "+0303c"}, {"+0101a", "+01", "+02", "+0303c"}},
        {{"+0101\xc3", "\xa9"}, {"+0101\xc3", "\xa9"}},
    };
    for (auto const& [bursts, chunks] : rows) {
        Gathering gathering;
        for (auto const& burst : bursts)
            gathering.receive(burst, 0.021);
        EXPECT_EQ(gathering.chunks, chunks);
    }
}

TEST(RecordGatherer, ReadsNothingWrongInAStreamThatALostOrExtraByteShifts)
{
    // An extra byte before, opened in mid-record, a byte lost later; fillers like signs and digits.
    std::pair<std::string, std::string> const rows[] {{"+", "+0235X"}, {"#", "-1239X"},
        {"2357", "+02357"}, {"+0235\n+025\n", "+0235\n"}, {"+0235++0235", "+0235+"},
        {"35+", "+0235+"}};
    for (auto const& [head, record] : rows) {
        for (std::size_t const length : {1U, 5U, 6U, 7U, 64U, 600U}) {
            Gathering gathering;
            auto stream = head;
            for (int count = 0; count < 1000; ++count)
                stream += record;
            for (std::size_t begin = 0; begin < stream.size(); begin += length)
                gathering.receive(std::string_view(stream).substr(begin, length), 0.003);
            gathering.gatherer.flush();
            EXPECT_GE(gathering.read.size(), 890U) << head << record << length;
            EXPECT_EQ(std::ranges::count(gathering.read, readRecords(record).at(0)),
                std::ssize(gathering.read))
                << head << record << length;
        }
    }
}

TEST(RecordGatherer, FlushesDiscardsAndLimitsItsBuffer)
{
    Gathering gathering;
    gathering.gatherer.receive("+01");
    gathering.gatherer.discard();
    gathering.gatherer.receive("+0202b+02");
    EXPECT_EQ(gathering.chunks.size(), 1U) << "complete records do not wait";
    gathering.gatherer.flush();
    gathering.runLoop.advance(Seconds(1.0));
    gathering.gatherer.receive("x");
    for (std::size_t bytes = 0; bytes < RecordGatherer::maxBufferSize; bytes += 6)
        gathering.gatherer.receive("xxxxxx");
    EXPECT_EQ(gathering.chunks.size(), 3U) << "noise without a pause";
    EXPECT_EQ(gathering.chunks[1], "+02");
}
