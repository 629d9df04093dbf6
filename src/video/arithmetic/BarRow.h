#pragma once

#include "video/arithmetic/PillCoverage.h"

#include <cstdint>
#include <span>
#include <vector>

namespace orvane::Video {

/// Whole pixels, y downwards.
struct PixelArea
{
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;

    bool operator==(const PixelArea&) const = default;
};

/// The colours at the top and at the end of the row of bars.
struct Gradient
{
    std::uint32_t top = 0;
    std::uint32_t end = 0;
};

/// The row of bars of a frame: pills that grow upwards from a fixed base, in one gradient over the whole row's height.
/// Knows where each bar stands for a value and what colour its pixels have. Colours are 0xAARRGGBB.
class BarRow
{
public:
    /// For a frame of that many pixels. `bars` below 1 is none.
    BarRow(int frameWidth, int frameHeight, int bars, Gradient gradient);

    int count() const { return count_; }

    /// The pixels that bars may touch.
    const PixelArea& area() const { return area_; }

    /// Bar `bar` at `value` from 0 to 1, in pixels of the frame. Silence leaves a dot.
    Pill pill(int bar, float value) const;

    /// Whether no two bars touch the same pixel.
    bool isApart() const { return gap_ >= 1.0; }

    /// The gradient's colour in a row of pixels of the frame, opaque.
    std::uint32_t colour(int row) const;

private:
    int count_;
    Gradient gradient_;
    double left_;
    double top_;
    double width_;
    double height_;
    double gap_;
    double barWidth_;
    PixelArea area_;
};

/// The value that each of `bars` shows of `spectrum`.
void valuesOfBars(std::span<const float> spectrum, std::span<float> bars);

/// `colour` over `background`, both opaque, at `coverage` from 0 to 1, which is held to that range.
std::uint32_t blended(std::uint32_t background, std::uint32_t colour, float coverage);

/// How much of each pixel the bars of a row cover, line by line. One thread at a time.
class BarCoverage
{
public:
    explicit BarCoverage(const BarRow& row);

    /// Puts bar `bar` there.
    void set(int bar, const Pill& pill) { pills_[std::size_t(bar)].set(pill); }

    /// The coverage of a row of pixels of the frame by the bars from `first` to before `end`: one value for each column
    /// from the first that bar `first` touches to the last that bar `end` - 1 does. Good until the next call. Bars
    /// that share a pixel add up to more than 1.
    std::span<const float> line(int row, int first, int end);

    int firstColumn(int bar) const { return pills_[std::size_t(bar)].firstColumn(); }

private:
    std::vector<PillCoverage> pills_;
    std::vector<float> line_;
};

} // namespace orvane::Video
