#include "device-simulator/PressingStory.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tensio {

namespace {
constexpr double interval = 0.05;
constexpr double silence = 2.6;
constexpr double riseSeconds = 0.6;
} // namespace

std::string deviceRecord(double pressure)
{
    auto const tenths = std::min(std::lround(std::abs(pressure) * 10.0), 9999L);
    auto const digits = std::to_string(10000 + tenths).substr(1);
    return (pressure < 0.0 ? "-" : "+") + digits + "\n";
}

std::vector<TimedBytes> PressingStory::nextBurst()
{
    constexpr std::array plateaus {21.0, 36.5, 58.0};
    constexpr std::array seconds {2.4, 3.2, 2.0};
    std::vector<TimedBytes> burst;
    auto const turn = m_burst++ % (plateaus.size() + 1);
    if (turn < plateaus.size())
        press(burst, plateaus[turn], seconds[turn]);
    else
        rest(burst);
    burst.front().pauseSeconds = m_burst == 1 ? 0.5 : silence;
    return burst;
}

void PressingStory::press(std::vector<TimedBytes>& burst, double plateau, double seconds)
{
    std::normal_distribution tremor(0.0, 0.5);
    auto const total = seconds + 2.0 * riseSeconds;
    for (double time = 0.0; time <= total; time += interval) {
        auto const ramp = std::clamp(std::min(time, total - time) / riseSeconds, 0.0, 1.0);
        auto const fatigue = 1.0 - 0.05 * time / total;
        auto const pressure = plateau * fatigue * ramp + tremor(m_random) * ramp;
        burst.push_back({interval, deviceRecord(std::max(pressure, 0.0))});
    }
}

void PressingStory::rest(std::vector<TimedBytes>& burst)
{
    std::uniform_real_distribution drift(-0.6, 0.0);
    for (int record = 0; record < 10; ++record)
        burst.push_back({interval, deviceRecord(record % 3 == 0 ? 0.0 : drift(m_random))});
}

} // namespace tensio
