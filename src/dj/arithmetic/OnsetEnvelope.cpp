#include "dj/arithmetic/OnsetEnvelope.h"

#include "dj/arithmetic/Flux.h"
#include "mastering/arithmetic/Hann.h"

#include <algorithm>
#include <functional>

namespace orvane::DJ {

std::vector<double> onsetEnvelope(std::span<const double> samples, double)
{
    return onsetEnvelope(samples, RealTransform::ofLength(onsetWindow));
}

std::vector<double> onsetEnvelope(std::span<const double> samples, const RealTransform* transform)
{
    if (samples.size() <= onsetWindow || transform == nullptr)
        return {};
    const std::vector<double> window = hannWindow(onsetWindow);
    RealTransform::Room room(*transform);
    Flux flux;
    std::vector<double> envelope((samples.size() - onsetWindow) / hop + 1);
    for (std::size_t frame = 0; frame < envelope.size(); ++frame) {
        std::transform(window.begin(), window.end(), samples.data() + frame * hop, room.samples().begin(),
                       std::multiplies());
        transform->run(room);
        envelope[frame] = flux.next(room.bins().data());
    }
    return envelope;
}

} // namespace orvane::DJ
