#include "tests/video/PlainPainter.h"

#include "video/Artwork.h"
#include "video/Text.h"

#include <QLinearGradient>
#include <QPainterPath>
#include <QRadialGradient>

#include <algorithm>
#include <cmath>

namespace orvane::test {

using namespace Qt::Literals::StringLiterals;
using Video::Look;
using Video::Scene;

namespace {

struct Canvas
{
    QPainter& context;
    double w;
    double h;

    /// The context's y of a height above the bottom edge.
    double y(double up) const { return h - up; }

    /// A rectangle by its left and bottom edges.
    QRectF rectangle(double left, double bottom, double width, double height) const
    {
        return {left, h - bottom - height, width, height};
    }
};

double energyOf(std::span<const float> spectrum)
{
    double sum = 0.0;
    for (std::size_t bin = 0; bin < spectrum.size() / 3; ++bin)
        sum += double(spectrum[bin]);
    return sum / double(spectrum.size() / 3);
}

void paintBackdrop(const Canvas& canvas, std::span<const float> spectrum)
{
    const int index = std::clamp(int(energyOf(spectrum) * 8.0), 0, 7);
    canvas.context.fillRect(QRectF(0, 0, canvas.w, canvas.h), QColor(8, 9, 14));
    QRadialGradient glow(0.5 * canvas.w, canvas.y(0.3 * canvas.h), 0.85 * canvas.w);
    glow.setInterpolationMode(QGradient::ComponentInterpolation);
    QColor orange(242, 102, 34);
    orange.setAlphaF(float(0.1 + index * 0.3 / 7.0));
    glow.setColorAt(0.0, orange);
    glow.setColorAt(1.0, QColor(0, 0, 0, 0));
    canvas.context.fillRect(QRectF(0, 0, canvas.w, canvas.h), glow);
}

void paintArtwork(const Canvas& canvas, const QImage& artwork)
{
    const double side = 0.52 * std::min(canvas.w, canvas.h);
    const QRectF square = canvas.rectangle((canvas.w - side) / 2.0, 0.52 * canvas.h, side, side);
    QPainterPath path;
    path.addRoundedRect(square, 0.06 * side, 0.06 * side);
    if (artwork.isNull()) {
        canvas.context.fillPath(path, QColor(17, 20, 30));
    } else {
        QBrush brush(Video::filling(artwork, square.toAlignedRect().size()));
        brush.setTransform(QTransform::fromTranslate(std::floor(square.left()), std::floor(square.top())));
        canvas.context.fillPath(path, brush);
    }
    QColor white(Qt::white);
    white.setAlphaF(0.1F);
    canvas.context.strokePath(path, QPen(white, std::max(canvas.w / 540.0, 1.0)));
}

void paintLine(const Canvas& canvas, const QString& text, double size, QFont::Weight weight, const QColor& colour,
               double baseline, double most)
{
    const QPaintDevice& device = *canvas.context.device();
    const QFont font = Video::sansSerif(size, weight, device);
    QString line = Video::oneLine(text);
    // Step by step, as the rule reads.
    while (Video::widthOf(line, font, device) > most) {
        const std::vector<qsizetype> ends = Video::characterEnds(line);
        if (ends.size() < 5)
            break;
        line = line.first(ends[ends.size() - 3]) + u'…';
    }
    canvas.context.setFont(font);
    canvas.context.setPen(colour);
    canvas.context.setLayoutDirection(Qt::LayoutDirectionAuto);
    canvas.context.drawText(QPointF(0.5 * canvas.w - Video::widthOf(line, font, device) / 2.0, canvas.y(baseline)),
                            line);
}

void paintPill(const Canvas& canvas, const QString& site)
{
    const double p = 0.03 * canvas.h;
    const double m = 0.55 * p;
    const double d = 0.44 * p;
    const double g = 0.6 * m;
    const QPaintDevice& device = *canvas.context.device();
    const QFont font = Video::sansSerif(0.52 * p, QFont::Bold, device);
    const QString name = site.section(u'.', 0, 0);
    const QString suffix = site.sliced(name.size());
    const double nameWidth = Video::widthOf(name, font, device);
    const double width = m + d + g + nameWidth + Video::widthOf(suffix, font, device) + m;
    const QRectF pill = canvas.rectangle((canvas.w - width) / 2.0, 0.045 * canvas.h, width, p);
    QColor fill(12, 16, 26);
    fill.setAlphaF(0.82F);
    QColor white(Qt::white);
    white.setAlphaF(0.1F);
    QPainterPath path;
    path.addRoundedRect(pill, p / 2.0, p / 2.0);
    canvas.context.fillPath(path, fill);
    canvas.context.strokePath(path, QPen(white, std::max(canvas.w / 900.0, 1.0)));
    QPainterPath ring;
    ring.addEllipse(QRectF(pill.left() + m, pill.center().y() - d / 2.0, d, d));
    canvas.context.fillPath(ring, QColor(255, 122, 24));
    QPainterPath hole;
    hole.addEllipse(QRectF(pill.left() + m + 0.3 * d, pill.center().y() - 0.2 * d, 0.4 * d, 0.4 * d));
    canvas.context.fillPath(hole, QColor(12, 16, 26));
    canvas.context.setFont(font);
    const QPointF start(pill.left() + m + d + g, pill.center().y() + 0.36 * 0.52 * p);
    canvas.context.setPen(QColor(243, 244, 246));
    canvas.context.drawText(start, name);
    canvas.context.setPen(QColor(255, 122, 24));
    canvas.context.drawText(start + QPointF(nameWidth, 0.0), suffix);
}

/// How much of the pixel at (column, row) a rectangle with round corners holds, from a hundred cuts through it.
double partInside(const QRectF& bar, double radius, int column, int row)
{
    constexpr int cuts = 100;
    const double from = std::max(bar.left(), double(column));
    const double breadth = (std::min(bar.right(), column + 1.0) - from) / cuts;
    double part = 0.0;
    for (int cut = 0; cut < cuts; ++cut) {
        const double x = from + (cut + 0.5) * breadth;
        const double beside = std::max({0.0, bar.left() + radius - x, x - (bar.right() - radius)});
        const double inset = radius - std::sqrt(std::max(radius * radius - beside * beside, 0.0));
        const double top = std::max(bar.top() + inset, double(row));
        const double bottom = std::min(bar.bottom() - inset, row + 1.0);
        part += std::max(bottom - top, 0.0) * breadth;
    }
    return part;
}

void paintBars(QImage& image, std::span<const float> spectrum, int bars)
{
    const double left = 0.08 * image.width();
    const double width = 0.84 * image.width();
    const double height = 0.16 * image.height();
    const double bottom = image.height() - 0.12 * image.height();
    const double gap = 0.32 * width / bars;
    const double b = (width - gap * (bars - 1)) / bars;
    const auto bins = double(spectrum.size());
    for (int i = 0; i < bars; ++i) {
        const double bin = std::min(bins - 1.0, std::pow(0.72 * bins, double(i) / std::max(bars - 1, 1)));
        const double high = std::max(height * double(spectrum[std::size_t(bin)]), 0.035 * height);
        const QRectF bar(left + i * (b + gap), bottom - high, b, high);
        const double radius = std::min(b, high) / 2.0;
        for (int row = int(bar.top()); row < bar.bottom(); ++row) {
            const double place = std::clamp((row + 0.5 - (bottom - height)) / height, 0.0, 1.0);
            const bool isCap = row < bar.top() + radius + 1.0 || row + 1.0 > bar.bottom() - radius - 1.0;
            for (int column = int(bar.left()); column < bar.right(); ++column) {
                const double across = std::min(bar.right(), column + 1.0) - std::max(bar.left(), double(column));
                const double part = isCap ? partInside(bar, radius, column, row) : across;
                const QRgb below = image.pixel(column, row);
                const auto mixed = [&](int under, double top, double end) {
                    return int(std::lround(under + part * (top + place * (end - top) - under)));
                };
                image.setPixel(
                    column, row,
                    qRgb(mixed(qRed(below), 255, 175), mixed(qGreen(below), 122, 0), mixed(qBlue(below), 24, 45)));
            }
        }
    }
}

} // namespace

QImage plainFrame(QSize size, std::span<const float> spectrum, const Scene& scene, const Look& look,
                  const QString& site)
{
    QImage image(size, QImage::Format_RGB32);
    QPainter context(&image);
    context.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    const Canvas canvas{context, double(size.width()), double(size.height())};
    paintBackdrop(canvas, spectrum);
    if (look.showArtwork)
        paintArtwork(canvas, scene.artwork);
    const double foot = 0.52 * canvas.h;
    if (!scene.title.isEmpty())
        paintLine(canvas, scene.title, 0.062 * canvas.w, QFont::Bold, QColor(243, 244, 246), foot - 0.055 * canvas.h,
                  0.86 * canvas.w);
    if (!scene.artist.isEmpty())
        paintLine(canvas, scene.artist, 0.036 * canvas.w, QFont::Medium, QColor(156, 163, 175), foot - 0.095 * canvas.h,
                  0.86 * canvas.w);
    if (look.showWatermark)
        paintPill(canvas, site);
    paintBars(image, spectrum, look.bars);
    QColor faint(Qt::white);
    faint.setAlphaF(0.3F);
    paintLine(canvas, u"ORVANE"_s, 0.022 * canvas.w, QFont::ExtraBold, faint, 0.055 * canvas.h, canvas.w);
    return image;
}

std::array<std::vector<double>, 3> plainPlanes(const QImage& image)
{
    std::array<std::vector<double>, 3> planes;
    const auto add = [](std::vector<double>& plane, double scale, double middle, double value) {
        plane.push_back(middle + scale * value);
    };
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            const double luma = 0.2126 * qRed(pixel) + 0.7152 * qGreen(pixel) + 0.0722 * qBlue(pixel);
            add(planes[0], 219.0, 16.0, luma / 255.0);
        }
    }
    for (int y = 0; y < image.height(); y += 2) {
        for (int x = 0; x < image.width(); x += 2) {
            double red = 0.0;
            double green = 0.0;
            double blue = 0.0;
            for (const QPoint place : {QPoint(x, y), QPoint(x + 1, y), QPoint(x, y + 1), QPoint(x + 1, y + 1)}) {
                red += qRed(image.pixel(place)) / 1020.0;
                green += qGreen(image.pixel(place)) / 1020.0;
                blue += qBlue(image.pixel(place)) / 1020.0;
            }
            const double luma = 0.2126 * red + 0.7152 * green + 0.0722 * blue;
            add(planes[1], 224.0, 128.0, (blue - luma) / 1.8556);
            add(planes[2], 224.0, 128.0, (red - luma) / 1.5748);
        }
    }
    return planes;
}

QImage sunset(int side)
{
    QImage image(side, side, QImage::Format_RGB32);
    QPainter context(&image);
    context.setRenderHint(QPainter::Antialiasing);
    QLinearGradient sky(0, 0, 0, side);
    sky.setColorAt(0.0, QColor(38, 24, 74));
    sky.setColorAt(0.55, QColor(236, 112, 74));
    sky.setColorAt(0.62, QColor(250, 196, 110));
    sky.setColorAt(0.63, QColor(20, 40, 80));
    sky.setColorAt(1.0, QColor(8, 14, 32));
    context.fillRect(image.rect(), sky);
    context.setPen(Qt::NoPen);
    context.setBrush(QColor(255, 226, 150));
    context.drawEllipse(QPointF(0.5 * side, 0.55 * side), 0.12 * side, 0.12 * side);
    for (int wave = 0; wave < 9; ++wave) {
        context.setBrush(QColor(255, 200, 130, 130 - wave * 12));
        context.drawRect(QRectF((0.42 - 0.012 * wave) * side, (0.66 + wave * 0.036) * side,
                                (0.16 + 0.024 * wave) * side, 0.008 * side));
    }
    return image;
}

std::vector<float> movingSpectrum(int frame)
{
    std::vector<float> spectrum(512);
    for (std::size_t bin = 0; bin < spectrum.size(); ++bin) {
        const double fall = std::exp(-double(bin) / 300.0);
        const double beat = 0.55 + 0.45 * std::sin(frame * 0.21) * std::cos(frame * 0.013);
        const double ripple = 0.75 + 0.25 * std::sin(double(bin) * 0.37 + frame * 0.11);
        spectrum[bin] = float(std::clamp(fall * beat * ripple, 0.0, 1.0));
    }
    return spectrum;
}

} // namespace orvane::test
