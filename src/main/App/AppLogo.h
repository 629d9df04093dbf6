#pragma once

#include <QImage>
#include <QString>

#include <optional>

namespace orvane::AppInfo {

/// The program's picture: "logo.jpg" of its resources, else the application's icon; absent if there is neither.
/// Read once. Needs the application object.
const std::optional<QImage>& logo();

/// As `logo`, read anew from the picture at `path`.
std::optional<QImage> logo(const QString& path);

} // namespace orvane::AppInfo
