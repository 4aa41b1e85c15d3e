#pragma once

#include <random>
#include <string>
#include <vector>

namespace tensio {

// One write of the device: after a pause since the write before, these bytes.
struct TimedBytes {
    double pauseSeconds = 0.0;
    std::string bytes;
};

// A pressure in kPa as the device writes it, within ±999.9.
std::string deviceRecord(double pressure);

// A person pressing, 20 records a second, over and over: a weak press, a press at the target, a
// strong one, and a short burst of only zero and negative readings; silences of more than 2 s
// between them; always the same sequence.
class PressingStory {
public:
    std::vector<TimedBytes> nextBurst();

private:
    void press(std::vector<TimedBytes>& burst, double plateau, double seconds);
    void rest(std::vector<TimedBytes>& burst);

    std::mt19937 m_random {1};
    unsigned m_burst = 0;
};

} // namespace tensio
