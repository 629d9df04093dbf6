#include "video/Artwork.h"

#include "platform/filesystem/FileError.h"
#include "platform/filesystem/ReadFile.h"

#include <QBuffer>
#include <QColorSpace>
#include <QImageReader>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <new>

namespace orvane::Video {

namespace {

constexpr qint64 mostBytes = qint64(64) * 1024 * 1024;
constexpr qint64 mostPixels = 64'000'000;

QImage decoded(QByteArray& bytes)
{
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(false);
    const QSize size = reader.size();
    if (size.isEmpty() || qint64(size.width()) * size.height() > mostPixels)
        return {};
    return reader.read();
}

QImage inStandardColours(QImage image)
{
    if (image.colorSpace().isValid() && image.colorSpace() != QColorSpace(QColorSpace::SRgb))
        image.convertToColorSpace(QColorSpace::SRgb);
    return image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

} // namespace

QImage readArtwork(const QString& path)
{
    try {
        QByteArray bytes = readRegularFile(path, mostBytes);
        return inStandardColours(decoded(bytes));
    } catch (const FileError&) {
        return {};
    } catch (const std::bad_alloc&) {
        return {};
    }
}

QImage filling(const QImage& source, QSize size)
{
    if (source.isNull() || size.isEmpty())
        return {};
    const double scale = std::max(double(size.width()) / source.width(), double(size.height()) / source.height());
    // Only the part that is seen is scaled: of a long strip the rest would not fit into memory.
    const QSizeF seen(size.width() / scale, size.height() / scale);
    const QRect part =
        QRectF(QPointF((source.width() - seen.width()) / 2.0, (source.height() - seen.height()) / 2.0), seen)
            .toAlignedRect()
            .intersected(source.rect());
    const QSize whole(std::max(int(std::lround(part.width() * scale)), size.width()),
                      std::max(int(std::lround(part.height() * scale)), size.height()));
    const QImage scaled = source.copy(part).scaled(whole, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    if (scaled.isNull())
        return {};
    return scaled.copy(QRect(QPoint((whole.width() - size.width()) / 2, (whole.height() - size.height()) / 2), size));
}

} // namespace orvane::Video
