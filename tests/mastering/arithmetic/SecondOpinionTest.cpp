#include "mastering/arithmetic/Loudness.h"
#include "tests/mastering/arithmetic/Signals.h"

#include <cmath>
#include <ebur128.h>
#include <gmock/gmock.h>
#include <memory>

using namespace orvane;
using namespace orvane::test;

namespace {

struct Opinion
{
    double integrated = 0.0;
    double range = 0.0;
    double samplePeak = 0.0;
    double truePeak = 0.0;
};

struct Destroy
{
    void operator()(ebur128_state* state) const { ebur128_destroy(&state); }
};

Opinion libraryOpinion(const Channels& channels, double rate)
{
    const auto count = unsigned(channels.size());
    const std::unique_ptr<ebur128_state, Destroy> state(ebur128_init(
        count, unsigned(rate), EBUR128_MODE_I | EBUR128_MODE_LRA | EBUR128_MODE_SAMPLE_PEAK | EBUR128_MODE_TRUE_PEAK));
    Samples interleaved;
    for (std::size_t frame = 0; frame < channels.front().size(); ++frame) {
        for (const auto& channel : channels)
            interleaved.push_back(channel[frame]);
    }
    EXPECT_EQ(ebur128_add_frames_double(state.get(), interleaved.data(), channels.front().size()), EBUR128_SUCCESS);
    Opinion opinion;
    EXPECT_EQ(ebur128_loudness_global(state.get(), &opinion.integrated), EBUR128_SUCCESS);
    EXPECT_EQ(ebur128_loudness_range(state.get(), &opinion.range), EBUR128_SUCCESS);
    for (unsigned channel = 0; channel < count; ++channel) {
        double peak = 0.0;
        EXPECT_EQ(ebur128_sample_peak(state.get(), channel, &peak), EBUR128_SUCCESS);
        opinion.samplePeak = std::max(opinion.samplePeak, peak);
        EXPECT_EQ(ebur128_true_peak(state.get(), channel, &peak), EBUR128_SUCCESS);
        opinion.truePeak = std::max(opinion.truePeak, peak);
    }
    return opinion;
}

/// Sections of a beat in dull noise (the two oversampling filters differ near half the rate), each even in itself: the
/// library takes a short-term value a second and we take ten, so that a range that hangs on single seconds would
/// differ.
Channels sections(double rate, std::size_t count)
{
    constexpr double levels[] = {0.1, 0.5, 0.25};
    const auto length = std::size_t(12.0 * rate);
    Channels channels;
    for (unsigned channel = 0; channel < count; ++channel) {
        Samples samples = noise(3 * length, 0.2, channel);
        double dull = 0.0;
        for (std::size_t frame = 0; frame < samples.size(); ++frame) {
            const double beat = std::fmod(double(frame) / rate, 0.5);
            dull += 0.2 * (samples[frame] - dull);
            samples[frame] = dull * levels[frame / length] * (0.3 + std::exp(-10.0 * beat));
        }
        channels.push_back(std::move(samples));
    }
    return channels;
}

void expectAlike(double rate, std::size_t count)
{
    const Channels channels = sections(rate, count);
    const Opinion opinion = libraryOpinion(channels, rate);
    const Master::Reading reading = Master::measure(channels, rate);
    EXPECT_NEAR(reading.integrated, opinion.integrated, 0.05);
    EXPECT_NEAR(reading.range, opinion.range, 0.05);
    EXPECT_NEAR(reading.samplePeak, 20.0 * std::log10(opinion.samplePeak), 1e-9);
    // As far as two meters that both hold the standard's tolerance may lie apart.
    EXPECT_NEAR(reading.truePeak, 20.0 * std::log10(opinion.truePeak), 0.6);
}

} // namespace

TEST(SecondOpinion, libebur128ReadsStereoAlike)
{
    expectAlike(44100.0, 2);
    expectAlike(48000.0, 2);
    expectAlike(96000.0, 2);
}

TEST(SecondOpinion, libebur128ReadsMonoAndSixChannelsAlike)
{
    expectAlike(44100.0, 1);
    expectAlike(48000.0, 6);
}
