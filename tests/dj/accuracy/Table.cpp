#include "tests/dj/accuracy/Table.h"

#include "tests/dj/accuracy/Accuracy.h"

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

} // namespace

std::string accuracyPage()
{
    return introduction + (beatsHeader + beatRows(hearKits())) + keysHeader + keyRows(hearChords());
}

} // namespace orvane::test
