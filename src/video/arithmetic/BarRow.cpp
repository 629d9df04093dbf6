#include "video/arithmetic/BarRow.h"

#include "video/arithmetic/Spectrum.h"

#include <algorithm>
#include <cmath>

namespace orvane::Video {

namespace {

/// The smallest height of a bar, as a part of the row's.
constexpr double dotHeight = 0.035;

PixelArea pixelsOf(double left, double top, double width, double height)
{
    const int firstColumn = int(std::floor(left));
    const int firstRow = int(std::floor(top));
    return {.left = firstColumn,
            .top = firstRow,
            .width = int(std::ceil(left + width)) - firstColumn,
            .height = int(std::ceil(top + height)) - firstRow};
}

} // namespace

BarRow::BarRow(int frameWidth, int frameHeight, int bars, Gradient gradient)
    : count_(std::max(bars, 0))
    , gradient_(gradient)
    , left_(0.08 * frameWidth)
    , top_((1.0 - 0.12 - 0.16) * frameHeight)
    , width_(0.84 * frameWidth)
    , height_(0.16 * frameHeight)
    , gap_(count_ > 0 ? 0.32 * width_ / count_ : width_)
    , barWidth_(count_ > 0 ? (width_ - gap_ * (count_ - 1)) / count_ : 0.0)
    , area_(pixelsOf(left_, top_, width_, height_))
{
}

Pill BarRow::pill(int bar, float value) const
{
    const double height = std::max(height_ * double(value), dotHeight * height_);
    return {.left = left_ + bar * (barWidth_ + gap_),
            .top = top_ + height_ - height,
            .width = barWidth_,
            .height = height,
            .radius = std::min(barWidth_, height) / 2.0};
}

std::uint32_t BarRow::colour(int row) const
{
    const double place = std::clamp((row + 0.5 - top_) / height_, 0.0, 1.0);
    std::uint32_t colour = 0xFF000000;
    for (const unsigned shift : {0U, 8U, 16U}) {
        const double top = gradient_.top >> shift & 0xFFU;
        const double end = gradient_.end >> shift & 0xFFU;
        colour |= std::uint32_t(std::lround(top + place * (end - top))) << shift;
    }
    return colour;
}

void valuesOfBars(std::span<const float> spectrum, std::span<float> bars)
{
    for (std::size_t bar = 0; bar < bars.size(); ++bar)
        bars[bar] = spectrum.empty() ? 0.0F : spectrum[binOfBar(bar, bars.size(), spectrum.size())];
}

std::uint32_t blended(std::uint32_t background, std::uint32_t colour, float coverage)
{
    const auto weight = (std::uint32_t(std::clamp(coverage, 0.0F, 1.0F) * 510.0F) + 1) / 2;
    std::uint32_t result = 0xFF000000;
    for (const unsigned shift : {0U, 8U, 16U}) {
        const std::uint32_t below = background >> shift & 0xFFU;
        const std::uint32_t above = colour >> shift & 0xFFU;
        result |= (below * (255 - weight) + above * weight + 127) / 255 << shift;
    }
    return result;
}

BarCoverage::BarCoverage(const BarRow& row)
    : pills_(std::size_t(row.count()))
    , line_(std::size_t(row.area().width) + 2)
{
    for (int bar = 0; bar < row.count(); ++bar)
        set(bar, row.pill(bar, 0.0F));
}

std::span<const float> BarCoverage::line(int row, int first, int end)
{
    const PillCoverage& last = pills_[std::size_t(end) - 1];
    const int left = firstColumn(first);
    const auto line = std::span(line_).first(std::size_t(last.firstColumn() + last.columnCount() - left));
    std::fill(line.begin(), line.end(), 0.0F);
    for (int bar = first; bar < end; ++bar)
        pills_[std::size_t(bar)].addRow(row, line.subspan(std::size_t(firstColumn(bar) - left)));
    return line;
}

} // namespace orvane::Video
