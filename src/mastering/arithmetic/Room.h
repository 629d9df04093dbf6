#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <sys/mman.h>
#include <vector>

namespace orvane {

/// Bytes of a large page, which begins at a multiple of so many.
inline constexpr std::uintptr_t largePage = std::uintptr_t(2) << 20;

/// Makes room for so many samples, on large pages where the system has them: small ones cost more to come by than
/// what is done to the samples on them. Room that is not used takes no memory. Throws as `reserve` does.
inline void makeRoom(std::vector<double>& channel, std::size_t samples)
{
    channel.reserve(samples);
    const auto start = (reinterpret_cast<std::uintptr_t>(channel.data()) + largePage - 1) / largePage * largePage;
    const auto end = reinterpret_cast<std::uintptr_t>(channel.data() + channel.capacity());
    if (start < end)
        ::madvise(reinterpret_cast<void*>(start), end - start, MADV_HUGEPAGE);
}

/// Gives a channel's memory back to the system behind whoever reads it for the last time, from front to back.
class GivingBack
{
public:
    /// The samples in front of `first` stay. The channel keeps its memory's place while this is used.
    explicit GivingBack(std::vector<double>& channel, std::size_t first = 0)
        : channel_(channel)
        , begin_((addressOf(first) + largePage - 1) / largePage * largePage)
    {
    }

    /// What stands in front of `end` is read no more, and is nothing from now on.
    void before(std::size_t end)
    {
        const std::uintptr_t last = addressOf(std::min(end, channel_.size())) / largePage * largePage;
        if (last <= begin_)
            return;
        ::madvise(reinterpret_cast<void*>(begin_), last - begin_, MADV_DONTNEED);
        begin_ = last;
    }

    /// What stands in front of the last `samples` is read no more.
    void allBut(std::size_t samples) { before(channel_.size() - std::min(channel_.size(), samples)); }

private:
    std::uintptr_t addressOf(std::size_t index) const
    {
        return reinterpret_cast<std::uintptr_t>(channel_.data()) + index * sizeof(double);
    }

    std::vector<double>& channel_;
    std::uintptr_t begin_;
};

} // namespace orvane
