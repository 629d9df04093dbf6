#pragma once

#include "dj/arithmetic/Key.h"

#include <QString>

#include <array>

namespace orvane::DJ {

/// The twelve tonics as they are written, C first, with sharp and flat signs.
const std::array<QString, 12>& keyNames();

/// The key in words, as "E♭ minor". Its tonic is from 0 to 11.
QString name(const Key& key);

/// The key's code on the wheel of fifths, as "8B" for C major and "8A" for A minor.
QString camelot(const Key& key);

} // namespace orvane::DJ
