#include "video/FramePainter.h"

#include "video/Artwork.h"
#include "video/Palette.h"
#include "video/Text.h"
#include "video/arithmetic/Spectrum.h"

#include <QPainterPath>
#include <QRadialGradient>
#include <QRgba64>

#include <algorithm>
#include <cmath>

namespace orvane::Video {

using namespace Qt::Literals::StringLiterals;

namespace {

const QColor glass(12, 16, 26);
const QColor hairline(255, 255, 255, 26);

QColor withAlpha(const QColor& colour, double alpha)
{
    QColor changed = colour;
    changed.setAlphaF(float(alpha));
    return changed;
}

/// The place of a height above the frame's bottom edge.
double fromBottom(QSize size, double height)
{
    return size.height() - height;
}

QImage makeBackdrop(QSize size, int level)
{
    QImage image(size, QImage::Format_RGB32);
    if (image.isNull())
        return image;
    image.fill(Palette::background);
    const double alpha = 0.1 + level * 0.3 / (FramePainter::levelCount - 1);
    QRadialGradient glow(QPointF(0.5 * size.width(), fromBottom(size, 0.3 * size.height())), 0.85 * size.width());
    // Colour and alpha each fade by themselves, so that the glow sinks into the dark.
    glow.setInterpolationMode(QGradient::ComponentInterpolation);
    glow.setColorAt(0.0, withAlpha(QColor(242, 102, 34), alpha));
    glow.setColorAt(1.0, QColor(0, 0, 0, 0));
    QPainter(&image).fillRect(image.rect(), glow);
    return image;
}

std::vector<QImage> makeBackdrops(QSize size)
{
    std::vector<QImage> images;
    for (int level = 0; level < FramePainter::levelCount; ++level) {
        QImage image = makeBackdrop(size, level);
        if (image.isNull())
            break;
        images.push_back(std::move(image));
    }
    return images;
}

/// The square of the artwork; in the wider frames its top lies above the frame's.
QRectF artworkSquare(QSize size)
{
    const double side = 0.52 * std::min(size.width(), size.height());
    const double bottom = fromBottom(size, 0.52 * size.height());
    return {(size.width() - side) / 2.0, bottom - side, side, side};
}

void drawTitles(QPainter& context, QSize size, const Scene& scene)
{
    const double width = 0.86 * size.width();
    const double middle = 0.5 * size.width();
    const QPaintDevice& device = *context.device();
    if (!scene.title.isEmpty()) {
        drawCentred(context, scene.title, sansSerif(0.062 * size.width(), QFont::Bold, device),
                    QColor::fromRgb(Palette::text), {middle, fromBottom(size, (0.52 - 0.055) * size.height())}, width);
    }
    if (!scene.artist.isEmpty()) {
        drawCentred(context, scene.artist, sansSerif(0.036 * size.width(), QFont::Medium, device),
                    QColor::fromRgb(Palette::muted), {middle, fromBottom(size, (0.52 - 0.095) * size.height())}, width);
    }
}

void drawWordmark(QPainter& context, QSize size)
{
    drawCentred(context, u"ORVANE"_s, sansSerif(0.022 * size.width(), QFont::ExtraBold, *context.device()),
                QColor(255, 255, 255, 77), {0.5 * size.width(), fromBottom(size, 0.055 * size.height())}, size.width());
}

QRgba64 translucent(QRgb colour, float coverage)
{
    const float weight = std::clamp(coverage, 0.0F, 1.0F) * 257.0F;
    const auto part = [weight](int component) { return quint16(std::lround(float(component) * weight)); };
    return qRgba64(part(qRed(colour)), part(qGreen(colour)), part(qBlue(colour)), part(255));
}

void prepare(QPainter& context)
{
    context.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
    context.setBrush(Qt::NoBrush);
    context.setPen(Qt::NoPen);
}

} // namespace

FramePainter::FramePainter(QString site)
{
    const qsizetype dot = site.indexOf(u'.');
    siteName_ = dot < 0 ? site : site.first(dot);
    siteSuffix_ = dot < 0 ? QString() : site.sliced(dot);
}

int FramePainter::levelOf(std::span<const float> spectrum)
{
    return std::clamp(int(energy(spectrum) * float(levelCount)), 0, levelCount - 1);
}

BarRow FramePainter::barRow(QSize size, int bars)
{
    return {size.width(), size.height(), bars, {.top = Palette::accentTop, .end = Palette::accentEnd}};
}

void FramePainter::drawFrame(QPainter& context, QSize size, std::span<const float> spectrum, const Scene& scene,
                             const Look& look)
{
    // The wordmark is the last layer and lies below the bars, so that it can be painted before them.
    drawStill(context, size, levelOf(spectrum), scene, look);
    drawBars(context, size, spectrum, look.bars);
}

void FramePainter::drawStill(QPainter& context, QSize size, int level, const Scene& scene, const Look& look)
{
    context.save();
    prepare(context);
    drawBackdrop(context, size, level);
    if (look.showArtwork)
        drawArtwork(context, size, scene.artwork);
    drawTitles(context, size, scene);
    if (look.showWatermark)
        drawWatermark(context, size);
    drawWordmark(context, size);
    context.restore();
}

void FramePainter::drawBackdrop(QPainter& context, QSize size, int level)
{
    if (backdropCache_.size != size || backdropCache_.images.empty())
        backdropCache_ = {size, makeBackdrops(size)};
    if (backdropCache_.images.empty())
        context.fillRect(QRect(QPoint(), size), QColor::fromRgb(Palette::background));
    else
        context.drawImage(0, 0, backdropCache_.images[std::min(std::size_t(level), backdropCache_.images.size() - 1)]);
}

QImage FramePainter::scaledArtwork(const QImage& source, QSize size)
{
    if (artCache_.image.isNull() || artCache_.size != size || artCache_.source != source.cacheKey())
        artCache_ = {size, source.cacheKey(), filling(source, size)};
    return artCache_.image;
}

void FramePainter::drawArtwork(QPainter& context, QSize size, const QImage& artwork)
{
    const QRectF square = artworkSquare(size);
    QPainterPath path;
    path.addRoundedRect(square, 0.06 * square.width(), 0.06 * square.width());
    // The picture is made for whole pixels, so that none of them is blurred, and the path cuts its edge.
    const QRect pixels = square.toAlignedRect();
    QImage scaled = scaledArtwork(artwork, pixels.size());
    if (scaled.isNull()) {
        context.fillPath(path, QColor(17, 20, 30));
    } else {
        QBrush brush(scaled);
        brush.setTransform(QTransform::fromTranslate(pixels.left(), pixels.top()));
        context.fillPath(path, brush);
    }
    context.strokePath(path, QPen(hairline, std::max(size.width() / 540.0, 1.0)));
}

void FramePainter::drawWatermark(QPainter& context, QSize size) const
{
    const double height = 0.03 * size.height();
    const double margin = 0.55 * height;
    const double dot = 0.44 * height;
    const double gap = 0.6 * margin;
    const double fontSize = 0.52 * height;
    const QPaintDevice& device = *context.device();
    const QFont font = sansSerif(fontSize, QFont::Bold, device);
    const double nameWidth = widthOf(siteName_, font, device);
    const double width = margin + dot + gap + nameWidth + widthOf(siteSuffix_, font, device) + margin;
    const QRectF pill((size.width() - width) / 2.0, fromBottom(size, 0.045 * size.height()) - height, width, height);

    context.setPen(QPen(hairline, std::max(size.width() / 900.0, 1.0)));
    QPainterPath path;
    path.addRoundedRect(pill, 0.5 * height, 0.5 * height);
    context.fillPath(path, withAlpha(glass, 0.82));
    context.strokePath(path, context.pen());

    const QRectF ring(pill.left() + margin, pill.center().y() - dot / 2.0, dot, dot);
    const double inset = 0.3 * dot;
    context.setPen(Qt::NoPen);
    context.setBrush(QColor::fromRgb(Palette::accentTop));
    context.drawEllipse(ring);
    context.setBrush(glass);
    context.drawEllipse(ring.adjusted(inset, inset, -inset, -inset));

    const QPointF start(ring.right() + gap, pill.center().y() + 0.36 * fontSize);
    drawLine(context, siteName_, font, QColor::fromRgb(Palette::text), start);
    drawLine(context, siteSuffix_, font, QColor::fromRgb(Palette::accentTop), start + QPointF(nameWidth, 0.0));
}

void FramePainter::drawBars(QPainter& context, QSize size, std::span<const float> spectrum, int bars)
{
    const BarRow row = barRow(size, bars);
    if (row.count() == 0)
        return;
    std::vector<float> values(std::size_t(row.count()));
    valuesOfBars(spectrum, values);
    BarCoverage coverage(row);
    for (int bar = 0; bar < row.count(); ++bar)
        coverage.set(bar, row.pill(bar, values[std::size_t(bar)]));
    const PixelArea& area = row.area();
    // With 16 bits, so that mixing with what is there rounds once.
    QImage layer(area.width, area.height, QImage::Format_RGBA64_Premultiplied);
    layer.fill(0);
    for (int line = 0; line < area.height; ++line) {
        const std::span<const float> covered = coverage.line(area.top + line, 0, row.count());
        auto* pixels = reinterpret_cast<QRgba64*>(layer.scanLine(line)) + coverage.firstColumn(0) - area.left;
        const QRgb colour = row.colour(area.top + line);
        std::transform(covered.begin(), covered.end(), pixels,
                       [colour](float part) { return translucent(colour, part); });
    }
    context.drawImage(area.left, area.top, layer);
}

} // namespace orvane::Video
