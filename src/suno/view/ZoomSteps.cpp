#include "suno/view/ZoomSteps.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace orvane {

double ZoomSteps::nudged(double zoom, int delta)
{
    const auto nearest = std::ranges::min_element(steps, {}, [zoom](double step) { return std::abs(step - zoom); });
    const std::int64_t wanted = std::int64_t(nearest - steps.begin()) + delta;
    return steps[std::size_t(std::clamp<std::int64_t>(wanted, 0, std::ssize(steps) - 1))];
}

} // namespace orvane
