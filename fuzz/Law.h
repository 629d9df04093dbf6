#pragma once

#include <QByteArray>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace orvane::fuzz {

/// Ends the program where a law is broken, so that the engine keeps the input.
inline void mustHold(bool law)
{
    if (!law)
        std::abort();
}

/// The input as bytes, not copied.
inline QByteArray bytes(const std::uint8_t* data, std::size_t size)
{
    return QByteArray::fromRawData(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
}

} // namespace orvane::fuzz
