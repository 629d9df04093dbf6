#include "mastering/arithmetic/ChannelMeter.h"

#include "mastering/arithmetic/Loudness.h"
#include "tests/mastering/arithmetic/Signals.h"

#include <algorithm>
#include <gmock/gmock.h>

using namespace orvane;
using namespace orvane::test;
using Master::ChannelMeter;

namespace {

/// What a meter says of a channel that grows by `step` frames at a time.
ChannelMeter metered(const Samples& samples, double rate, std::size_t step)
{
    ChannelMeter meter(rate, true);
    for (std::size_t end = step; end < samples.size(); end += step)
        meter.advance(std::span(samples).first(end));
    meter.finishWeighing(samples);
    meter.finishScan(samples);
    return meter;
}

void expectSame(const ChannelMeter& found, const ChannelMeter& wanted, std::size_t step)
{
    EXPECT_EQ(found.blocks(), wanted.blocks()) << step;
    EXPECT_EQ(found.windows(), wanted.windows()) << step;
    EXPECT_EQ(found.peaks().sample, wanted.peaks().sample) << step;
    EXPECT_EQ(found.peaks().oversampled, wanted.peaks().oversampled) << step;
}

} // namespace

TEST(ChannelMeter, doesNotNoticeInWhichStepsTheChannelGrew)
{
    const Samples samples = music(4.1, 8000.0, 1).front();
    const ChannelMeter whole = metered(samples, 8000.0, samples.size());
    EXPECT_FALSE(whole.windows().empty());
    for (const std::size_t step : {1u, 31u, 32u, 33u, 64u, 1000u, 1024u, 1152u, 4096u, 20000u})
        expectSame(metered(samples, 8000.0, step), whole, step);
}

TEST(ChannelMeter, findsAPeakWhereverAStepEnds)
{
    for (std::size_t place = 0; place < 200; ++place) {
        Samples samples = silence(200);
        samples[place] = 0.5;
        samples[(place + 1) % 200] = 0.5;
        const Master::ChannelPeaks wanted = Master::scanPeaks(samples);
        for (const std::size_t step : {1u, 16u, 32u, 50u, 97u}) {
            const Master::ChannelPeaks found = metered(samples, 8000.0, step).peaks();
            EXPECT_EQ(found.sample, wanted.sample) << place << " in steps of " << step;
            EXPECT_EQ(found.oversampled, wanted.oversampled) << place << " in steps of " << step;
        }
    }
}

TEST(ChannelMeter, measuresWhatHasComeAtOnce)
{
    const Samples samples = noise(40'000, 0.3);
    ChannelMeter meter(8000.0, true);
    meter.advance(std::span(samples).first(30'000));
    // Blocks of 3200 frames every 800 in what is weighed, all but a rest of at most 1024 frames.
    EXPECT_GE(meter.blocks().size(), (30'000u - 1024u - 3200u) / 800u + 1u);
    EXPECT_GE(meter.windows().size(), (30'000u - 1024u - 24'000u) / 800u + 1u);
}

TEST(ChannelMeter, ofSixChannelsOnlyTheLfeDoesNotCount)
{
    const Channels channels = music(1.0, 8000.0, 6);
    auto meters = Master::metersFor(6, 8000.0);
    Master::finish(meters, channels);
    for (std::size_t channel = 0; channel < 6; ++channel)
        EXPECT_EQ(meters[channel].blocks().empty(), channel == 3) << channel;
}

TEST(ChannelMeter, aChannelThatDoesNotCountHasOnlyPeaks)
{
    const Samples samples = noise(40'000, 0.3);
    ChannelMeter meter(8000.0, false);
    meter.advance(samples);
    meter.finishWeighing(samples);
    meter.finishScan(samples);
    EXPECT_TRUE(meter.blocks().empty());
    EXPECT_TRUE(meter.windows().empty());
    EXPECT_EQ(meter.peaks().sample, Master::largestMagnitude(samples));
}

TEST(ChannelMeter, metersOfASignalThatGrewReadWhatMeasuringReads)
{
    for (const std::size_t count : {1u, 2u, 6u}) {
        const Channels channels = music(4.0, 8000.0, count);
        auto meters = Master::metersFor(count, 8000.0);
        for (std::size_t channel = 0; channel < count; ++channel)
            meters[channel].advance(std::span(channels[channel]).first(10'000));
        EXPECT_EQ(Master::finish(meters, channels), Master::measure(channels, 8000.0));
    }
    auto none = Master::metersFor(2, 8000.0);
    EXPECT_EQ(Master::finish(none, {{}, {}}), Master::Reading());
}

TEST(MeasureBeside, readsWhatMeasuringReads)
{
    for (const std::size_t count : {0u, 1u, 2u, 6u}) {
        const Channels channels = music(4.0, 8000.0, count);
        EXPECT_EQ(Master::integratedLoudness(channels, 8000.0), Master::measure(channels, 8000.0).integrated);
        EXPECT_EQ(Master::measureBeside(Master::peaksOf(channels), channels, 8000.0),
                  Master::measure(channels, 8000.0));
    }
}
