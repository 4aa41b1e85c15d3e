#include "StreamCheck.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

using namespace tensio;

TEST(StreamCheck, HoldsForTheCorpus)
{
    EXPECT_FALSE(std::filesystem::is_empty(TENSIO_CORPUS));
    for (auto const& entry : std::filesystem::directory_iterator(TENSIO_CORPUS)) {
        std::ifstream file(entry.path(), std::ios::binary);
        std::string const bytes(std::istreambuf_iterator<char>(file), {});
        EXPECT_EQ(fuzz::brokenProperty(bytes), "") << entry.path();
    }
}
