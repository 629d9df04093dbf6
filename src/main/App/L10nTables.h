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

/// The list of the language with that code; empty where there is none.
std::span<const Entry> listOf(QStringView code);

/// The text of `key` in the language with that code; absent where its list lacks the key.
std::optional<QString> text(const QString& code, Key key);

/// The text of `key` in the language `code`, else in `otherwise`, else the key's own name: a gap shows as a readable
/// word.
QString textOf(Key key, const QString& code, const QString& otherwise);

} // namespace orvane::L10n
