#include "tests/dj/accuracy/Kicks.h"

#include "mastering/arithmetic/Hann.h"
#include "mastering/arithmetic/InParallel.h"
#include "mastering/arithmetic/Resample.h"
#include "mastering/arithmetic/Stretch.h"
#include "tests/dj/KnownTrack.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <random>

namespace orvane::test {

namespace {

using Samples = std::vector<double>;

constexpr double rate = 44100.0;
constexpr double setTempo = 120.0;
constexpr std::size_t beatFrames = 22'050;
constexpr std::size_t beatsInBlend = 16;

/// A kick on every beat in a little hiss, which is the same in every run.
Samples kicks(double bpm, double seconds)
{
    Samples samples = playKit({.bpm = bpm, .pattern = Pattern::KickAlone, .seconds = seconds}).samples;
    std::mt19937 generator(unsigned(1000.0 * bpm));
    for (double& sample : samples)
        sample += 0.003 * (2.0 * double(generator()) / double(std::mt19937::max()) - 1.0);
    return samples;
}

/// What `Master::stretch` would give if it did not search: frame after frame, `step` samples apart.
Samples laidOver(const Samples& samples, double ratio, double step)
{
    constexpr std::size_t frame = 2048;
    constexpr std::size_t hop = 1024;
    const Samples window = hannWindow(frame);
    Samples sum(std::size_t(double(samples.size()) / ratio) + frame);
    Samples weight(sum.size());
    std::size_t end = 0;
    for (std::size_t index = 0;; ++index, end += hop) {
        const auto start = std::size_t(std::round(double(index) * step));
        if (start + frame >= samples.size() || end + frame >= sum.size())
            break;
        for (std::size_t within = 0; within < frame; ++within) {
            sum[end + within] += samples[start + within] * window[within];
            weight[end + within] += window[within];
        }
    }
    sum.resize(end);
    for (std::size_t index = 0; index < sum.size(); ++index)
        sum[index] /= std::max(weight[index], 1e-4);
    return sum;
}

/// Where, of the samples around `expected`, a kick sets in: the first at a quarter of the largest.
double onsetNear(const Samples& samples, std::size_t expected)
{
    constexpr std::size_t around = 6615;
    const std::size_t start = expected > around ? expected - around : 0;
    const auto first = samples.begin() + std::ptrdiff_t(start);
    const auto last = samples.begin() + std::ptrdiff_t(std::min(expected + around, samples.size()));
    const double largest =
        std::abs(*std::max_element(first, last, [](double a, double b) { return std::abs(a) < std::abs(b); }));
    const auto found = std::find_if(first, last, [&](double sample) { return std::abs(sample) >= 0.25 * largest; });
    return double(found - samples.begin());
}

/// How late the kicks of both blends of a track are, in samples: of the one that it comes in by and of the one that it
/// goes out by, at the beats where both tracks of a blend can be heard.
Samples lateness(const Samples& track)
{
    const std::size_t bars = track.size() / (4 * beatFrames);
    const std::size_t goingOut = 4 * beatFrames * (bars - beatsInBlend / 4);
    Samples late;
    for (const std::size_t start : {std::size_t(0), goingOut}) {
        for (std::size_t beat = 1; beat + 1 < beatsInBlend; ++beat) {
            const std::size_t expected = start + beat * beatFrames;
            late.push_back(onsetNear(track, expected) - double(expected));
        }
    }
    return late;
}

using Change = std::function<Samples(const Samples&, double ratio)>;

/// For each tempo how late the kicks of a track are that is brought from it to the set's by `change`.
std::vector<Samples> latenessAt(const std::vector<double>& tempi, double seconds, const Change& change)
{
    std::vector<Samples> late(tempi.size());
    inParallel(tempi.size(), processorCount(), [&](std::size_t index) {
        late[index] = lateness(change(kicks(tempi[index], seconds), setTempo / tempi[index]));
    });
    return late;
}

/// In ms, between each track and the one `apart` places on.
Samples between(const std::vector<Samples>& first, const std::vector<Samples>& second, std::size_t apart)
{
    Samples distances;
    for (std::size_t index = 0; index < first.size(); ++index) {
        const Samples& other = second[(index + apart) % second.size()];
        for (std::size_t beat = 0; beat < first[index].size(); ++beat)
            distances.push_back(1000.0 * std::abs(first[index][beat] - other[beat]) / rate);
    }
    return distances;
}

std::vector<KickDistances> distancesAt(const std::string& name, const std::vector<double>& tempi, double seconds)
{
    const std::vector<Samples> mixed = latenessAt(tempi, seconds, Master::stretch);
    const std::vector<Samples> withoutSearch = latenessAt(tempi, seconds, [](const Samples& samples, double ratio) {
        return laidOver(samples, ratio, std::round(1024.0 * ratio));
    });
    const std::vector<Samples> withoutRounding = latenessAt(
        tempi, seconds, [](const Samples& samples, double ratio) { return laidOver(samples, ratio, 1024.0 * ratio); });
    const std::vector<Samples> plain{lateness(kicks(setTempo, seconds))};
    return {{.tracks = name + ", one of two",
             .mixed = between(mixed, plain, 0),
             .withoutSearch = between(withoutSearch, plain, 0),
             .withoutRounding = between(withoutRounding, plain, 0)},
            {.tracks = name + ", both",
             .mixed = between(mixed, mixed, 1),
             .withoutSearch = between(withoutSearch, withoutSearch, 1),
             .withoutRounding = between(withoutRounding, withoutRounding, 1)}};
}

/// Of tracks whose pitch changes with their speed, as a record's does.
std::vector<KickDistances> distancesAsOnARecord(const std::vector<double>& tempi, double seconds)
{
    const std::vector<Samples> mixed = latenessAt(
        tempi, seconds, [](const Samples& samples, double ratio) { return Master::resample(samples, ratio); });
    const std::vector<Samples> plain{lateness(kicks(setTempo, seconds))};
    return {{.tracks = "as on a record, 4 min, at any tempo, one of two", .mixed = between(mixed, plain, 0)},
            {.tracks = "as on a record, 4 min, at any tempo, both", .mixed = between(mixed, mixed, 1)}};
}

} // namespace

std::vector<KickDistances> hearKicks()
{
    std::vector<double> reached;
    for (int step = 965; step <= 1085; step += 8)
        reached.push_back(setTempo * 1024.0 / step);
    std::vector<double> any;
    for (double bpm = 113.35; bpm < 127.5; bpm += 0.9)
        any.push_back(bpm);
    std::vector<KickDistances> all = distancesAt("40 s, at tempi that whole steps reach", reached, 40.0);
    for (KickDistances& distances : distancesAt("4 min, at any tempo", any, 240.0))
        all.push_back(std::move(distances));
    for (KickDistances& distances : distancesAsOnARecord(any, 240.0))
        all.push_back(std::move(distances));
    return all;
}

} // namespace orvane::test
