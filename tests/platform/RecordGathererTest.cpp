#include "platform/RecordGatherer.h"

#include "core/DeviceRecord.h"
#include "support/ManualRunLoop.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <iterator>

using namespace tensio;

namespace {

struct Gathering {
    ManualRunLoop runLoop;
    std::vector<std::string> chunks;
    RecordGatherer gatherer {runLoop, deviceRecordFormat,
        [this](std::string_view chunk) { chunks.emplace_back(chunk); }};

    std::string joined() const
    {
        std::string all;
        for (auto const& chunk : chunks)
            all += chunk;
        return all;
    }
};

} // namespace

TEST(RecordGatherer, LosesNoRecordHoweverTheReadsFall)
{
    std::string const stream = "+0101a-0202b+0303c";
    constexpr unsigned partitions = 1U << 17U;
    for (unsigned cuts = 0; cuts < partitions; ++cuts) {
        Gathering gathering;
        std::size_t begin = 0;
        for (std::size_t end = 1; end <= stream.size(); ++end) {
            if (end < stream.size() && (cuts >> (end - 1) & 1U) == 0)
                continue;
            gathering.gatherer.receive(std::string_view(stream).substr(begin, end - begin));
            gathering.runLoop.advance(Seconds(end % 2 == 0 ? 0.019 : 1.5));
            begin = end;
        }
        ASSERT_EQ(gathering.joined(), stream) << "cuts " << cuts;
        for (auto const& chunk : gathering.chunks)
            ASSERT_EQ(chunk.size() % 6, 0U) << "cuts " << cuts;
        ASSERT_EQ(gathering.runLoop.liveTimers(), 0U);
    }
}

TEST(RecordGatherer, KeepsWhatIsNoRecordApartFromTheNextBurst)
{
    using Texts = std::vector<std::string>;
    struct {
        char const* what;
        Texts bursts;
        Texts chunks;
    } const cases[] {
        {"a stray byte before a record", {"#+0101a", "+0202b"}, {"#+0101a", "+0202b"}},
        {"an extra byte before a cut record", {"#+0101", "+0202b"}, {"+0202b"}},
        {"a lost digit", {"+011a+0202b", "+0303c"}, {"+011a+0202b", "+0303c"}},
        {"a beginning twice lost", {"+0101a+01", "+02", "+0303c"},
            {"+0101a", "+01", "+02", "+0303c"}},
        {"a filler of two bytes, cut", {"+0101\xc3", "\xa9"}, {"+0101\xc3", "\xa9"}},
    };
    for (auto const& [what, bursts, chunks] : cases) {
        Gathering gathering;
        for (auto const& burst : bursts) {
            gathering.gatherer.receive(burst);
            gathering.runLoop.advance(Seconds(0.021));
        }
        EXPECT_EQ(gathering.chunks, chunks) << what;
    }
}

TEST(RecordGatherer, ReadsNothingWrongInAStreamThatALostOrExtraByteShifts)
{
    struct {
        char const* what;
        std::string head;
        std::string record;
    } const cases[] {
        {"an extra sign", "+", "+0235X"},
        {"an extra byte before negative readings", "#", "-1239X"},
        {"opened in mid-record, the filler a digit", "2357", "+02357"},
        {"a byte lost later", "+0235\n+0235\n+025\n", "+0235\n"},
        {"a filler lost that is a sign", "+0235++0235", "+0235+"},
        {"signs for fillers", "35+", "+0235+"},
    };
    for (auto const& [what, head, record] : cases) {
        for (std::size_t const length : {1U, 5U, 6U, 7U, 64U, 600U}) {
            Gathering gathering;
            auto stream = head;
            for (int count = 0; count < 1000; ++count)
                stream += record;
            for (std::size_t begin = 0; begin < stream.size(); begin += length) {
                gathering.gatherer.receive(std::string_view(stream).substr(begin, length));
                gathering.runLoop.advance(Seconds(0.003));
            }
            gathering.gatherer.flush();
            std::vector<float> read;
            for (auto const& chunk : gathering.chunks)
                std::ranges::copy(readRecords(chunk), std::back_inserter(read));
            EXPECT_GE(read.size(), 890U) << what << ", pieces of " << length;
            EXPECT_EQ(std::ranges::count(read, readRecords(record).at(0)), std::ssize(read))
                << what << ", pieces of " << length;
        }
    }
}

TEST(RecordGatherer, DeliversNoiseWithoutAPauseInPieces)
{
    Gathering gathering;
    gathering.gatherer.receive("x");
    for (std::size_t bytes = 0; bytes < RecordGatherer::maxBufferSize; bytes += 6)
        gathering.gatherer.receive("xxxxxx");
    EXPECT_EQ(gathering.chunks.size(), 1U);
}

TEST(RecordGatherer, FlushesOrDiscardsItsBuffer)
{
    Gathering gathering;
    gathering.gatherer.receive("+01");
    gathering.gatherer.discard();
    gathering.gatherer.receive("+0202b+02");
    EXPECT_EQ(gathering.chunks.size(), 1U) << "complete records do not wait";
    gathering.gatherer.flush();
    gathering.runLoop.advance(Seconds(1.0));
    EXPECT_EQ(gathering.joined(), "+0202b+02");
}
