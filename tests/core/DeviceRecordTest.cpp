#include "core/DeviceRecord.h"

#include "core/NumberText.h"

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
    std::pair<std::string_view, char const*> const rows[] {
        // Whole records in order; any sign character but a plus is negative.
        {"+0235X-0012X", "23.5 -1.2 "}, {"圧0235X", "-23.5 "}, {"+0235X+01", ""},
        // A record that cannot be read costs only itself.
        {"+ 235X+0a35X+023-X+0010X", "1.0 "}, {{"+02\0005X+0010X", 12}, "1.0 "},
        // Exponent, hexadecimal, a sign in the field, negative zero and no finite number.
        {"+1e95X+0x15X+-055X", "1000000000.0 1.5 -4.5 "},
        {"-0000X+nan0X+inf0X-inf0X", "-0.0 nan inf -inf "},
        // Characters count, not bytes: the highest of two, three and four bytes.
        {"+0235\xdf\xbf+0010\xef\xbf\xbf+0020\xf4\x8f\xbf\xbf", "23.5 1.0 2.0 "},
        // No UTF-8: no lead, overlong, surrogates, beyond Unicode.
        {"+0235\xff", ""}, {"+0235\x80", ""}, {"+0235\xc0\xaf", ""}, {"+0235\xed\xa0\x80", ""},
        {"+0235\xf4\x90\x80\x80", ""}, {"+02351+0235\xe5\x9c", ""}};
    for (auto const& [bytes, readings] : rows)
        EXPECT_EQ(readingsText(bytes), readings) << testing::PrintToString(bytes);
}
