#include "demonstration/service/Painter.h"

#include "demonstration/service/Motifs.h"

#include <QBuffer>
#include <QImage>
#include <QImageWriter>
#include <QPainter>

namespace orvane::demo {

using namespace Qt::Literals::StringLiterals;

namespace {

QImage paint(unsigned seed, int side)
{
    Brush brush(seed);
    const Palette palette = mixPalette(brush);
    QImage image(side, side, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    paintMotif(painter, side, palette, brush);
    return image;
}

QByteArray encoded(const QImage& image, const QString& extension)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, extension.toLatin1());
    writer.setQuality(extension == u"png" ? 60 : 86);
    if (!writer.write(image))
        qFatal("A cover cannot be written as %s: %s", qPrintable(extension), qPrintable(writer.errorString()));
    return bytes;
}

} // namespace

QByteArray paintCover(unsigned seed, const QString& extension)
{
    return encoded(paint(seed, 1024), extension);
}

QByteArray paintThumbnail(unsigned seed)
{
    return encoded(paint(seed, 256), u"jpg"_s);
}

} // namespace orvane::demo
