#include "mastering/arithmetic/Resample.h"

#include <cmath>
#include <cstddef>

namespace orvane::Master {

std::vector<double> resample(std::vector<double> samples, double ratio)
{
    if (!(ratio > 0.0) || !(std::abs(ratio - 1.0) > 0.0001) || samples.size() < 2)
        return samples;
    const double length = double(samples.size()) / ratio;
    if (!(length >= 2.0))
        return samples;
    std::vector<double> result(static_cast<std::size_t>(length));
    for (std::size_t index = 0; index < result.size(); ++index) {
        const double position = double(index) * ratio;
        const auto before = std::size_t(position);
        if (before + 1 >= samples.size())
            break;
        const double share = position - double(before);
        result[index] = (1.0 - share) * samples[before] + share * samples[before + 1];
    }
    return result;
}

} // namespace orvane::Master
