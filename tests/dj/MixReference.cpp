#include "tests/dj/MixReference.h"

#include "tests/mastering/arithmetic/Reference.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace orvane::test {

using namespace Qt::Literals::StringLiterals;

namespace {

using Samples = std::vector<double>;

double lowPass(double& state, double x, double corner)
{
    state += (1 - std::exp(-2 * std::numbers::pi * corner / 44100.0)) * (x - state);
    return state;
}

Samples part(const Samples& samples, long first, long end)
{
    return {samples.begin() + first, samples.begin() + end};
}

void append(Samples& samples, const Samples& more)
{
    samples.insert(samples.end(), more.begin(), more.end());
}

} // namespace

PlainMix plainMix(const QList<PlainTrack>& tracks, const DJ::MixSettings& settings, const Level& level,
                  const Channels& tag, const std::vector<std::int64_t>& hits)
{
    PlainMix mix{.channels = Channels(2)};
    Samples tempi;
    for (const PlainTrack& track : tracks)
        tempi.push_back(track.record.bpm);
    std::sort(tempi.begin(), tempi.end());
    const double median = tempi[tempi.size() / 2];
    const long bar = long(60 / median * 4 * 44100);
    long fade = long(settings.crossfade * 44100);
    if (settings.beatMatch)
        fade = std::max(bar, (fade + bar / 2) / bar * bar);
    const auto wholeBars = [&](long frames) { return settings.beatMatch && bar >= 2 ? frames / bar * bar : frames; };
    Channels tail;
    const DJ::Analysis* previous = nullptr;
    for (const PlainTrack& track : tracks) {
        const DJ::Analysis& record = track.record;
        if (track.channels.empty())
            continue;
        Channels x{track.channels[0], track.channels[track.channels.size() > 1 ? 1 : 0]};
        for (Samples& channel : x) {
            if (std::abs(track.rate - 44100) > 0.5)
                channel = Reference::resample(channel, track.rate / 44100);
        }
        double r = 1;
        const double aligned = DJ::alignOctave(record.bpm, median);
        if (settings.matchTempo && record.bpm > 0) {
            const bool isRecord = !settings.preservePitch && settings.maxStretch > 0.08;
            r = median / aligned;
            r = isRecord ? std::clamp(r, 0.92, 1.08) : std::clamp(r, 1 - settings.maxStretch, 1 + settings.maxStretch);
            if (std::abs(r - 1) > 0.0001) {
                for (Samples& channel : x)
                    channel = settings.preservePitch ? Reference::stretch(channel, r) : Reference::resample(channel, r);
            } else {
                r = 1;
            }
        }
        if (settings.levelMatch)
            level(settings.levelTarget, -1, x);
        if (settings.keyNudge > 0 && previous) {
            const std::optional<int> n = DJ::nudge(record.key, previous->key, settings.keyNudge);
            if (n && *n != 0) {
                for (Samples& channel : x)
                    channel = Reference::pitchShift(channel, *n);
                mix.shifted[record.title] = *n;
            }
        }
        bool trims = settings.beatMatch;
        if (settings.matchTempo && aligned > 0 && !(std::abs(r * aligned - median) < 0.005 * median)) {
            mix.unmatched.insert(record.title);
            trims = false;
        }
        const long intro = long(record.grid.firstBar() / r * 44100);
        if (trims && intro >= 1 && long(x[0].size()) > intro + 2 * bar) {
            for (Samples& channel : x)
                channel = part(channel, intro, long(channel.size()));
        }
        const long length = long(x[0].size());
        const long bodyEnd = wholeBars(std::max(0L, length - fade));
        if (tail.empty()) {
            const long n = std::min(length, 88200L);
            for (Samples& channel : x) {
                for (long i = 0; settings.fadeEdges && n >= 2 && i < n; ++i)
                    channel[std::size_t(i)] *= double(i) / double(n);
            }
            for (std::size_t c = 0; c < 2; ++c)
                append(mix.channels[c], part(x[c], 0, bodyEnd));
            tail = {part(x[0], bodyEnd, length), part(x[1], bodyEnd, length)};
            previous = &record;
            continue;
        }
        const long frames = wholeBars(std::max(0L, std::min({length / 3, fade, long(tail[0].size())})));
        mix.moves.append({.from = previous->title,
                          .to = record.title,
                          .atSeconds = double(mix.channels[0].size()) / 44100,
                          .keyMove = DJ::camelot(previous->key) + u" → "_s + DJ::camelot(record.key),
                          .tempoChange = record.bpm - previous->bpm});
        for (std::size_t c = 0; c < 2; ++c) {
            double outgoing = 0;
            double incoming = 0;
            for (long i = 0; i < frames; ++i) {
                const double t = double(i) / double(std::max(frames, 2L) - 1);
                const double angle = t * std::numbers::pi / 2;
                double out = std::cos(angle) * tail[c][std::size_t(i)];
                double in = std::sin(angle) * x[c][std::size_t(i)];
                if (settings.filterSweep && t > 0.02)
                    out -= t * lowPass(outgoing, out, 270 * t + 30);
                if (settings.filterSweep && t < 0.98)
                    in -= (1 - t) * lowPass(incoming, in, 300 - 270 * t);
                mix.channels[c].push_back(out + in);
            }
            if (bodyEnd > frames)
                append(mix.channels[c], part(x[c], frames, bodyEnd));
            tail[c] = part(x[c], std::max(bodyEnd, frames), length);
        }
        previous = &record;
    }
    for (std::size_t c = 0; c < tail.size(); ++c) {
        const long whole = wholeBars(long(tail[c].size()));
        if (whole > 0)
            tail[c].resize(std::size_t(whole));
        const std::size_t n = tail[c].size();
        for (std::size_t i = 0; settings.fadeEdges && n >= 2 && i < n; ++i)
            tail[c][i] *= 1 - double(i) / double(n);
        append(mix.channels[c], tail[c]);
    }
    for (const std::int64_t hit : hits) {
        for (std::size_t c = 0; c < 2; ++c) {
            const Samples& voice = tag[c % tag.size()];
            for (std::size_t k = 0; k < voice.size() && std::size_t(hit) + k < mix.channels[c].size(); ++k) {
                const double edge = double(std::min(k, voice.size() - 1 - k)) / 220;
                mix.channels[c][std::size_t(hit) + k] += voice[k] * std::min(edge, 1.0);
            }
        }
    }
    mix.bpm = median;
    mix.bar = bar;
    return mix;
}

} // namespace orvane::test
