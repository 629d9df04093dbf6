#pragma once

#include "tests/dj/MixReference.h"
#include "tests/support/TestFolder.h"

#include <gmock/gmock.h>

namespace orvane::test {

/// What a 24-bit file holds of a sample.
double in24Bits(double sample);
Channels in24Bits(Channels channels);

/// What is known of a track that a test makes; its grid is told, not heard.
struct Told
{
    QString title;
    double bpm = 120.0;
    DJ::Key key;
    double phase = 0.0;
    int downbeat = 0;
    double cueIn = 0.0;
};

/// Tracks in files of their own, with records, and the folder that mixes of them go to.
struct MixFiles : testing::Test
{
    TestFolder folder;

    /// Writes the track as a 24-bit WAV; its file is called by `title`, or `fileName` where there is one.
    DJ::Analysis track(const Told& told, const Channels& channels, double rate = 44100.0,
                       const QString& fileName = {}) const;

    /// That many tracks of `seconds` of quiet stereo noise, called "track 0" and so on.
    DJ::Set noises(int count, double seconds) const;

    /// The sound of the mix with that name.
    Channels heard(const DJ::Mix& mix) const;
    /// The tracklist of the mix with that name.
    QString tracklist(const DJ::Mix& mix) const;

    DJ::Mix render(const DJ::Set& set, const DJ::MixSettings& settings) const;

    /// The set's tracks as they are read.
    static QList<PlainTrack> plain(const DJ::Set& set);

    /// Expects of the mix what the plain definition says, to the last bit of a 24-bit file.
    void expectPlain(const DJ::Set& set, const DJ::MixSettings& settings, const Channels& tag = {},
                     const std::vector<std::int64_t>& hits = {}) const;

    QString out() const { return folder.path(QStringLiteral("mixes")); }
};

/// Levels by the program's own chain, which has a plain definition of its own.
void levelled(double target, double ceiling, Channels& channels);

} // namespace orvane::test
