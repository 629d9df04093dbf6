#pragma once

#include <cstddef>
#include <iterator>
#include <optional>
#include <ranges>

namespace orvane {

/// The element of `list` at `index`, or absent when the index lies outside it, on either side.
template <std::ranges::random_access_range List>
std::optional<std::ranges::range_value_t<List>> safeAt(const List& list, std::ptrdiff_t index)
{
    if (index < 0 || index >= std::ssize(list))
        return std::nullopt;
    return list[static_cast<decltype(std::size(list))>(index)];
}

} // namespace orvane
