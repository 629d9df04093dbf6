#pragma once

#include <QString>

namespace orvane {

/// What the program can say of itself. Its picture is in AppLogo.h.
namespace AppInfo {

/// "v" and the number of this release, such as "v1.2"; "dev" for a build without a number.
const QString& version();

/// As `version`, for the given release number.
QString version(const QString& release);

} // namespace AppInfo
} // namespace orvane
