#include "StreamCheck.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>

using namespace tensio;

TEST(StreamCheck, HoldsForTheCorpus)
{
    for (auto const& entry : std::filesystem::directory_iterator(TENSIO_CORPUS)) {
        std::ifstream file(entry.path(), std::ios::binary);
        std::string const bytes(std::istreambuf_iterator<char>(file), {});
        EXPECT_EQ(fuzz::brokenProperty(bytes), "") << entry.path();
    }
}

TEST(StreamCheck, HoldsForRecordsAmongNoise)
{
    std::vector<std::string> const pieces {"+0235\n", "+0235\n", "-0101\n", "+0000\n", " 0101\n",
        "+nan0\n", "+inf0\n", "+1e95\n", "+0102\xe5\x9c\xa7", "+0103+", "+0a35\n", "+0104",
        "+011\n", "\xff", "#", "+", "12", "\xe5\x9c"};
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        std::string bytes(1, static_cast<char>(random()));
        for (auto writes = 1 + random() % 12; writes > 0; --writes) {
            auto const written
                = pieces[random() % pieces.size()] + pieces[random() % pieces.size()];
            bytes += static_cast<char>((random() % 8) << 5U | written.size());
            bytes += written;
        }
        ASSERT_EQ(fuzz::brokenProperty(bytes), "") << "round " << round;
    }
}
