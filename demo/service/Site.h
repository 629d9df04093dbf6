#pragma once

#include <QByteArray>
#include <QString>

namespace orvane::demo {

class Library;

/// The pages of the stand-in site.
namespace Site {

/// The home page, or a project's: before the sign-in an invitation, behind it the library's newest tracks.
QByteArray page(const Library& library, bool signedIn, const QString& projectId);

/// The small window that signs in and closes itself.
QByteArray popup();

} // namespace Site
} // namespace orvane::demo
