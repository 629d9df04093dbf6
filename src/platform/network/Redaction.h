#pragma once

#include <QString>

namespace orvane {

/// `text` with every address cut behind its path (query, fragment and user information go) and every credential
/// (bearer tokens, session cookies, JSON web tokens) replaced by "[removed]". For texts of libraries and systems that
/// are about to be logged or shown.
QString redacted(const QString& text);

} // namespace orvane
