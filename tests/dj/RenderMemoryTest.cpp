#include "dj/arithmetic/Conform.h"
#include "dj/arithmetic/Splice.h"
#include "tests/dj/MixFiles.h"

#include <cmath>
#include <functional>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace orvane;
using namespace orvane::test;

namespace {

/// The largest memory that `work` has in a child process, in MiB; it tells whether it came to its end.
double peakOf(const std::function<bool()>& work)
{
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(work() ? 0 : 1);
    int status = 0;
    rusage usage = {};
    ::wait4(child, &status, 0, &usage);
    EXPECT_EQ(status, 0);
    return double(usage.ru_maxrss) / 1024.0;
}

/// So many seconds of stereo as doubles, in MiB.
double asDoubles(double seconds, double rate = 44100.0)
{
    return seconds * rate * 2.0 * sizeof(double) / 1024.0 / 1024.0;
}

/// A beat that swells from a tenth of its level to all of it: brought to a loudness, its end is limited.
Channels swelling(double seconds, double rate = 44100.0)
{
    Channels channels(2);
    for (auto& channel : channels)
        channel.resize(std::size_t(seconds * rate));
    for (std::size_t channel = 0; channel < channels.size(); ++channel) {
        double frame = 0.0;
        for (double& sample : channels[channel]) {
            const double beat = std::fmod(frame / rate, 0.5);
            sample = (0.1 + 0.9 * frame / (seconds * rate)) * 0.7 * std::exp(-30.0 * beat) *
                     std::sin((500.0 + 40.0 * double(channel)) * beat);
            ++frame;
        }
    }
    return channels;
}

struct RenderMemory : MixFiles
{
    DJ::Set beats(int count, double seconds, double bpm, double difference) const
    {
        DJ::Set set;
        for (int index = 0; index < count; ++index) {
            set.append(track({.title = QStringLiteral("track %1").arg(index),
                              .bpm = bpm + difference * index,
                              .key = {.tonic = 7 * index % 12 + index % 2}},
                             swelling(seconds)));
        }
        return set;
    }
};

} // namespace

TEST_F(RenderMemory, aLongSetTakesNoMoreThanAShortOne)
{
    // A track is 21 MiB as doubles.
    const DJ::Set set = noises(12, 30.0);
    const auto peak = [&](qsizetype tracks) {
        return peakOf([&] { return DJ::render(set.first(tracks), {}, out()).duration > 0.0; });
    };
    const double four = peak(4);
    const double twelve = peak(12);
    EXPECT_LT(twelve, four + 15.0);
    RecordProperty("four_mib", std::to_string(four));
    RecordProperty("twelve_mib", std::to_string(twelve));
}

TEST_F(RenderMemory, aMixTakesTwoTracksAsDoublesAndItsBlends)
{
    constexpr double seconds = 80.0;
    // Every track is stretched, levelled, limited and moved in key.
    const DJ::MixSettings settings{.levelTarget = -12.0, .keyNudge = 2};
    const auto peak = [&](double length) {
        const DJ::Set set = beats(4, length, 118.0, 1.0);
        return peakOf([&] { return DJ::render(set, settings, out()).moves.size() == 3; });
    };
    const double more = peak(seconds) - peak(10.0);
    EXPECT_LT(more, 2.0 * asDoubles(1.02 * seconds) + 3.0 * asDoubles(8.0));
    RecordProperty("more_mib", std::to_string(more));
}

TEST_F(RenderMemory, aTrackIsConformedInLittleMoreThanItsOwn)
{
    constexpr double seconds = 60.0;
    // What a minute more takes, as a share of that minute.
    const auto share = [&](const DJ::Conforming& how, double rate) {
        const auto peak = [&](double length) {
            return peakOf([&] { return DJ::conform(swelling(length, rate), rate, how).size() == 2; });
        };
        return (peak(2.0 * seconds) - peak(seconds)) / asDoubles(seconds, rate);
    };
    // Large pages come and go as wholes; one more copy would be a whole share.
    EXPECT_LT(share({}, 44100.0), 1.4);
    EXPECT_LT(share({.ratio = 1.05}, 44100.0), 1.4);
    EXPECT_LT(share({.ratio = 0.95}, 44100.0), 1.45);
    EXPECT_LT(share({.ratio = 1.05, .keepsPitch = false}, 44100.0), 1.4);
    EXPECT_LT(share({.level = -12.0}, 44100.0), 1.4);
    EXPECT_LT(share({.semitones = 2}, 44100.0), 1.4);
    // On the way down it is longer for a while.
    EXPECT_LT(share({.semitones = -2}, 44100.0), 1.52);
    EXPECT_LT(share({.ratio = 1.05, .level = -12.0, .semitones = 1, .intro = 100'000}, 48000.0), 1.4);
}

TEST_F(RenderMemory, aTrackGoesFromMemoryAsItIsWritten)
{
    constexpr double seconds = 160.0;
    const double whole = asDoubles(seconds);
    const auto peak = [&](bool another) {
        return peakOf([&] {
            Channels more;
            DJ::Splice splice({.cuts = {.fadeFrames = 352'800, .barFrames = 88'200}}, [&](const DJ::Piece& piece) {
                const bool isNearItsEnd = piece.end > std::size_t(0.9 * seconds * 44100.0);
                if (another && isNearItsEnd && more.empty()) {
                    more.resize(2);
                    for (auto& channel : more)
                        channel.resize(std::size_t(0.8 * seconds * 44100.0));
                }
            });
            splice.add(swelling(seconds));
            splice.finish();
            return another != more.empty();
        });
    };
    EXPECT_LT(peak(true), peak(false) + 0.1 * whole);
}
