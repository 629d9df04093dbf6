#include "demonstration/service/Motifs.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace orvane::demo {
namespace {

constexpr double turn = 2 * std::numbers::pi;

QColor faded(QColor colour, double opacity)
{
    colour.setAlphaF(static_cast<float>(opacity));
    return colour;
}

QColor between(const QColor& one, const QColor& other, double share)
{
    const auto mix = [share](float from, float to) { return from + static_cast<float>(share) * (to - from); };
    return QColor::fromRgbF(mix(one.redF(), other.redF()), mix(one.greenF(), other.greenF()),
                            mix(one.blueF(), other.blueF()));
}

void fillWithGradient(QPainter& painter, int side, const QColor& above, const QColor& middle, const QColor& below)
{
    QLinearGradient sky(0, 0, 0, side);
    sky.setColorAt(0, above);
    sky.setColorAt(0.55, middle);
    sky.setColorAt(1, below);
    painter.fillRect(0, 0, side, side, sky);
}

void glow(QPainter& painter, QPointF centre, double radius, const QColor& colour, double opacity)
{
    QRadialGradient light(centre, radius);
    light.setColorAt(0, faded(colour, opacity));
    light.setColorAt(0.5, faded(colour, opacity * 0.35));
    light.setColorAt(1, faded(colour, 0));
    painter.setBrush(light);
    painter.drawEllipse(centre, radius, radius);
}

/// A wavy line across the square, closed along the lower edge.
QPainterPath ridge(int side, double base, double height, Brush& brush)
{
    const double phase = brush.between(0, turn);
    const double waves = brush.between(3, 7);
    QPainterPath path(QPointF(0, side));
    for (int x = 0; x <= side + 8; x += 8) {
        const double at = x / static_cast<double>(side);
        path.lineTo(x, base + height * (0.6 * std::sin(phase + at * waves) + 0.3 * std::sin(2 * phase + at * 13) +
                                        0.1 * std::sin(3 * phase + at * 29)));
    }
    path.lineTo(side, side);
    return path;
}

/// Hills in the haze under a sun.
void paintHills(QPainter& painter, int side, const Palette& palette, Brush& brush)
{
    fillWithGradient(painter, side, palette[0], palette[2], palette[4]);
    const QPointF sun(side * brush.between(0.28, 0.72), side * brush.between(0.34, 0.46));
    const double radius = side * brush.between(0.1, 0.16);
    glow(painter, sun, 3.4 * radius, palette[4], 0.7);
    painter.setBrush(palette[4]);
    painter.drawEllipse(sun, radius, radius);
    constexpr int ridges = 6;
    for (int number = 0; number < ridges; ++number) {
        const double depth = (number + 1.0) / ridges;
        painter.setBrush(between(palette[3], palette[0], depth));
        painter.drawPath(ridge(side, side * (0.52 + 0.075 * number), side * 0.07, brush));
    }
}

/// A planet's rings with bodies on them.
void paintOrbits(QPainter& painter, int side, const Palette& palette, Brush& brush)
{
    painter.fillRect(0, 0, side, side, palette[0]);
    const QPointF centre(side * brush.between(0.35, 0.65), side * brush.between(0.35, 0.65));
    glow(painter, centre, side * 0.8, palette[1], 0.9);
    for (int number = 9; number >= 1; --number) {
        const double radius = side * 0.065 * (number + 0.6);
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(faded(palette[2 + static_cast<std::size_t>(number % 3)], 0.65), side * 0.004));
        painter.drawEllipse(centre, radius, radius);
        painter.setPen(Qt::NoPen);
        const double angle = brush.between(0, turn);
        const double body = side * brush.between(0.008, 0.03);
        painter.setBrush(palette[2 + static_cast<std::size_t>(brush.below(3))]);
        painter.drawEllipse(centre + radius * QPointF(std::cos(angle), std::sin(angle)), body, body);
    }
    QRadialGradient core(centre - QPointF(side * 0.03, side * 0.03), side * 0.13);
    core.setColorAt(0, palette[4]);
    core.setColorAt(1, palette[3]);
    painter.setBrush(core);
    painter.drawEllipse(centre, side * 0.085, side * 0.085);
}

/// A quarter of a disc in one corner of a tile, turned by quarters.
void paintQuarter(QPainter& painter, QPointF corner, double size, int quarters)
{
    painter.save();
    painter.translate(corner + QPointF(size / 2, size / 2));
    painter.rotate(90.0 * quarters);
    painter.drawPie(QRectF(-size / 2 - size, -size / 2 - size, 2 * size, 2 * size), 0, -90 * 16);
    painter.restore();
}

/// Tiles with arcs that meet or do not.
void paintTiles(QPainter& painter, int side, const Palette& palette, Brush& brush)
{
    const int count = 4 + brush.below(2);
    const double size = side / static_cast<double>(count);
    for (int tile = 0; tile < count * count; ++tile) {
        const QPointF corner(size * (tile % count), size * (tile / count));
        const int ground = brush.below(5);
        painter.fillRect(QRectF(corner, QSizeF(size + 1, size + 1)), palette[static_cast<std::size_t>(ground)]);
        painter.setBrush(palette[static_cast<std::size_t>((ground + 1 + brush.below(4)) % 5)]);
        const int shape = brush.below(4);
        if (shape == 0)
            painter.drawEllipse(corner + QPointF(size / 2, size / 2), size * 0.34, size * 0.34);
        else
            paintQuarter(painter, corner, size, brush.below(4));
        if (shape == 2) {
            painter.setBrush(palette[static_cast<std::size_t>(ground)]);
            painter.drawEllipse(corner + QPointF(size / 2, size / 2), size * 0.12, size * 0.12);
        }
    }
}

/// Threads that swing together like a cloth.
void paintSilk(QPainter& painter, int side, const Palette& palette, Brush& brush)
{
    fillWithGradient(painter, side, palette[0], palette[1], palette[0]);
    const double phase = brush.between(0, turn);
    const double twist = brush.between(1.2, 3.2);
    const double middle = side * brush.between(0.42, 0.58);
    painter.setBrush(Qt::NoBrush);
    constexpr int threads = 110;
    for (int number = 0; number < threads; ++number) {
        const double share = number / static_cast<double>(threads - 1);
        QPainterPath thread;
        for (int x = -16; x <= side + 16; x += 16) {
            const double at = x / static_cast<double>(side);
            const double spread = side * 0.3 * std::sin(phase + at * twist * 2 + share * 1.6);
            const double y = middle + (share - 0.5) * spread * 2.2 + side * 0.16 * std::sin(2 * phase + at * 4 + share);
            if (x < 0)
                thread.moveTo(x, y);
            else
                thread.lineTo(x, y);
        }
        painter.setPen(QPen(faded(between(palette[2], palette[4], std::abs(2 * share - 1)), 0.5), side * 0.0022));
        painter.drawPath(thread);
    }
    painter.setPen(Qt::NoPen);
}

/// Lights out of focus.
void paintLights(QPainter& painter, int side, const Palette& palette, Brush& brush)
{
    painter.fillRect(0, 0, side, side, palette[0]);
    for (int number = 0; number < 6; ++number) {
        const QPointF place(side * brush.between(0, 1), side * brush.between(0, 1));
        glow(painter, place, side * brush.between(0.35, 0.7), palette[1 + static_cast<std::size_t>(number % 4)], 0.8);
    }
    for (int number = 0; number < 16; ++number) {
        const QPointF place(side * brush.between(0, 1), side * brush.between(0.1, 0.95));
        const double radius = side * brush.between(0.015, 0.085);
        const QColor colour = palette[2 + static_cast<std::size_t>(number % 3)];
        painter.setBrush(faded(colour, brush.between(0.12, 0.5)));
        painter.setPen(QPen(faded(palette[4], 0.35), side * 0.002));
        painter.drawEllipse(place, radius, radius);
    }
    painter.setPen(Qt::NoPen);
}

/// The moon's disc cut into strips above water.
void paintTide(QPainter& painter, int side, const Palette& palette, Brush& brush)
{
    fillWithGradient(painter, side, palette[0], palette[1], palette[2]);
    const QPointF centre(side * 0.5, side * 0.47);
    const double radius = side * brush.between(0.27, 0.33);
    glow(painter, centre, 1.8 * radius, palette[3], 0.55);
    QLinearGradient face(0, centre.y() - radius, 0, centre.y() + radius);
    face.setColorAt(0, palette[4]);
    face.setColorAt(1, palette[3]);
    const int strips = 9 + brush.below(6);
    for (int number = 0; number < strips; ++number) {
        const double top = centre.y() - radius + 2 * radius * number / strips;
        const double gap = number < strips / 3 ? 0 : radius * 0.012 * (number - strips / 3);
        painter.save();
        painter.setClipRect(QRectF(0, top, side, 2 * radius / strips - gap + (gap == 0 ? 1 : 0)));
        painter.setBrush(face);
        painter.drawEllipse(centre, radius, radius);
        painter.restore();
    }
    for (int number = 0; number < 3; ++number) {
        painter.setBrush(faded(between(palette[1], palette[0], (number + 1) / 3.0), 0.92));
        painter.drawPath(ridge(side, side * (0.76 + 0.08 * number), side * 0.022, brush));
    }
}

using Motif = void (*)(QPainter&, int, const Palette&, Brush&);
constexpr std::array<Motif, 6> motifs{paintHills, paintOrbits, paintTiles, paintSilk, paintLights, paintTide};

} // namespace

Palette mixPalette(Brush& brush)
{
    static constexpr QRgb palettes[][5] = {
        {0x14122b, 0x3c2a63, 0x9b3f7a, 0xf0725c, 0xffd9a0}, {0x06202a, 0x0f4c5c, 0x2a9d8f, 0xe9c46a, 0xfff3d6},
        {0x1a1420, 0x5b2333, 0xb23a48, 0xfcb97d, 0xfdf0d5}, {0x0b132b, 0x1c3a6b, 0x3f7cac, 0x95b8d1, 0xf4f1de},
        {0x10201a, 0x1f4d3a, 0x5a8f5c, 0xc9d66b, 0xf9f5cf}, {0x1b1030, 0x43218a, 0x8a4fff, 0x5ce1e6, 0xf1faee},
        {0x231815, 0x6b3e26, 0xc8793e, 0xeab676, 0xfbeedb}, {0x0f1021, 0x2b2d5b, 0xd1495b, 0xedae49, 0xfbf3e4},
        {0x07151d, 0x15425a, 0xe4572e, 0xf3a712, 0xf7ecd0}, {0x161a1d, 0x660f3b, 0xba1f5c, 0xf48498, 0xffe5ec},
    };
    Palette palette;
    const int chosen = brush.below(static_cast<int>(std::size(palettes)));
    std::transform(std::begin(palettes[chosen]), std::end(palettes[chosen]), palette.begin(),
                   [](QRgb rgb) { return QColor(rgb); });
    return palette;
}

void paintMotif(QPainter& painter, int side, const Palette& palette, Brush& brush)
{
    motifs[static_cast<std::size_t>(brush.below(static_cast<int>(motifs.size())))](painter, side, palette, brush);
}

} // namespace orvane::demo
