#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tensio::fuzz {

// One write of a device that may send anything: after a pause, these bytes; never none.
struct Write {
    int pauseMilliseconds = 0;
    std::string bytes;
};

// What a fuzzer's bytes stand for: how the session is set up and ends, and what comes in between.
struct FuzzInput {
    bool endsByPulling = false;
    bool probesEverySilence = false;
    float targetPressure = 0.0f;
    float targetPressurePercent = 1.0f;
    std::vector<Write> writes;
    // Between the last write and the end.
    int restMilliseconds = 0;
};

// The first byte is the set-up; each write is a byte, three bits of pause and five of length, and
// that many bytes.
FuzzInput readFuzzInput(std::string_view bytes);

} // namespace tensio::fuzz
