#pragma once

#include <array>

namespace orvane {

/// The sizes that the Suno pane steps through.
namespace ZoomSteps {

inline constexpr std::array steps = {0.6, 0.7, 0.75, 0.8, 0.85, 0.9, 1.0, 1.1, 1.25};

/// The site's layout is built for a full window, and the pane is narrower.
inline constexpr double usual = 0.8;

/// The step that lies `delta` steps from the one nearest to `zoom`, and at most at the ends. Of two equally near steps
/// the smaller counts.
double nudged(double zoom, int delta);

} // namespace ZoomSteps
} // namespace orvane
