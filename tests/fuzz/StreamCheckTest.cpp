#include "StreamCheck.h"

#include "NaiveReader.h"
#include "core/NumberText.h"

#include <cmath>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>

using namespace tensio;

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

TEST(StreamCheck, ProgramAndNaiveReaderAgreeOnWhatAMachineWouldDream)
{
    std::mt19937 random(7);
    std::string const alphabet = "+-0123456789.exinfa \n\xe5\x9c\xa7";
    for (int round = 0; round < 2000; ++round) {
        std::string bytes(random() % 120, '\0');
        for (auto& byte : bytes)
            byte = random() % 4 == 0 ? static_cast<char>(random())
                                     : alphabet[random() % alphabet.size()];
        ASSERT_EQ(fuzz::differenceFromNaive(bytes), "") << "round " << round;
    }
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
