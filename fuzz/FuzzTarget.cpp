#include "StreamCheck.h"

#include <cstddef>
#include <cstdint>
#include <stdexcept>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    auto const broken = tensio::fuzz::brokenProperty({reinterpret_cast<char const*>(data), size});
    if (!broken.empty())
        throw std::logic_error("Does not hold: " + broken);
    return 0;
}
