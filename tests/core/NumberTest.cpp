#include "core/NumberText.h"

#include <clocale>
#include <gtest/gtest.h>

using namespace tensio;

TEST(Number, FormatsRoundedWithAPointInAnyLocale)
{
    std::setlocale(LC_ALL, "");
    struct Row {
        float value;
        int decimals;
        char const* text;
    };
    std::vector<Row> const rows {{12.34f, 1, "12.3"}, {55.5f, 1, "55.5"}, {18.0f, 1, "18.0"},
        {-0.04f, 1, "-0.0"}, {0.25f, 1, "0.2"}, {31.26f, 1, "31.3"}, {99.96f, 1, "100.0"},
        {0.05f, 2, "0.05"}, {1.0e9f, 1, "1000000000.0"}};
    for (auto const& [value, decimals, text] : rows)
        EXPECT_EQ(formatFixed(value, decimals), text);
}

TEST(Number, ReadsOnlyWholeNumbersInCNotation)
{
    for (auto const* text : {"", " 5", "5 ", "5\t", "12,5", "abc", "1.2.3", "１２", "5kPa", "--5"})
        EXPECT_EQ(readNumber(text), std::nullopt) << text;
    EXPECT_EQ(readNumber("12.5"), 12.5f);
    EXPECT_EQ(readNumber("-05"), -5.0f);
    EXPECT_EQ(readNumber("1e1"), 10.0f);
    EXPECT_EQ(readNumber(std::string_view("5\0", 2)), std::nullopt);
}
