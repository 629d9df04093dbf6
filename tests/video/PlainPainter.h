#pragma once

#include "video/FramePainter.h"

#include <array>
#include <cstdint>
#include <vector>

namespace orvane::test {

/// A frame painted layer by layer on an empty image, with nothing kept from one frame to the next: the backdrop's
/// gradient for each frame, the bars by counting how much of each pixel their outline holds.
QImage plainFrame(QSize size, std::span<const float> spectrum, const Video::Scene& scene, const Video::Look& look,
                  const QString& site);

/// The planes of `image`, luma, blue and red, in double precision by the letter of ITU-R BT.709, limited range.
std::array<std::vector<double>, 3> plainPlanes(const QImage& image);

/// A picture of a sunset over the sea, `side` pixels wide and high.
QImage sunset(int side);

/// A spectrum that moves like music: frame `frame` of it.
std::vector<float> movingSpectrum(int frame);

} // namespace orvane::test
