#pragma once

#include <QByteArray>
#include <QString>

namespace orvane::demo {

/// A cover, 1024 by 1024, made up from the seed, as "jpg", "png" or "webp". The same seed gives the same picture.
/// Callable from any thread.
QByteArray paintCover(unsigned seed, const QString& extension);

/// The same picture, 256 by 256, as "jpg".
QByteArray paintThumbnail(unsigned seed);

} // namespace orvane::demo
