#include "dj/arithmetic/Mono.h"

#include <algorithm>

namespace orvane::DJ {

std::vector<double> toMono(Channels channels)
{
    if (channels.size() > 1) {
        std::transform(channels[0].begin(), channels[0].end(), channels[1].begin(), channels[0].begin(),
                       [](double left, double right) { return (left + right) * 0.5; });
    }
    return std::move(channels[0]);
}

} // namespace orvane::DJ
