#include "video/FrameSequence.h"

#include "video/arithmetic/Planes.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace orvane::Video {

namespace {

int evenAbove(int value)
{
    return value + value % 2;
}

int evenBelow(int value)
{
    return value - value % 2;
}

/// The smallest area around `area` whose sides are all even.
PixelArea even(const PixelArea& area)
{
    const int left = evenBelow(area.left);
    const int top = evenBelow(area.top);
    return {.left = left,
            .top = top,
            .width = evenAbove(area.left + area.width) - left,
            .height = evenAbove(area.top + area.height) - top};
}

Planes planesAt(VideoPicture& picture, int left, int top)
{
    const std::array<VideoPicture::Plane, 3> planes = picture.planes();
    const std::ptrdiff_t chroma = std::ptrdiff_t(top / 2) * planes[1].stride + left / 2;
    return {.luma = planes[0].bytes + std::ptrdiff_t(top) * planes[0].stride + left,
            .blue = planes[1].bytes + chroma,
            .red = planes[2].bytes + chroma,
            .lumaStride = planes[0].stride,
            .chromaStride = planes[1].stride};
}

void blend(std::span<const float> covered, std::uint32_t colour, const std::uint32_t* behind, std::uint32_t* target)
{
    std::transform(covered.begin(), covered.end(), behind, target,
                   [colour](float coverage, std::uint32_t pixel) { return blended(pixel, colour, coverage); });
}

} // namespace

FrameSequence::FrameSequence(FramePainter& painter, Scene scene, const Look& look)
    : painter_(painter)
    , scene_(std::move(scene))
    , look_(look)
    , size_(size(look.aspect))
    , row_(FramePainter::barRow(size_, look.bars))
    , area_(even(row_.area()))
    , coverage_(row_)
    , values_(std::size_t(row_.count()))
    , pills_(std::size_t(row_.count()))
{
    for (int line = 0; line < area_.height; ++line)
        colours_.push_back(row_.colour(area_.top + line));
}

VideoPicture& FrameSequence::next(std::span<const float> spectrum)
{
    valuesOfBars(spectrum, values_);
    for (int bar = 0; bar < row_.count(); ++bar)
        pills_[std::size_t(bar)] = row_.pill(bar, values_[std::size_t(bar)]);
    Level& level = levelAt(FramePainter::levelOf(spectrum));
    moveBars(level);
    changed_ = level.picture.area();
    if (std::exchange(last_, &level) == &level)
        changed_ = {.left = area_.left, .top = area_.top, .width = area_.width, .height = area_.height};
    return level.picture;
}

FrameSequence::Level& FrameSequence::levelAt(int index)
{
    std::optional<Level>& level = levels_[std::size_t(index)];
    if (!level) {
        level.emplace(Level{.picture = VideoPicture(size_.width(), size_.height())});
        paintStill(*level, index);
    }
    return *level;
}

void FrameSequence::paintStill(Level& level, int index)
{
    QImage image(size_, QImage::Format_RGB32);
    if (image.isNull())
        throw std::bad_alloc();
    {
        QPainter context(&image);
        painter_.drawStill(context, size_, index, scene_, look_);
    }
    const auto* pixels = reinterpret_cast<const std::uint32_t*>(image.constBits());
    toPlanes(pixels, size_.width(), size_.width(), size_.height(), planesAt(level.picture, 0, 0));
    for (int line = 0; line < area_.height; ++line) {
        const std::uint32_t* start = pixels + std::ptrdiff_t(area_.top + line) * size_.width() + area_.left;
        level.behind.insert(level.behind.end(), start, start + area_.width);
    }
    paintStraight(level);
    level.shown = level.behind;
    // None stands yet, so that the first move paints each of them whole.
    level.pills.resize(pills_.size());
}

void FrameSequence::paintStraight(Level& level)
{
    level.straight = level.behind;
    for (int bar = 0; bar < row_.count(); ++bar) {
        const Pill highest = row_.pill(bar, 1.0F);
        coverage_.set(bar, highest);
        const int middle = int(highest.top + highest.height / 2.0);
        const std::span<const float> covered = coverage_.line(middle, bar, bar + 1);
        for (int line = 0; line < area_.height; ++line) {
            const std::ptrdiff_t start = std::ptrdiff_t(line) * area_.width + coverage_.firstColumn(bar) - area_.left;
            blend(covered, colours_[std::size_t(line)], &level.behind[std::size_t(start)],
                  &level.straight[std::size_t(start)]);
        }
    }
}

/// The pixels of a row in which the bar has no round corner; null where it has.
const std::vector<std::uint32_t>* FrameSequence::readyRow(const Level& level, const Pill& pill, int row) const
{
    if (!row_.isApart())
        return nullptr;
    if (row + 1 <= pill.top)
        return &level.behind;
    const bool isStraight = row >= pill.top + pill.radius && row + 1 <= pill.top + pill.height - pill.radius;
    return isStraight ? &level.straight : nullptr;
}

PixelArea FrameSequence::movedPart(const Pill& from, const Pill& to) const
{
    const PixelArea& row = row_.area();
    const int left = int(std::floor(to.left));
    const int width = int(std::ceil(to.left + to.width)) - left;
    if (from.radius != to.radius)
        return {.left = left, .top = row.top, .width = width, .height = row.height};
    const int top = int(std::floor(std::min(from.top, to.top)));
    const int end = std::min(int(std::ceil(std::max(from.top, to.top) + to.radius)), row.top + row.height);
    return {.left = left, .top = top, .width = width, .height = end - top};
}

void FrameSequence::moveBars(Level& level)
{
    if (level.pills == pills_)
        return;
    for (int bar = 0; bar < row_.count(); ++bar)
        coverage_.set(bar, pills_[std::size_t(bar)]);
    if (!row_.isApart())
        repaint(level, 0, row_.count(), row_.area());
    for (int bar = 0; row_.isApart() && bar < row_.count(); ++bar) {
        const Pill& from = level.pills[std::size_t(bar)];
        const Pill& to = pills_[std::size_t(bar)];
        if (from != to)
            repaint(level, bar, bar + 1, movedPart(from, to));
    }
    level.pills = pills_;
}

void FrameSequence::repaint(Level& level, int firstBar, int endBar, const PixelArea& part)
{
    for (int row = part.top; row < part.top + part.height; ++row) {
        const int line = row - area_.top;
        const std::ptrdiff_t start = std::ptrdiff_t(line) * area_.width + part.left - area_.left;
        if (const auto* ready = readyRow(level, pills_[std::size_t(firstBar)], row))
            std::copy_n(ready->begin() + start, part.width, level.shown.begin() + start);
        else
            blend(coverage_.line(row, firstBar, endBar), colours_[std::size_t(line)], &level.behind[std::size_t(start)],
                  &level.shown[std::size_t(start)]);
    }
    convert(level, even(part));
}

void FrameSequence::convert(Level& level, const PixelArea& part) const
{
    const std::ptrdiff_t start = std::ptrdiff_t(part.top - area_.top) * area_.width + part.left - area_.left;
    toPlanes(level.shown.data() + start, area_.width, part.width, part.height,
             planesAt(level.picture, part.left, part.top));
}

} // namespace orvane::Video
