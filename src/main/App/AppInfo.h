#pragma once

#include <QString>

namespace orvane {

/// What the program can say of itself. Its picture is in AppLogo.h.
namespace AppInfo {

/// "v" and the number of this release, such as "v1.2"; "dev" for a build without a number.
const QString& version();

/// As `version`, for the given release number.
QString version(const QString& release);

/// The name of the product's site, such as "name.example": what texts and pictures call it, also where another service
/// stands in for it.
const QString& siteName();

} // namespace AppInfo
} // namespace orvane
