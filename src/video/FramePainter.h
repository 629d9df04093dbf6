#pragma once

#include "video/Look.h"
#include "video/arithmetic/BarRow.h"

#include <QImage>
#include <QPainter>

#include <span>
#include <vector>

namespace orvane::Video {

/// What every frame of a video shows besides its bars.
struct Scene
{
    /// Null for none.
    QImage artwork;
    QString title;
    QString artist;
};

/// Paints frames. All sizes are fractions of the frame, so that the aspects look the same. Keeps what is costly: the
/// backdrops of one size and one scaled artwork, which outlive a video. One thread at a time.
class FramePainter
{
public:
    static constexpr int levelCount = 8;

    /// The pill shows `site`, such as "name.example": the name and what follows it in two colours.
    explicit FramePainter(QString site);

    /// Paints a whole frame into `context`, in the pixels of its device: backdrop, artwork, title, artist, pill, bars,
    /// wordmark. `spectrum` holds values from 0 to 1.
    void drawFrame(QPainter& context, QSize size, std::span<const float> spectrum, const Scene& scene,
                   const Look& look);

    /// As above without the bars, with the glow at `level` from 0 to 7.
    void drawStill(QPainter& context, QSize size, int level, const Scene& scene, const Look& look);

    /// The level of the glow for a spectrum: its energy times 8, truncated and held to 0 to 7.
    static int levelOf(std::span<const float> spectrum);

    /// The row of bars of a frame.
    static BarRow barRow(QSize size, int bars);

    /// `source` scaled to fill `size`, from the cache where both are the same as before. Null where that cannot be
    /// made.
    QImage scaledArtwork(const QImage& source, QSize size);

    /// Paints the pill near the bottom edge.
    void drawWatermark(QPainter& context, QSize size) const;

private:
    void drawBackdrop(QPainter& context, QSize size, int level);
    void drawArtwork(QPainter& context, QSize size, const QImage& artwork);
    static void drawBars(QPainter& context, QSize size, std::span<const float> spectrum, int bars);

    QString siteName_;
    QString siteSuffix_;

    /// Empty, or one for each level; fewer where memory gave out.
    struct
    {
        QSize size;
        std::vector<QImage> images;
    } backdropCache_;

    struct
    {
        QSize size;
        qint64 source = 0;
        QImage image;
    } artCache_;
};

} // namespace orvane::Video
