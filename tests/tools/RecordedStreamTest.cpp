#include "device-simulator/RecordedStream.h"

#include <gtest/gtest.h>
#include <sstream>
#include <stdexcept>

using namespace tensio;

TEST(RecordedStream, ReadsTimesAndEscapes)
{
    std::istringstream input("# a press\n\n0 +0235\\n\n50 \\x00\\xfF\\\\\\t \n");
    auto const stream = readRecordedStream(input);
    ASSERT_EQ(stream.size(), 2U);
    EXPECT_EQ(stream[0].bytes, "+0235\n");
    EXPECT_EQ(stream[1].pauseSeconds, 0.05);
    EXPECT_EQ(stream[1].bytes, std::string("\0\xff\\\t ", 5));
}

TEST(RecordedStream, NamesTheLineThatDoesNotRead)
{
    for (auto const* line : {"+0235", "x +0235", "-5 +0235", "5", "5 \\x0", "5 \\", "5 \\q"}) {
        std::istringstream input(std::string("0 ok\n") + line);
        try {
            readRecordedStream(input);
            ADD_FAILURE() << line;
        } catch (std::invalid_argument const& error) {
            EXPECT_NE(std::string(error.what()).find("line 2"), std::string::npos);
        }
    }
}
