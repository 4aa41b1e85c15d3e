#include "device-simulator/PressingStory.h"
#include "support/TerminalPlayer.h"

#include <gtest/gtest.h>
#include <random>

using namespace tensio;

TEST(Noise, IsDroppedAndTheNextBurstIsRead)
{
    TerminalPlayer player;
    std::mt19937 random(5);
    for (int burst = 0; burst < 50; ++burst) {
        std::string noise(1 + random() % 6000, '\0');
        std::ranges::generate(noise, [&] { return static_cast<char>(random()); });
        player.write(noise);
        player.pause(0.025);
        player.write(deviceRecord(burst));
        player.pause(0.025);
    }
    auto const points = *player.session.manager.measurement->pressurePoints;
    ASSERT_EQ(points.size(), 50U);
    for (std::size_t burst = 0; burst < points.size(); ++burst)
        EXPECT_EQ(points[burst], static_cast<float>(burst));
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
