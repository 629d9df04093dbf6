#pragma once

#include <QDBusConnection>
#include <QString>

#include <functional>

namespace orvane {

/// Shows the file at `path` (absolute) in the user's file viewer, through org.freedesktop.FileManager1 on the session
/// bus `bus`. Where that does not answer, `openFolder` is called with the file's folder. Returns at once; `openFolder`
/// may be called much later, from the event loop, and must not name anything that could be gone by then.
void revealFile(QDBusConnection bus, const QString& path, std::function<void(const QString& folder)> openFolder);

} // namespace orvane
