#include "device-simulator/RecordedStream.h"

#include <gtest/gtest.h>
#include <sstream>

using namespace tensio;

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
