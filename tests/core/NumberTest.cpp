#include "core/NumberText.h"

#include <gtest/gtest.h>

using namespace tensio;

TEST(Number, IsReadOnlyWholeAndInCNotation)
{
    for (auto const* text : {"", " 5", "5 ", "5\t", "12,5", "abc", "1.2.3", "１２", "5kPa", "--5"})
        EXPECT_EQ(readNumber(text), std::nullopt) << text;
    EXPECT_EQ(readNumber("12.5"), 12.5f);
    EXPECT_EQ(readNumber("-05"), -5.0f);
    EXPECT_EQ(readNumber(std::string_view("5\0", 2)), std::nullopt);
}
