#include "tests/dj/accuracy/Table.h"

#include "tests/dj/accuracy/Accuracy.h"
#include "tests/dj/accuracy/Coding.h"
#include "tests/dj/accuracy/Kicks.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>

namespace orvane::test {

namespace {

constexpr const char* introduction =
    "# How right the analysis of a track is\n"
    "\n"
    "Written by `orvane-dj-accuracy write docs/dj-accuracy.md`; `orvane-dj-accuracy check` compares it with what the\n"
    "program hears today. The tracks are composed, 20 s each, so that their tempo, beats and key are known: four drum\n"
    "patterns at 22 tempi from 72 to 178 beats a minute, and loops of four chords in all 24 keys. The figures are\n"
    "reported as they are; nothing is tuned to them.\n"
    "\n";

constexpr const char* beatsHeader =
    "## Tempo and beats\n"
    "\n"
    "Shares of the tracks whose tempo is within 1 % and 4 % of the truth, and the same where half and double count "
    "too.\n"
    "The grid's error is that of the known beats to the nearest line, over the tracks within 1 %: mean magnitude, and "
    "mean\n"
    "(positive: the grid is late).\n"
    "\n"
    "| Tracks | Count | 1 % | 4 % | 1 %, any octave | 4 %, any octave | Grid, ms | Bias, ms |\n"
    "|---|---|---|---|---|---|---|---|\n";

constexpr const char* keysHeader = "\n"
                                   "## Key\n"
                                   "\n"
                                   "Share of the keys that are exactly right, and the weighted score: the same key 1, "
                                   "a fifth away 0.5, the relative 0.3,\n"
                                   "the parallel 0.2.\n"
                                   "\n"
                                   "| Tracks | Count | Exact | Weighted |\n"
                                   "|---|---|---|---|\n";

constexpr const char* codingsHeader =
    "\n"
    "## The same music in several codings\n"
    "\n"
    "A song of 20 s in each of the 24 keys, each at a tempo of its own: for how many of them tempo and key are what "
    "they are\n"
    "before any coding, be they right or not, and how far the tempi are apart at most. An MP3 of ours does not tell "
    "its\n"
    "encoder's delay, so that its sound is 2257 samples late; the key, which is listened for every half second, is "
    "then heard\n"
    "at other places. One by the `lame` program tells it. The last row is that delay alone.\n"
    "\n"
    "| Coding | Songs | Tempo within 0.1 % | 1 % | 1 %, any octave | Farthest | Same key |\n"
    "|---|---|---|---|---|---|---|\n";

constexpr const char* kicksHeader =
    "\n"
    "## Kicks in a blend\n"
    "\n"
    "How far the kicks of two tracks are apart in blends at 120 beats a minute, in ms: at 95 % of the beats at most, "
    "and "
    "at\n"
    "the worst. The tracks are kicks in a little hiss, stretched by up to 6 %, one of two or both. A track is "
    "stretched "
    "in\n"
    "frames, each laid where its waveform fits best, up to 220 samples (5.0 ms) from where the tempo puts it; from one "
    "frame\n"
    "to the next it moves on by whole samples, so that the tempo is met within 0.05 %, which adds up; and a frame is "
    "not\n"
    "stretched within itself. The columns show what is left without the first, and without the first two. A track that "
    "is\n"
    "mixed as on a record, where its pitch changes with its speed, knows none of the three.\n"
    "\n"
    "| Stretched tracks | Beats | 95 % | Worst | No search: 95 % | Worst | No whole steps either: 95 % | Worst |\n"
    "|---|---|---|---|---|---|---|---|\n";

std::string text(const char* format, double value)
{
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, format, value);
    return buffer;
}

std::string percent(double share)
{
    return text("%.1f %%", 100.0 * share);
}

using BeatFilter = std::function<bool(const HeardBeat&)>;
using KeyFilter = std::function<bool(const HeardKey&)>;

struct BeatSums
{
    int count = 0;
    int within1 = 0;
    int within4 = 0;
    int within1AnyOctave = 0;
    int within4AnyOctave = 0;
    int beats = 0;
    double magnitude = 0.0;
    double bias = 0.0;

    void add(const HeardBeat& heard)
    {
        const double error = errorOf(heard.bpm, heard.truth.bpm);
        const double anyOctave = errorWithoutOctave(heard.bpm, heard.truth.bpm);
        ++count;
        within1 += error <= 0.01 ? 1 : 0;
        within4 += error <= 0.04 ? 1 : 0;
        within1AnyOctave += anyOctave <= 0.01 ? 1 : 0;
        within4AnyOctave += anyOctave <= 0.04 ? 1 : 0;
        if (error > 0.01)
            return;
        for (const double distance : heard.errors) {
            ++beats;
            magnitude += std::abs(distance);
            bias += distance;
        }
    }
};

std::string beatRow(const std::string& name, const std::vector<HeardBeat>& all, const BeatFilter& belongs)
{
    BeatSums sums;
    for (const HeardBeat& heard : all) {
        if (belongs(heard))
            sums.add(heard);
    }
    const auto share = [&](int part) { return percent(double(part) / sums.count); };
    const auto mean = [&](double sum) { return sums.beats == 0 ? std::string("-") : text("%.1f", sum / sums.beats); };
    return "| " + name + " | " + std::to_string(sums.count) + " | " + share(sums.within1) + " | " +
           share(sums.within4) + " | " + share(sums.within1AnyOctave) + " | " + share(sums.within4AnyOctave) + " | " +
           mean(sums.magnitude) + " | " + mean(sums.bias) + " |\n";
}

std::string beatRows(const std::vector<HeardBeat>& all)
{
    static const char* patterns[] = {"kick alone", "kick, clap and open hats", "backbeat", "broken"};
    std::string rows = beatRow("all", all, [](const HeardBeat&) { return true; });
    for (const Pattern pattern : allPatterns) {
        rows += beatRow(patterns[std::size_t(pattern)], all,
                        [pattern](const HeardBeat& heard) { return heard.truth.pattern == pattern; });
    }
    for (std::size_t kind = 0; all[kind].truth.bpm == all[0].truth.bpm; ++kind) {
        const std::string& name = all[kind].kind;
        rows += beatRow(name, all, [&name](const HeardBeat& heard) { return heard.kind == name; });
    }
    double last = 0.0;
    for (const HeardBeat& first : all) {
        if (first.truth.bpm <= last)
            continue;
        last = first.truth.bpm;
        rows += beatRow(text("%.0f beats a minute", last), all,
                        [last](const HeardBeat& heard) { return heard.truth.bpm == last; });
    }
    return rows;
}

std::string keyRow(const std::string& name, const std::vector<HeardKey>& all, const KeyFilter& belongs)
{
    int count = 0;
    int exact = 0;
    double score = 0.0;
    for (const HeardKey& heard : all) {
        if (!belongs(heard))
            continue;
        ++count;
        exact += heard.heard == heard.truth ? 1 : 0;
        score += scoreOf(heard.heard, heard.truth);
    }
    return "| " + name + " | " + std::to_string(count) + " | " + percent(double(exact) / count) + " | " +
           text("%.3f", score / count) + " |\n";
}

std::string keyRows(const std::vector<HeardKey>& all)
{
    return keyRow("all", all, [](const HeardKey&) { return true; }) +
           keyRow("chords alone", all, [](const HeardKey& heard) { return !heard.hasDrums; }) +
           keyRow("chords with drums", all, [](const HeardKey& heard) { return heard.hasDrums; }) +
           keyRow("major keys", all, [](const HeardKey& heard) { return !heard.truth.isMinor; }) +
           keyRow("minor keys", all, [](const HeardKey& heard) { return heard.truth.isMinor; });
}

std::string codingRows(const std::vector<HeardCoding>& all)
{
    std::string rows;
    for (const HeardCoding& heard : all) {
        rows += "| " + heard.name;
        for (const int count : {heard.songs, heard.sameTempo, heard.within1, heard.within1AnyOctave})
            rows += " | " + std::to_string(count);
        rows += " | " + text("%.2f %%", 100.0 * heard.farthest) + " | " + std::to_string(heard.sameKey) + " |\n";
    }
    return rows;
}

/// Why some tempi change.
std::string leadsText(const TempoLeads& leads)
{
    std::string changed;
    for (const double lead : leads.changed)
        changed += (changed.empty() ? "" : ", ") + text("%.1f", 100.0 * lead);
    return "\nA tempo is the lag at which the onsets are most like themselves, by its score alone, and in an onset "
           "high "
           "frequencies,\nwhich a lossy coding changes most, count up to four times the lowest: one of these codings "
           "moves the lead of a lag over\nthose of all other tempi by up to " +
           text("%.1f", 100.0 * leads.farthestMove) +
           " % of its score. In the songs whose tempo some coding changes by more than\n1 %, that lead is, before any "
           "coding, " +
           changed + " %: the lag of another multiple of the beat was near.\n";
}

/// The 95th percentile and the largest, if there are any.
std::string kickCells(std::vector<double> distances)
{
    if (distances.empty())
        return " - | - |";
    std::sort(distances.begin(), distances.end());
    return text(" %.1f |", distances[std::size_t(0.95 * double(distances.size() - 1))]) +
           text(" %.1f |", distances.back());
}

std::string kickRows(const std::vector<KickDistances>& all)
{
    std::string rows;
    for (const KickDistances& heard : all) {
        rows += "| " + heard.tracks + " | " + std::to_string(heard.mixed.size()) + " |" + kickCells(heard.mixed) +
                kickCells(heard.withoutSearch) + kickCells(heard.withoutRounding) + "\n";
    }
    return rows;
}

} // namespace

std::string accuracyPage()
{
    const HeardCodings codings = hearCodings();
    return introduction + (beatsHeader + beatRows(hearKits())) + (keysHeader + keyRows(hearChords())) +
           (codingsHeader + codingRows(codings.all) + leadsText(codings.leads)) + kicksHeader + kickRows(hearKicks());
}

} // namespace orvane::test
