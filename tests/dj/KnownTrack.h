#pragma once

#include <array>
#include <vector>

/// Music of which tempo, beats and key are known, at 44100 Hz. The same facts give the same samples.
namespace orvane::test {

/// What the drums play.
enum class Pattern
{
    /// A kick on every beat, and nothing else.
    KickAlone,
    /// A kick on every beat, a clap on the second and fourth, open hats between the beats.
    FourOnTheFloor,
    /// Kick on the first and third, snare on the second and fourth, hats in eighths.
    Backbeat,
    /// Kicks off the beat between snares on the second and fourth, hats in eighths.
    Broken,
};

inline constexpr std::array allPatterns{Pattern::KickAlone, Pattern::FourOnTheFloor, Pattern::Backbeat,
                                        Pattern::Broken};

struct KnownBeat
{
    double bpm = 120.0;
    Pattern pattern = Pattern::FourOnTheFloor;
    /// Length of the whole track, in seconds.
    double seconds = 20.0;
    /// Silence before the first beat, in seconds.
    double intro = 0.0;
    /// How far into a beat its second eighth comes: a half for straight ones.
    double swing = 0.5;
    /// How much louder than the drums noise lies under them, in dB; below -100 for none.
    double noise = -200.0;
};

struct KnownTrack
{
    std::vector<double> samples;
    /// When each beat comes, in seconds.
    std::vector<double> beats;
};

KnownTrack playKit(const KnownBeat& beat);

struct KnownHarmony
{
    int tonic = 0;
    bool minor = false;
    /// Which of the four loops of chords, 0 to 3.
    int loop = 0;
    double seconds = 20.0;
    /// How loud drums play along, as a factor; 0 for none.
    double drums = 0.0;
};

/// One chord a bar, at 100 beats a minute, over a bass of its roots.
std::vector<double> playChords(const KnownHarmony& harmony);

} // namespace orvane::test
