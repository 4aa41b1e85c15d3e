#include "StreamCheck.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    auto const difference
        = tensio::fuzz::differenceFromNaive({reinterpret_cast<char const*>(data), size});
    if (!difference.empty()) {
        std::fprintf(stderr, "Program and naive reader disagree: %s\n", difference.c_str());
        std::abort();
    }
    return 0;
}
