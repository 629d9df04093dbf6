#pragma once

#include <QByteArray>
#include <QString>

namespace orvane::demo {

/// A cover, 1024 by 1024, made up from the seed, as "jpg", "png" or "webp". The same seed gives the same picture.
QByteArray paintCover(unsigned seed, const QString& extension);

} // namespace orvane::demo
