#include "dj/arithmetic/Blend.h"

#include "dj/arithmetic/BassSwap.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace orvane::DJ {

namespace {

/// How far the blend has come at which the outgoing track begins to lose its bass, and the incoming one has all of it.
constexpr double swapBegins = 0.02;
constexpr double swapEnds = 0.98;

struct Poles
{
    Pole outgoing;
    Pole incoming;
};

} // namespace

Channels blend(const Channels& tail, const Channels& head, std::size_t frames, Bass bass, double rate)
{
    Channels result(tail.size(), std::vector<double>(frames));
    std::vector<Poles> poles(tail.size());
    const auto last = double(std::max<std::size_t>(frames, 2) - 1);
    for (std::size_t frame = 0; frame < frames; ++frame) {
        const double amount = double(frame) / last;
        const double angle = amount * std::numbers::pi / 2.0;
        const double outgoingGain = std::cos(angle);
        const double incomingGain = std::sin(angle);
        for (std::size_t channel = 0; channel < tail.size(); ++channel) {
            double outgoing = outgoingGain * tail[channel][frame];
            double incoming = incomingGain * head[channel][frame];
            if (bass == Bass::Swapped && amount > swapBegins)
                outgoing = highPassed(outgoing, amount, poles[channel].outgoing, rate);
            if (bass == Bass::Swapped && amount < swapEnds)
                incoming = lowShelfIn(incoming, amount, poles[channel].incoming, rate);
            result[channel][frame] = outgoing + incoming;
        }
    }
    return result;
}

} // namespace orvane::DJ
