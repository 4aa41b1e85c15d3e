#include "StreamCheck.h"

#include "NaiveReader.h"
#include "core/NumberText.h"
#include "device-simulator/PressingStory.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>

using namespace tensio;

namespace {

// Records, some odd, with noise in between.
std::string madWire(std::mt19937& random)
{
    std::vector<std::string> const odd {" 0101\n", "+nan0\n", "+inf0\n", "+1e95\n",
        "+0102\xe5\x9c\xa7", "+0103+", "-0000\n", "+0a35\n", "+0104", "+011\n", "\xff", "#", "+",
        "12", "\xe5\x9c"};
    std::string wire;
    for (auto pieces = 1 + random() % 24; pieces > 0; --pieces)
        wire += random() % 4 != 0 ? deviceRecord(static_cast<double>(random() % 900) / 10.0)
                                  : odd.at(random() % odd.size());
    return wire;
}

std::string madSession(std::mt19937& random)
{
    std::string bytes(1, static_cast<char>(random()));
    auto const wire = madWire(random);
    for (std::size_t begin = 0; begin < wire.size();) {
        auto const head = static_cast<unsigned char>(random());
        bytes += static_cast<char>(head);
        bytes += wire.substr(begin, head & 31U);
        begin += head & 31U;
    }
    return bytes;
}

} // namespace

TEST(StreamCheck, ProgramAndNaiveReaderAgreeOnTheCorpus)
{
    int inputs = 0;
    for (auto const& entry : std::filesystem::directory_iterator(TENSIO_CORPUS)) {
        std::ifstream file(entry.path(), std::ios::binary);
        std::string const bytes(std::istreambuf_iterator<char>(file), {});
        EXPECT_EQ(fuzz::differenceFromNaive(bytes), "") << entry.path();
        ++inputs;
    }
    EXPECT_GT(inputs, 20);
}

TEST(StreamCheck, ProgramAndNaiveReaderAgreeOnWhatADeviceOutOfItsMindWouldSend)
{
    std::mt19937 random(7);
    int const rounds = 2000;
    int pressing = 0;
    for (int round = 0; round < rounds; ++round) {
        auto const bytes = madSession(random);
        ASSERT_EQ(fuzz::differenceFromNaive(bytes), "") << "round " << round;
        auto const readings = fuzz::readNaively(fuzz::readFuzzInput(bytes));
        pressing
            += std::ranges::any_of(readings, [](auto const& each) { return each.pressure > 0.0f; })
            ? 1
            : 0;
    }
    // Else the files would hardly ever be compared.
    EXPECT_GT(pressing, rounds / 2);
}

TEST(StreamCheck, ProgramAndNaiveReaderAgreeOnEveryField)
{
    constexpr char lowest = ' ' - 1;
    constexpr char highest = 127;
    std::string field = "...";
    for (field[0] = lowest; field[0] < highest; ++field[0]) {
        for (field[1] = lowest; field[1] < highest; ++field[1]) {
            for (field[2] = lowest; field[2] < highest; ++field[2]) {
                auto const program = readNumber(field);
                auto const naive = fuzz::naiveNumber(field);
                bool const isSame = program == naive
                    || (program && naive && std::isnan(*program) && std::isnan(*naive));
                ASSERT_TRUE(isSame) << field;
            }
        }
    }
}
