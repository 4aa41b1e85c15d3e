#include "support/AllocationCount.h"

#include <cstdlib>
#include <malloc.h>
#include <new>

namespace tensio {

std::ptrdiff_t liveBlocks = 0;
std::ptrdiff_t liveBytes = 0;

} // namespace tensio

void* operator new(std::size_t size)
{
    auto* const block = operator new(size, std::nothrow);
    return block ? block : throw std::bad_alloc();
}

void* operator new(std::size_t size, std::nothrow_t const& /*tag*/) noexcept
{
    auto* const block = std::malloc(size); // NOLINT(cppcoreguidelines-no-malloc)
    tensio::liveBlocks += block ? 1 : 0;
    tensio::liveBytes += static_cast<std::ptrdiff_t>(malloc_usable_size(block));
    return block;
}

void operator delete(void* block) noexcept
{
    tensio::liveBlocks -= block ? 1 : 0;
    tensio::liveBytes -= static_cast<std::ptrdiff_t>(malloc_usable_size(block));
    std::free(block); // NOLINT(cppcoreguidelines-no-malloc)
}

void operator delete(void* block, std::size_t /*size*/) noexcept
{
    operator delete(block);
}
