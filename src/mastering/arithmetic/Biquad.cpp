#include "mastering/arithmetic/Biquad.h"

#include "mastering/arithmetic/VectorClones.h"

#include <cmath>

namespace orvane::Master {

namespace {

bool isPublishedRate(double sampleRate)
{
    return std::abs(sampleRate - 48000.0) < 1.0;
}

/// What a recursive filter's tail leaves when it is of no account: numbers so small that processors slow down on them.
double withoutDust(double value)
{
    return std::abs(value) < 1e-100 ? 0.0 : value;
}

[[gnu::always_inline]] inline double nextOf(Biquad& state, double x)
{
    // The newest output enters last: the recursion then waits for one operation a sample, not for two.
    const double y =
        state.b0 * x + state.b1 * state.x1 + state.b2 * state.x2 - state.a2 * state.y2 - state.a1 * state.y1;
    state.x2 = state.x1;
    state.x1 = x;
    state.y2 = state.y1;
    state.y1 = y;
    return y;
}

Biquad settled(Biquad state)
{
    state.y1 = withoutDust(state.y1);
    state.y2 = withoutDust(state.y2);
    return state;
}

} // namespace

Biquad Biquad::kWeightingStage1(double sampleRate)
{
    if (isPublishedRate(sampleRate)) {
        return {.b0 = 1.53512485958697,
                .b1 = -2.69169618940638,
                .b2 = 1.19839281085285,
                .a1 = -1.69065929318241,
                .a2 = 0.73248077421585};
    }
    constexpr double q = 0.7071752369554196;
    constexpr double highGain = 1.5848647011308556;
    constexpr double bandGain = 1.2587209302325617;
    const double k = std::tan(5284.078578647628 / sampleRate);
    const double d = 1.0 + k / q + k * k;
    return {.b0 = (highGain + bandGain * k / q + k * k) / d,
            .b1 = 2.0 * (k * k - highGain) / d,
            .b2 = (highGain - bandGain * k / q + k * k) / d,
            .a1 = 2.0 * (k * k - 1.0) / d,
            .a2 = (1.0 - k / q + k * k) / d};
}

Biquad Biquad::kWeightingStage2(double sampleRate)
{
    if (isPublishedRate(sampleRate))
        return {.b0 = 1.0, .b1 = -2.0, .b2 = 1.0, .a1 = -1.99004745483398, .a2 = 0.99007225036621};
    constexpr double q = 0.5003270373238773;
    const double k = std::tan(119.8061151453059 / sampleRate);
    const double d = 1.0 + k / q + k * k;
    return {.b0 = 1.0, .b1 = -2.0, .b2 = 1.0, .a1 = 2.0 * (k * k - 1.0) / d, .a2 = (1.0 - k / q + k * k) / d};
}

std::vector<double> Biquad::process(std::span<const double> samples)
{
    std::vector<double> filtered(samples.begin(), samples.end());
    filter(filtered);
    return filtered;
}

void Biquad::filter(std::span<double> samples)
{
    Biquad state = *this;
    for (double& sample : samples)
        sample = nextOf(state, sample);
    *this = settled(state);
}

void Biquad::reset()
{
    x1 = x2 = y1 = y2 = 0.0;
}

/// While one section waits for its last output the other has work.
ORVANE_VECTOR_CLONES
void filterBy(Biquad& first, Biquad& second, std::span<double> samples)
{
    Biquad firstState = first;
    Biquad secondState = second;
    for (double& sample : samples)
        sample = nextOf(secondState, nextOf(firstState, sample));
    first = settled(firstState);
    second = settled(secondState);
}

} // namespace orvane::Master
