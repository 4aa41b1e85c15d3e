#pragma once

#include "device-simulator/PressingStory.h"
#include "support/TerminalPlayer.h"

#include <array>
#include <random>
#include <vector>

namespace tensio {

// What noise is made of: any byte, or what records are made of too.
inline std::array<std::string, 2> noiseAlphabets()
{
    std::string anyByte;
    for (int byte = 0; byte < 256; ++byte)
        anyByte += static_cast<char>(byte);
    return {anyByte, "+-0123456789 "};
}

// A connected session on a line that hums between the records.
class NoisyLine {
public:
    TerminalPlayer player;

    NoisyLine(std::string alphabet, unsigned seed)
        : m_alphabet(std::move(alphabet))
        , m_random(seed)
    {
    }

    // How many of the records played were read, each alone after its noise.
    std::size_t recordsRead = 0;

    // Plays noise, at most that long, and a record, with just enough silence after each. How long
    // the noise was.
    std::size_t play(std::size_t longest, int pressure)
    {
        std::string noise(1 + m_random() % longest, '\0');
        std::ranges::generate(noise, [&] { return m_alphabet[m_random() % m_alphabet.size()]; });
        playBurst(noise);
        m_read.clear();
        playBurst(deviceRecord(pressure));
        recordsRead += m_read == std::vector {static_cast<float>(pressure)} ? 1U : 0U;
        return noise.size();
    }

private:
    void playBurst(std::string_view bytes)
    {
        player.write(bytes);
        player.pause(0.025);
    }

    std::string m_alphabet;
    std::mt19937 m_random;
    std::vector<float> m_read;
    Subscription m_reading = player.session.manager.serialPortManager.pressure.observeChanges(
        [this](float pressure) { m_read.push_back(pressure); });
};

} // namespace tensio
