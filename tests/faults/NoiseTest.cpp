#include "support/NoisyLine.h"

#include <gtest/gtest.h>

using namespace tensio;

TEST(Noise, IsDroppedAndTheNextBurstIsRead)
{
    constexpr int bursts = 100;
    for (auto const& alphabet : noiseAlphabets()) {
        NoisyLine line(alphabet, 5);
        // Every other time about as long as a record.
        for (int burst = 0; burst < bursts; ++burst)
            line.play(burst % 2 == 0 ? 6000 : 12, burst);
        EXPECT_EQ(line.recordsRead, bursts) << alphabet;
    }
}

TEST(Flood, AtLineRateLosesNothingHoweverTheReadsFall)
{
    constexpr double recordSeconds = 6.0 / 1920.0;
    TerminalPlayer player;
    std::mt19937 random(6);
    std::vector<float> sent;
    for (int record = 0; record < 2000; ++record) {
        sent.push_back(static_cast<float>(record % 800));
        auto const bytes = deviceRecord(record % 800);
        auto const cut = random() % bytes.size();
        player.write(std::string_view(bytes).substr(0, cut));
        player.write(std::string_view(bytes).substr(cut));
        player.pause(recordSeconds);
    }
    EXPECT_EQ(player.session.manager.measurement->pressurePoints, sent);
}
