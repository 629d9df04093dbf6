#pragma once

#include "platform/video/VideoPicture.h"
#include "video/FramePainter.h"

#include <array>
#include <optional>
#include <span>
#include <vector>

namespace orvane::Video {

/// The frames of one video, one after the other, as the encoder takes them: the same pixels as FramePainter::drawFrame
/// gives, at a fraction of the cost. All but the bars is painted once for each level of the glow, and of the bars only
/// what moved since that level was last seen. Nothing is allocated for a frame.
class FrameSequence
{
public:
    /// `painter` outlives the sequence.
    FrameSequence(FramePainter& painter, Scene scene, const Look& look);

    /// The next frame; good until the next call. Throws std::bad_alloc.
    VideoPicture& next(std::span<const float> spectrum);

    /// Outside of it the last frame is the one before.
    const VideoPicture::Area& changed() const { return changed_; }

private:
    /// A frame at one level of the glow, as it was last shown.
    struct Level
    {
        VideoPicture picture;
        /// The pixels around the bars without them, with the straight part of each all the way up, and as shown.
        std::vector<std::uint32_t> behind;
        std::vector<std::uint32_t> straight;
        std::vector<std::uint32_t> shown;
        std::vector<Pill> pills;
    };

    Level& levelAt(int index);
    void paintStill(Level& level, int index);
    void paintStraight(Level& level);
    void moveBars(Level& level);
    void repaint(Level& level, int firstBar, int endBar, const PixelArea& part);
    const std::vector<std::uint32_t>* readyRow(const Level& level, const Pill& pill, int row) const;
    void convert(Level& level, const PixelArea& part) const;
    PixelArea movedPart(const Pill& from, const Pill& to) const;

    FramePainter& painter_;
    Scene scene_;
    Look look_;
    QSize size_;
    BarRow row_;
    /// The row's pixels, and as many more as make all four sides even.
    PixelArea area_;
    BarCoverage coverage_;
    std::vector<std::uint32_t> colours_;
    std::vector<float> values_;
    std::vector<Pill> pills_;
    std::array<std::optional<Level>, FramePainter::levelCount> levels_;
    const Level* last_ = nullptr;
    VideoPicture::Area changed_;
};

} // namespace orvane::Video
