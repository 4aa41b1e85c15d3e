#include "core/DeviceRecord.h"

#include "core/NumberText.h"
#include "device-simulator/PressingStory.h"

#include <gtest/gtest.h>

using namespace tensio;

namespace {

std::string readingsText(std::string_view chunk)
{
    std::string text;
    for (auto const pressure : readRecords(chunk))
        text += formatFixed(pressure, 1) + " ";
    return text;
}

} // namespace

TEST(DeviceRecord, ReadsWhatTheFormatAllowsAndDropsTheRest)
{
    struct {
        char const* name;
        std::string_view bytes;
        char const* readings;
    } const rows[] {
        {"two records in order", "+0235X-0012X", "23.5 -1.2 "},
        {"nothing", "", ""},
        {"a record and a half", "+0235X+01", ""},
        {"any sign character but a plus is negative", "圧0235X", "-23.5 "},
        {"characters count, not bytes", "+0235圧+0010é", "23.5 1.0 "},
        {"a record that cannot be read costs only itself", "+ 235X+0a35X+0010X", "1.0 "},
        {"tenths that are no digit", "+023-X", ""},
        {"NUL in a field", {"+02\0005X", 6}, ""},
        {"exponent", "+1e95X", "1000000000.0 "},
        {"hexadecimal, a sign in the field", "+0x15X+-055X", "1.5 -4.5 "},
        {"negative zero and no finite number", "-0000X+nan0X+inf0X-inf0X", "-0.0 nan inf -inf "},
        {"a byte that is no UTF-8", "+0235\xff", ""},
        {"overlong UTF-8", "+0235\xc0\xaf", ""},
        {"first surrogate", "+0235\xed\xa0\x80", ""},
        {"last surrogate", "+0235\xed\xbf\xbf", ""},
        {"a continuation of nothing", "+0235\x80", ""},
        {"a lead of five bytes", "+0235\xf8\x88\x80\x80\x80", ""},
        {"a character without its end", "+02351+0235\xe5\x9c", ""},
        {"beyond Unicode", "+0235\xf4\x90\x80\x80", ""},
        {"lowest characters of two, three and four bytes",
            "+0235\xc2\x80+0010\xe0\xa0\x80+0020\xf0\x90\x80\x80", "23.5 1.0 2.0 "},
        {"highest character", "+0235\xf4\x8f\xbf\xbf", "23.5 "},
    };
    for (auto const& [name, bytes, readings] : rows)
        EXPECT_EQ(readingsText(bytes), readings) << name;
}

TEST(DeviceRecord, EveryValueOfTheFormatIsReadAsTheDeviceWroteIt)
{
    for (int tenths = -9999; tenths <= 9999; ++tenths)
        ASSERT_EQ(readingsText(deviceRecord(tenths / 10.0)),
            formatFixed(static_cast<float>(tenths) / 10.0f, 1) + " ");
}
