#include "fuzz/Law.h"
#include "mastering/arithmetic/Placement.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

using namespace orvane::Master;
using orvane::fuzz::mustHold;

namespace {

/// What a run of the fuzzer is made of, as it lies in the input.
struct Input
{
    std::int64_t tag;
    std::int64_t trackFrames;
    std::int64_t tagFrames;
    std::int64_t seed;
    double sampleRate;
};

} // namespace

/// Any stored number is a placement, and any placement gives ascending hits at which the tag fits.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Input input = {};
    std::memcpy(&input, data, std::min(size, sizeof input));
    const Placement placement = placementForTag(input.tag);
    mustHold(placementForTag(placementTag(placement)) == placement);

    // A hit a frame is the most there can be: a short track keeps a run short.
    const std::int64_t trackFrames = input.trackFrames % 100'000;
    const double sampleRate = std::clamp(input.sampleRate == input.sampleRate ? input.sampleRate : 0.0, 0.0, 192000.0);
    const auto hits = tagHits(placement, trackFrames, input.tagFrames, sampleRate, input.seed);
    mustHold(std::is_sorted(hits.begin(), hits.end()));
    for (const std::int64_t hit : hits)
        mustHold(hit >= 0 && hit <= trackFrames - input.tagFrames);
    mustHold(hits == tagHits(placement, trackFrames, input.tagFrames, sampleRate, input.seed));
    return 0;
}
