#pragma once

#include "main/App/L10n.h"

#include <span>

namespace orvane::L10n {

struct Entry
{
    Key key;
    const char16_t* text;
};

/// One list for each language, in the order of the keys.
std::span<const Entry> english();

} // namespace orvane::L10n
