#include "tools/large_pages.h"

#include <cstdint>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace qvx {

void PreferLargePages([[maybe_unused]] const void* memory, [[maybe_unused]] std::size_t bytes)
{
#if defined(__linux__)
    constexpr std::uintptr_t kLargePage = std::uintptr_t{2} << 20;
    // Whole large pages only: the first and the last part of the array stay in small ones.
    const auto begin = reinterpret_cast<std::uintptr_t>(memory);
    const std::uintptr_t first = (begin + kLargePage - 1) / kLargePage * kLargePage;
    const std::uintptr_t last = (begin + bytes) / kLargePage * kLargePage;
    if (first < last)
        madvise(reinterpret_cast<void*>(first), last - first, MADV_HUGEPAGE);
#endif
}

}  // namespace qvx
