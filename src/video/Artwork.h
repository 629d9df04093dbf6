#pragma once

#include <QImage>
#include <QString>

namespace orvane::Video {

/// The first picture of the file at `path`, in sRGB. Null where the file holds none, or one of more than 64 million
/// pixels.
QImage readArtwork(const QString& path);

/// `source` enlarged or reduced so that it fills `size`, in the middle: what is left over on two sides is cut off. Null
/// where there is nothing to scale, or no memory.
QImage filling(const QImage& source, QSize size);

} // namespace orvane::Video
