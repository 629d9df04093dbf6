#pragma once

#include "demonstration/music/Drums.h"
#include "demonstration/music/Form.h"
#include "demonstration/music/Harmony.h"
#include "demonstration/music/Melody.h"
#include "demonstration/music/Song.h"
#include "demonstration/music/Voice.h"

#include <random>
#include <vector>

namespace orvane::demo {

/// Plays a song: each player on a stage of his own, then all of them together.
class Band
{
public:
    explicit Band(const Song& song);

    /// The whole song, not yet finished in level.
    Stage perform();

private:
    int beats() const;
    int beatsOf(int bar) const;

    double secondsOf(double beats) const { return beats * 60 / song_.bpm; }

    std::size_t at(int bar, double beat) const { return sampleOf(song_, bar * beatsInBar + beat); }

    void playBar(const Section& section, int bar);
    void playKicks(const Section& section, int bar);
    void playBackbeat(const Section& section, int bar);
    void playHats(const Section& section, int bar);
    void playPad(const Section& section, int bar);
    void playBass(const Section& section, int bar);
    void playArpeggio(const Section& section, int bar);
    void playLead(const Section& section, int bar);

    Song song_;
    std::mt19937 dice_;
    DrumKit kit_;
    Harmony harmony_;
    Melody melody_;
    unsigned style_;
    std::vector<std::size_t> kicks_;
    Stage drums_;
    Stage bass_;
    Stage pad_;
    Stage lead_;
};

} // namespace orvane::demo
