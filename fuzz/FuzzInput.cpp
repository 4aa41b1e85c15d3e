#include "FuzzInput.h"

#include <array>
#include <utility>

namespace tensio::fuzz {

namespace {

// Around the silence that ends an incomplete record (20 ms) and the tick that ends a burst (1 s).
constexpr std::array pauses {0, 3, 10, 19, 20, 23, 450, 997};
constexpr std::array targets {30.0f, 42.5f, 10.0f, 80.0f};
constexpr std::array percents {1.0f, 0.8f, 0.01f, 0.7f};

std::string_view take(std::string_view& bytes, std::size_t count)
{
    auto const taken = bytes.substr(0, count);
    bytes.remove_prefix(taken.size());
    return taken;
}

} // namespace

FuzzInput readFuzzInput(std::string_view bytes)
{
    FuzzInput input;
    if (bytes.empty())
        return input;
    auto const setUp = static_cast<unsigned char>(take(bytes, 1).front());
    input.endsByPulling = (setUp & 1U) != 0;
    input.probesEverySilence = (setUp & 32U) != 0;
    input.targetPressure = targets.at(setUp >> 1U & 3U);
    input.targetPressurePercent = percents.at(setUp >> 3U & 3U);

    while (!bytes.empty()) {
        auto const head = static_cast<unsigned char>(take(bytes, 1).front());
        input.restMilliseconds += pauses.at(head >> 5U);
        if (auto const written = take(bytes, head & 31U); !written.empty())
            input.writes.push_back(
                {std::exchange(input.restMilliseconds, 0), std::string(written)});
    }
    return input;
}

} // namespace tensio::fuzz
