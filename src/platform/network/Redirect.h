#pragma once

#include <QByteArray>
#include <QHostAddress>
#include <QUrl>

#include <optional>

namespace orvane {

/// Whether `address` belongs to a machine on the open internet: not loopback, private, link-local, unspecified,
/// multicast or reserved. An IPv4 address within an IPv6 one counts as that IPv4 address.
bool isPublic(const QHostAddress& address);

/// Whether an answer of this status sends a GET elsewhere.
bool isRedirect(int status);

/// The address of the next hop, without user information and fragment; absent where `location` is no usable address,
/// in which case the answer is no redirect. Throws HttpError with the code RefusedRedirect for a scheme that is not
/// followed from `hop`: anything but http and https, and http from https.
std::optional<QUrl> redirectTarget(const QUrl& hop, const QByteArray& location);

} // namespace orvane
