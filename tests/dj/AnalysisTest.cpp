#include "dj/Analysis.h"

#include "demonstration/music/Song.h"
#include "dj/Failure.h"
#include "mastering/Master.h"
#include "platform/filesystem/FileError.h"
#include "platform/sound/SoundError.h"
#include "tests/dj/KnownTrack.h"
#include "tests/mastering/arithmetic/Signals.h"
#include "tests/platform/sound/Program.h"
#include "tests/support/TestFolder.h"

#include <cmath>
#include <future>
#include <gmock/gmock.h>

using namespace orvane;
using namespace orvane::test;
using namespace Qt::Literals::StringLiterals;
using DJ::Analysis;

namespace {

constexpr double rate = 44100.0;
constexpr double hopSeconds = 512.0 / rate;
const QUrl somewhere = QUrl::fromLocalFile(u"/tracks/Some song.mp3"_s);

Analysis heard(const Channels& channels, double atRate = rate)
{
    return DJ::analyse(Master::Sound{.channels = channels, .sampleRate = atRate}, somewhere);
}

struct Files : testing::Test
{
    TestFolder folder;

    QUrl write(const QString& name, const Channels& channels, Master::Format format) const
    {
        const QString path = folder.path(name);
        Master::write(channels, rate, {.format = format}, path);
        return QUrl::fromLocalFile(path);
    }
};

/// A kit with a chord over it.
Channels knownSong(double bpm)
{
    const KnownTrack drums = playKit({.bpm = bpm, .pattern = Pattern::Backbeat, .seconds = 20.0, .intro = 0.4});
    const Samples chords = playChords({.tonic = 5, .minor = true, .seconds = 20.0});
    Channels channels(2, drums.samples);
    for (std::size_t frame = 0; frame < chords.size(); ++frame) {
        channels[0][frame] = 0.5 * (channels[0][frame] + chords[frame]);
        channels[1][frame] = 0.5 * (channels[1][frame] + 0.9 * chords[frame]);
    }
    return channels;
}

} // namespace

TEST(Analyse, aMonoFileAnalysesFromItsOnlyChannel)
{
    const Samples left = music(5.0, rate).front();
    EXPECT_EQ(heard({left}), heard({left, left}));
}

TEST(Analyse, aFileOfSixChannelsUsesTheFirstTwo)
{
    Channels six = music(5.0, rate, 6);
    const Analysis all = heard(six);
    EXPECT_EQ(all, heard({six[0], six[1]}));
    six[2] = noise(six[2].size(), 0.5);
    EXPECT_EQ(heard(six), all);
    std::swap(six[1], six[2]);
    EXPECT_NE(heard(six), all);
}

TEST(Analyse, pureSilenceYieldsTheTempoOfTheShortestLag)
{
    const Analysis silent = heard({silence(441'000), silence(441'000)});
    // Lag 29; and of equal combs the shortest period, 2 % under that.
    EXPECT_NEAR(silent.bpm, 60.0 / hopSeconds / 29.0 / 0.98, 1e-9);
    EXPECT_DOUBLE_EQ(silent.grid.phase, hopSeconds);
    EXPECT_EQ(silent.grid.cueIn, 0.0);
    EXPECT_EQ(silent.key, DJ::Key{});
    EXPECT_EQ(silent.energy, 0.0);
    EXPECT_EQ(silent.duration, 10.0);
}

TEST(Analyse, aSignalOf1024SamplesIsAt120WithAGridOfZeros)
{
    const Analysis found = heard({noise(1024, 0.3)});
    EXPECT_EQ(found.bpm, 120.0);
    EXPECT_EQ(found.grid, DJ::Grid{.bpm = 120.0});
    EXPECT_EQ(found.key, DJ::Key{});
    EXPECT_GT(found.energy, 0.0);
}

TEST(Analyse, aFourOnTheFloorKickAt128ComesOutNear128AndNot64Or256)
{
    const Analysis found = heard({playKit({.bpm = 128.0, .pattern = Pattern::KickAlone, .intro = 0.1}).samples});
    EXPECT_NEAR(found.bpm, 128.0, 1.28);
}

TEST(Analyse, aTrackWithALongSilentIntroStartsAtABarLineAtOrAfterItsCue)
{
    const Analysis found = heard({playKit({.bpm = 128.0, .seconds = 30.0, .intro = 12.0}).samples});
    EXPECT_NEAR(found.grid.cueIn, 12.0, 2.5 * hopSeconds);
    EXPECT_GE(found.grid.firstBar(), found.grid.cueIn);
    EXPECT_LT(found.grid.firstBar(), found.grid.cueIn + found.grid.barSeconds());
    const double bars = (found.grid.firstBar() - found.grid.phase) / found.grid.beatSeconds() - found.grid.downbeat;
    EXPECT_NEAR(std::remainder(bars, 4.0), 0.0, 1e-6);
}

TEST(Analyse, bothTempiAreTheGridsOwnAndNothingIsPlayedYet)
{
    const Analysis found = heard(knownSong(96.0));
    EXPECT_EQ(found.bpm, found.grid.bpm);
    EXPECT_NEAR(found.bpm, 96.0, 0.96);
    EXPECT_EQ(found.playedBPM, 0.0);
    EXPECT_DOUBLE_EQ(found.duration, 20.0);
    EXPECT_EQ(found.url, somewhere);
}

TEST(Analyse, aTrackIsCalledAsToldOrByItsFileWithoutTheExtension)
{
    const auto titleOf = [](const QString& fileName) {
        return DJ::analyse(Master::Sound{.channels = {silence(10)}, .sampleRate = rate},
                           QUrl::fromLocalFile(u"/tracks.old/"_s + fileName))
            .title;
    };
    EXPECT_EQ(titleOf(u"007 - A.B.C.mp3"_s), u"007 - A.B.C"_s);
    EXPECT_EQ(titleOf(u"No extension"_s), u"No extension"_s);
    EXPECT_EQ(titleOf(u".hidden"_s), u".hidden"_s);
    EXPECT_EQ(titleOf(u"Ends with a dot."_s), u"Ends with a dot."_s);
    EXPECT_EQ(titleOf(u"50% #1?.wav"_s), u"50% #1?"_s);
    const Master::Sound sound{.channels = {silence(10)}, .sampleRate = rate};
    EXPECT_EQ(DJ::analyse(sound, somewhere, u"Called so"_s).title, u"Called so"_s);
    EXPECT_EQ(DJ::analyse(sound, somewhere, u""_s).title, u""_s);
}

TEST(Analyse, whatDecodesToNothingIsUnreadable)
{
    for (const Channels& nothing : {Channels{}, Channels{{}}, Channels{{}, {}}}) {
        try {
            heard(nothing);
            ADD_FAILURE() << "nothing was thrown";
        } catch (const DJ::Failure& failure) {
            EXPECT_EQ(failure.code(), DJ::Failure::Unreadable);
            EXPECT_EQ(failure.sentence(), u"Some song.mp3 could not be read as audio."_s);
        }
    }
}

TEST_F(Files, anErrorOfReadingGoesOutUnchanged)
{
    const auto url = [this](const QString& name) { return QUrl::fromLocalFile(folder.path(name)); };
    EXPECT_THROW(DJ::analyse(url(u"gone.mp3"_s)), FileError);
    folder.write(u"page.mp3"_s, "<html>");
    EXPECT_THROW(DJ::analyse(url(u"page.mp3"_s)), SoundError);
    folder.write(u"empty.mp3"_s, "");
    EXPECT_ANY_THROW(DJ::analyse(url(u"empty.mp3"_s)));
}

TEST_F(Files, theSameFileGivesTheSameRecord)
{
    const QUrl url = write(u"one.flac"_s, knownSong(110.0), Master::Format::flac);
    const Analysis first = DJ::analyse(url);
    EXPECT_EQ(first, DJ::analyse(url));
    EXPECT_EQ(first.title, u"one"_s);
}

TEST_F(Files, aFileIsHeardAsItsSoundIs)
{
    const Channels six = music(5.0, rate, 6);
    for (const std::size_t count : {1u, 2u, 6u}) {
        const QUrl url = write(u"some.wav"_s, Channels(six.begin(), six.begin() + count), Master::Format::wav);
        const Master::Sound sound = Master::read(url.toLocalFile());
        EXPECT_EQ(sound.channels.size(), count);
        EXPECT_EQ(DJ::analyse(url), DJ::analyse(sound, url));
    }
}

TEST_F(Files, severalThreadsHearWhatOneHears)
{
    const QUrl url = write(u"one.wav"_s, knownSong(132.0), Master::Format::wav);
    std::vector<std::future<Analysis>> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.push_back(std::async(std::launch::async, [&url] { return DJ::analyse(url); }));
    const Analysis alone = DJ::analyse(url);
    for (auto& thread : threads)
        EXPECT_EQ(thread.get(), alone);
}

TEST_F(Files, mp3FlacAndWavOfOneTrackHaveTheSameTempoAndKey)
{
    for (const double bpm : {96.0, 126.0}) {
        const Channels song = demo::compose({.bpm = bpm, .tonic = 9, .minor = true, .seconds = 24.0, .seed = 5});
        const Analysis plain = DJ::analyse(write(u"song.wav"_s, song, Master::Format::wav));
        const Analysis packed = DJ::analyse(write(u"song.flac"_s, song, Master::Format::flac));
        const Analysis lossy = DJ::analyse(write(u"song.mp3"_s, song, Master::Format::mp3));
        EXPECT_EQ(packed.grid, plain.grid);
        EXPECT_EQ(packed.key, plain.key);
        EXPECT_NEAR(lossy.bpm, plain.bpm, 0.001 * plain.bpm);
        EXPECT_EQ(lossy.key, plain.key);
    }
}

TEST_F(Files, anMp3ThatTellsItsDelayHasItsBeatsWhereTheWavHasThem)
{
    for (const double bpm : {96.0, 126.0}) {
        const Channels song = demo::compose({.bpm = bpm, .tonic = 9, .minor = true, .seconds = 24.0, .seed = 5});
        const QUrl wav = write(u"song.wav"_s, song, Master::Format::wav);
        const QUrl mp3 = QUrl::fromLocalFile(folder.path(u"song.mp3"_s));
        ASSERT_EQ(run(u"lame"_s, {u"--quiet"_s, u"-b"_s, u"192"_s, wav.toLocalFile(), mp3.toLocalFile()}).exitCode, 0);
        const Analysis plain = DJ::analyse(wav);
        const Analysis lossy = DJ::analyse(mp3);
        EXPECT_EQ(lossy.duration, plain.duration);
        EXPECT_NEAR(lossy.bpm, plain.bpm, 0.001 * plain.bpm);
        // The combs are a quarter of a frame apart; the delay would be more than two frames.
        EXPECT_NEAR(lossy.grid.phase, plain.grid.phase, 0.5 * hopSeconds);
        EXPECT_EQ(lossy.key, plain.key);
    }
}
