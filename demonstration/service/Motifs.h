#pragma once

#include <QColor>

#include <array>
#include <random>

class QPainter;

namespace orvane::demo {

/// The colours of a cover, from the darkest to the lightest.
using Palette = std::array<QColor, 5>;

/// Rolls of a cover.
class Brush
{
public:
    explicit Brush(unsigned seed)
        : engine_(seed * 2654435761U)
    {
    }

    /// From 0 up to `count`, without it.
    int below(int count) { return static_cast<int>(engine_() % static_cast<unsigned>(count)); }

    double between(double low, double high) { return low + (high - low) * engine_() / 4294967296.0; }

private:
    std::mt19937 engine_;
};

Palette mixPalette(Brush& brush);

/// One of the motifs, on a square of this side.
void paintMotif(QPainter& painter, int side, const Palette& palette, Brush& brush);

} // namespace orvane::demo
