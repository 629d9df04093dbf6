#pragma once

#include <memory>
#include <type_traits>

namespace orvane {

/// Gives a C library's handle back with `Free`, which takes the handle or its address.
template <auto Free>
struct HandleDeleter
{
    template <typename Type>
    void operator()(Type* handle) const
    {
        if constexpr (std::is_invocable_v<decltype(Free), Type**>)
            Free(&handle);
        else
            Free(handle);
    }
};

/// An owned handle of a C library.
template <typename Type, auto Free>
using Handle = std::unique_ptr<Type, HandleDeleter<Free>>;

} // namespace orvane
