#include "demonstration/music/Band.h"

#include "demonstration/music/Effects.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace orvane::demo {
namespace {

constexpr double lowC = 65.406;
constexpr double midC = 130.813;
constexpr double highC = 261.626;

constexpr Voice padVoice{.wave = Voice::Wave::warm,
                         .attack = 0.09,
                         .release = 0.25,
                         .sustain = 0.9,
                         .decay = 1.5,
                         .detune = 11,
                         .width = 0.7,
                         .bright = 2600,
                         .dark = 1100};
constexpr Voice bassVoice{.wave = Voice::Wave::warm,
                          .attack = 0.004,
                          .release = 0.03,
                          .sustain = 0.6,
                          .decay = 7,
                          .detune = 3,
                          .bright = 1500,
                          .dark = 350};
constexpr Voice arpeggioVoice{.wave = Voice::Wave::bell,
                              .attack = 0.003,
                              .release = 0.12,
                              .sustain = 0.1,
                              .decay = 7,
                              .detune = 4,
                              .width = 0.2,
                              .bright = 7000,
                              .dark = 2500};
constexpr Voice leadVoice{.wave = Voice::Wave::hollow,
                          .attack = 0.012,
                          .release = 0.09,
                          .sustain = 0.65,
                          .decay = 4,
                          .detune = 8,
                          .width = 0.15,
                          .bright = 5200,
                          .dark = 2400};

/// Bass lines in eighths: x is the root, o its octave.
constexpr std::array<std::string_view, 4> bassLines{".x.x.x.x", "x.xx.xx.", "x.ox.xo.", "xxxxxxxx"};

std::size_t lengthOf(const Song& song)
{
    return static_cast<std::size_t>(std::llround(song.seconds * sampleRate));
}

} // namespace

Band::Band(const Song& song)
    : song_(song)
    , dice_(song.seed)
    , kit_(makeDrumKit(song.seed))
    , harmony_(song)
    , melody_(dice_)
    , style_(static_cast<unsigned>(dice_()))
    , drums_(lengthOf(song))
    , bass_(lengthOf(song))
    , pad_(lengthOf(song))
    , lead_(lengthOf(song))
{
}

int Band::beats() const
{
    return std::max(1, static_cast<int>((song_.seconds - song_.leadIn) * song_.bpm / 60));
}

int Band::beatsOf(int bar) const
{
    return std::min(beatsInBar, beats() - bar * beatsInBar);
}

Stage Band::perform()
{
    for (const Section& section : formOf((beats() + beatsInBar - 1) / beatsInBar)) {
        drums_.add(kit_.crash, at(section.firstBar, 0), section.firstBar > 0 ? 0.16 * section.energy : 0, 0.2);
        for (int bar = section.firstBar; bar < section.firstBar + section.bars; ++bar)
            playBar(section, bar);
    }
    const double beat = secondsOf(1);
    duck(pad_, kicks_, 0.75 * beat, 0.55);
    duck(bass_, kicks_, 0.5 * beat, 0.5);
    addEcho(lead_, static_cast<std::size_t>(0.75 * beat * sampleRate), 0.42, 0.4);
    pad_.add(lead_, 1);
    addRoom(pad_, 0.3);
    drums_.add(bass_, 1);
    drums_.add(pad_, 1);
    return std::move(drums_);
}

void Band::playBar(const Section& section, int bar)
{
    playKicks(section, bar);
    playPad(section, bar);
    if (section.backbeat)
        playBackbeat(section, bar);
    if (section.hats)
        playHats(section, bar);
    if (section.bass)
        playBass(section, bar);
    if (section.arpeggio)
        playArpeggio(section, bar);
    if (section.lead)
        playLead(section, bar);
}

void Band::playKicks(const Section& section, int bar)
{
    const int count = section.kickOnEveryBeat ? beatsOf(bar) : 1;
    for (int beat = 0; beat < count; ++beat) {
        kicks_.push_back(at(bar, beat));
        drums_.add(kit_.kick, kicks_.back(), (beat == 0 ? 0.72 : 0.66) * (0.8 + 0.2 * section.energy), 0);
    }
}

void Band::playBackbeat(const Section& section, int bar)
{
    const std::vector<double>& hand = style_ % 2 == 0 ? kit_.snare : kit_.clap;
    for (int beat = 1; beat < beatsOf(bar); beat += 2)
        drums_.add(hand, at(bar, beat), 0.36 * section.energy, -0.05);
}

void Band::playHats(const Section& section, int bar)
{
    const int perBeat = style_ / 2 % 2 == 0 ? 2 : 4;
    for (int stroke = 0; stroke < perBeat * beatsOf(bar); ++stroke) {
        const bool isOffbeat = stroke % perBeat == perBeat / 2;
        const bool isOpen = isOffbeat && section.openHats;
        const double gain = (isOffbeat ? 0.24 : 0.13) * (isOpen ? 0.8 : 1) * section.energy;
        drums_.add(isOpen ? kit_.openHat : kit_.closedHat, at(bar, stroke / static_cast<double>(perBeat)), gain, 0.25);
    }
}

void Band::playPad(const Section& section, int bar)
{
    // Chord tones from a fixed place of the scale upwards: chords move little from one to the next.
    int last = -1;
    for (int place = 1; place <= 6; ++place) {
        const int degree = harmony_.nearestInChord(place, bar);
        if (degree == last)
            continue;
        last = degree;
        play(pad_,
             {.start = at(bar, 0),
              .seconds = secondsOf(beatsOf(bar)),
              .hertz = harmony_.hertz(degree, midC),
              .gain = 0.15 * (0.7 + 0.3 * section.energy)},
             padVoice);
    }
}

void Band::playBass(const Section& section, int bar)
{
    const std::string_view line = bassLines[style_ / 4 % bassLines.size()];
    const int low = harmony_.rootOf(bar) > 3 ? harmony_.rootOf(bar) - 7 : harmony_.rootOf(bar);
    for (int eighth = 0; eighth < 2 * beatsOf(bar); ++eighth) {
        const char sign = line[static_cast<std::size_t>(eighth)];
        if (sign == '.')
            continue;
        play(bass_,
             {.start = at(bar, 0.5 * eighth),
              .seconds = secondsOf(0.42),
              .hertz = harmony_.hertz(low + (sign == 'o' ? 7 : 0), lowC),
              .gain = 0.42 * (0.6 + 0.4 * section.energy)},
             bassVoice);
    }
}

void Band::playArpeggio(const Section& section, int bar)
{
    static constexpr std::array<int, 8> shape{0, 2, 4, 7, 4, 2, 7, 9};
    for (int eighth = 0; eighth < 2 * beatsOf(bar); ++eighth) {
        const int degree = harmony_.rootOf(bar) + shape[static_cast<std::size_t>(eighth)];
        play(lead_,
             {.start = at(bar, 0.5 * eighth),
              .seconds = secondsOf(0.4),
              .hertz = harmony_.hertz(harmony_.nearestInChord(degree, bar), highC),
              .gain = 0.13 * (0.5 + 0.5 * section.energy),
              .place = eighth % 2 == 0 ? -0.4 : 0.4},
             arpeggioVoice);
    }
}

void Band::playLead(const Section& section, int bar)
{
    for (const Tone& tone : melody_.inBar(bar, harmony_)) {
        if (tone.beat >= beatsOf(bar))
            continue;
        play(lead_,
             {.start = at(bar, tone.beat),
              .seconds = secondsOf(0.92 * tone.beats),
              .hertz = harmony_.hertz(tone.degree, highC),
              .gain = 0.2 * section.energy},
             leadVoice);
    }
}

} // namespace orvane::demo
