#include "tests/mastering/arithmetic/LibraryOpinion.h"

#include <array>
#include <cmath>
#include <ebur128.h>
#include <gtest/gtest.h>
#include <memory>

namespace orvane::test {

namespace {

struct Destroy
{
    void operator()(ebur128_state* state) const { ebur128_destroy(&state); }
};

using Meter = std::unique_ptr<ebur128_state, Destroy>;

std::vector<double> interleave(const Channels& channels)
{
    std::vector<double> samples;
    for (std::size_t frame = 0; frame < channels.front().size(); ++frame) {
        for (const auto& channel : channels)
            samples.push_back(channel[frame]);
    }
    return samples;
}

/// A meter that has heard the signal from the frame `start` on.
Meter meterFrom(const std::vector<double>& samples, std::size_t count, double sampleRate, int mode, std::size_t start)
{
    Meter meter(ebur128_init(unsigned(count), static_cast<unsigned long>(sampleRate), mode));
    const std::size_t frames = samples.size() / count;
    if (start < frames) {
        EXPECT_EQ(ebur128_add_frames_double(meter.get(), samples.data() + start * count, frames - start),
                  EBUR128_SUCCESS);
    }
    return meter;
}

double rangeOf(const std::vector<double>& samples, std::size_t count, double sampleRate)
{
    std::vector<Meter> meters;
    std::vector<ebur128_state*> states;
    for (std::size_t tenth = 0; tenth < 10; ++tenth) {
        const auto start = tenth * std::size_t(0.1 * sampleRate);
        meters.push_back(meterFrom(samples, count, sampleRate, EBUR128_MODE_LRA, start));
        states.push_back(meters.back().get());
    }
    double range = 0.0;
    EXPECT_EQ(ebur128_loudness_range_multiple(states.data(), states.size(), &range), EBUR128_SUCCESS);
    return range;
}

using PeakOf = int (*)(ebur128_state*, unsigned, double*);

double highest(const Meter& meter, PeakOf peakOf)
{
    double highest = 0.0;
    for (unsigned channel = 0; channel < meter->channels; ++channel) {
        double peak = 0.0;
        EXPECT_EQ(peakOf(meter.get(), channel, &peak), EBUR128_SUCCESS);
        highest = std::max(highest, peak);
    }
    return 20.0 * std::log10(highest);
}

} // namespace

Master::Reading libraryOpinion(const Channels& channels, double sampleRate)
{
    const std::vector<double> samples = interleave(channels);
    const Meter meter = meterFrom(samples, channels.size(), sampleRate,
                                  EBUR128_MODE_I | EBUR128_MODE_SAMPLE_PEAK | EBUR128_MODE_TRUE_PEAK, 0);
    Master::Reading opinion;
    EXPECT_EQ(ebur128_loudness_global(meter.get(), &opinion.integrated), EBUR128_SUCCESS);
    opinion.range = rangeOf(samples, channels.size(), sampleRate);
    opinion.truePeak = highest(meter, ebur128_true_peak);
    opinion.samplePeak = highest(meter, ebur128_sample_peak);
    return opinion;
}

} // namespace orvane::test
