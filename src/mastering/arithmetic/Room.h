#pragma once

#include <cstddef>
#include <cstdint>
#include <sys/mman.h>
#include <vector>

namespace orvane {

/// Makes room for so many samples, on large pages where the system has them: small ones cost more to come by than
/// what is done to the samples on them. Room that is not used takes no memory. Throws as `reserve` does.
inline void makeRoom(std::vector<double>& channel, std::size_t samples)
{
    channel.reserve(samples);
    constexpr std::uintptr_t pageSize = std::uintptr_t(2) << 20;
    const auto start = (reinterpret_cast<std::uintptr_t>(channel.data()) + pageSize - 1) / pageSize * pageSize;
    const auto end = reinterpret_cast<std::uintptr_t>(channel.data() + channel.capacity());
    if (start < end)
        ::madvise(reinterpret_cast<void*>(start), end - start, MADV_HUGEPAGE);
}

} // namespace orvane
