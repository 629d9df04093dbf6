#include "demo/service/Painter.h"

#include <QBuffer>
#include <QImage>
#include <QImageWriter>
#include <QPainter>
#include <QPainterPath>

#include <cmath>
#include <random>

namespace orvane::demo {
namespace {

constexpr int side = 1024;

/// Colours of one cover: the sky above and below, the sun, the land.
struct Palette
{
    QColor high;
    QColor low;
    QColor sun;
    QColor land;
};

Palette paletteOf(std::mt19937& dice)
{
    const auto hue = static_cast<int>(dice() % 360);
    return {.high = QColor::fromHsv(hue, 170, 60),
            .low = QColor::fromHsv((hue + 40) % 360, 150, 210),
            .sun = QColor::fromHsv((hue + 70) % 360, 90, 255),
            .land = QColor::fromHsv((hue + 200) % 360, 140, 60)};
}

void paintSky(QPainter& painter, const Palette& palette)
{
    QLinearGradient sky(0, 0, 0, side);
    sky.setColorAt(0, palette.high);
    sky.setColorAt(0.75, palette.low);
    painter.fillRect(0, 0, side, side, sky);
}

void paintSun(QPainter& painter, const Palette& palette, std::mt19937& dice)
{
    const QPointF centre(side * (0.3 + 0.4 * (dice() % 100) / 100.0), side * (0.35 + 0.15 * (dice() % 100) / 100.0));
    const double radius = side * (0.12 + 0.1 * (dice() % 100) / 100.0);
    for (int ring = 6; ring >= 0; --ring) {
        QColor glow = palette.sun;
        glow.setAlphaF(ring == 0 ? 1.0F : 0.09F);
        painter.setBrush(glow);
        painter.drawEllipse(centre, radius * (1 + 0.22 * ring), radius * (1 + 0.22 * ring));
    }
}

/// Waves of land, the nearer the darker.
void paintLand(QPainter& painter, const Palette& palette, std::mt19937& dice)
{
    constexpr int ridges = 5;
    for (int ridge = 0; ridge < ridges; ++ridge) {
        const double base = side * (0.58 + 0.09 * ridge);
        const double height = side * (0.10 - 0.012 * ridge);
        const double phase = (dice() % 628) / 100.0;
        QPainterPath path(QPointF(0, side));
        for (int x = 0; x <= side; x += 8) {
            const double at = x / static_cast<double>(side);
            path.lineTo(x, base + height *
                                      (std::sin(phase + at * (5 + ridge)) * 0.6 + std::sin(phase * 2 + at * 13) * 0.3));
        }
        path.lineTo(side, side);
        QColor colour = palette.land;
        colour.setHsv(colour.hue(), colour.saturation(), 150 - 28 * ridge);
        painter.setBrush(colour);
        painter.drawPath(path);
    }
}

QByteArray encoded(const QImage& image, const QString& extension)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, extension.toLatin1());
    writer.setQuality(extension == QLatin1StringView("png") ? 60 : 86);
    if (!writer.write(image))
        qFatal("A cover cannot be written as %s: %s", qPrintable(extension), qPrintable(writer.errorString()));
    return bytes;
}

} // namespace

QByteArray paintCover(unsigned seed, const QString& extension)
{
    std::mt19937 dice(seed);
    QImage image(side, side, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const Palette palette = paletteOf(dice);
    paintSky(painter, palette);
    paintSun(painter, palette, dice);
    paintLand(painter, palette, dice);
    painter.end();
    return encoded(image, extension);
}

} // namespace orvane::demo
