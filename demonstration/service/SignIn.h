#pragma once

#include <QByteArray>

namespace orvane::demo {

/// The cookie by which the site knows a visitor who has signed in. It stays good when the service is started anew.
namespace SignIn {

inline constexpr char cookieName[] = "__client";

/// A value for the cookie of a visitor who signs in.
QByteArray freshVisitor();

/// Whether a value is one that `freshVisitor` gave.
bool isVisitor(const QByteArray& value);

} // namespace SignIn
} // namespace orvane::demo
