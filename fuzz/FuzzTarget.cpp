#include "StreamCheck.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    auto const broken = tensio::fuzz::brokenProperty({reinterpret_cast<char const*>(data), size});
    if (!broken.empty()) {
        std::fprintf(stderr, "Does not hold: %s\n", broken.c_str());
        std::abort();
    }
    return 0;
}
