#include "core/DeviceRecord.h"

#include "device-simulator/PressingStory.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string>

using namespace tensio;

namespace {

struct Chunk {
    std::string name;
    std::string bytes;
    std::vector<float> pressures;
};

constexpr float infinity = std::numeric_limits<float>::infinity();

std::vector<Chunk> const chunks {
    {"one record", "+0235X", {23.5f}},
    {"two records in order", "+0235X-0012X", {23.5f, -1.2f}},
    {"nothing", "", {}},
    {"a record and a half", "+0235X+01", {}},
    {"a blank for a sign is negative", " 0235X", {-23.5f}},
    {"a digit for a sign is negative", "10235X", {-23.5f}},
    {"any sign character is negative",
        "\xe5\x9c\xa7"
        "0235X",
        {-23.5f}},
    {"the filler may be anything", "+0235\xe5\x9c\xa7", {23.5f}},
    {"characters count, not bytes", "+0235\xe5\x9c\xa7+0010\xc3\xa9", {23.5f, 1.0f}},
    {"a blank in a field", "+ 235X", {}},
    {"a record that does not read costs only itself", "+0a35X+0010X", {1.0f}},
    {"tenths that are no digit", "+023-X", {}},
    {"NUL in a field",
        std::string("+02\0"
                    "5X",
            6),
        {}},
    {"exponent", "+1e95X", {1e9f + 0.5f}},
    {"hexadecimal", "+0x15X", {1.5f}},
    {"a sign in the field", "+-055X", {-4.5f}},
    {"infinity", "+inf0X", {infinity}},
    {"a byte that is no UTF-8", "+0235\xff", {}},
    {"overlong UTF-8", "+0235\xc0\xaf", {}},
    {"first surrogate in UTF-8", "+0235\xed\xa0\x80", {}},
    {"last surrogate in UTF-8", "+0235\xed\xbf\xbf", {}},
    {"a continuation of nothing", "+0235\x80", {}},
    {"a lead of five bytes", "+0235\xf8\x88\x80\x80\x80", {}},
    {"lowest characters of two, three and four bytes",
        "+0235\xc2\x80+0010\xe0\xa0\x80+0020\xf0\x90\x80\x80", {23.5f, 1.0f, 2.0f}},
    {"cut UTF-8", "+02351+0235\xe5\x9c", {}},
    {"beyond Unicode", "+0235\xf4\x90\x80\x80", {}},
    {"highest character", "+0235\xf4\x8f\xbf\xbf", {23.5f}},
};

} // namespace

TEST(DeviceRecord, ReadsWhatTheFormatAllowsAndDropsTheRest)
{
    for (auto const& [name, bytes, pressures] : chunks)
        EXPECT_EQ(readRecords(bytes), pressures) << name;
}

TEST(DeviceRecord, ReadsNegativeZeroAndNotANumber)
{
    auto const pressures = readRecords("-0000X+nan0X");
    ASSERT_EQ(pressures.size(), 2U);
    EXPECT_TRUE(pressures[0] == 0.0f && std::signbit(pressures[0]));
    EXPECT_TRUE(std::isnan(pressures[1]));
}

TEST(DeviceRecord, EveryValueOfTheFormatIsReadAsTheDeviceWroteIt)
{
    for (int tenths = -9999; tenths <= 9999; ++tenths) {
        auto const pressures = readRecords(deviceRecord(tenths / 10.0));
        ASSERT_EQ(pressures.size(), 1U);
        ASSERT_NEAR(static_cast<double>(pressures.front()), tenths / 10.0, 1e-4);
    }
}
