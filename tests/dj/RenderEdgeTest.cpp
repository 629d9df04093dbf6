#include "mastering/Master.h"
#include "platform/filesystem/FileError.h"
#include "tests/dj/MixFiles.h"
#include "tests/mastering/arithmetic/Reference.h"
#include "tests/mastering/arithmetic/Signals.h"

#include <QDir>

#include <cmath>

using namespace orvane;
using namespace orvane::test;
using namespace Qt::Literals::StringLiterals;
using DJ::MixSettings;

namespace {

constexpr double rate = 44100.0;
constexpr std::size_t bar = 88'200;

/// Neither tempo nor level is touched.
const MixSettings plainly{.matchTempo = false, .levelMatch = false};

Channels steady(std::size_t frames, double value)
{
    return Channels(2, Samples(frames, value));
}

struct Render : MixFiles
{
    /// What a render throws, in words.
    std::string failureOf(const DJ::Set& set, const MixSettings& settings = plainly) const
    {
        try {
            render(set, settings);
            return "";
        } catch (const std::exception& error) {
            return Master::sentenceOf(error).toStdString();
        }
    }

    QStringList mixes() const { return QDir(out()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot); }

    DJ::Set noises(int count) const { return MixFiles::noises(count, double(7 * bar) / 44100.0); }
};

} // namespace

TEST_F(Render, aSetOfOneTrackHasNoBlendAndNoMoveAndItsLastFadeFramesAreFadedOut)
{
    const DJ::Mix mix = render({track({u"one"_s}, steady(10 * bar, 0.5))}, plainly);
    EXPECT_TRUE(mix.moves.isEmpty());
    EXPECT_EQ(mix.duration, 20.0);
    const Channels found = heard(mix);
    for (std::size_t frame = 0; frame < 10 * bar; ++frame) {
        const double in = std::min(double(frame) / (2.0 * rate), 1.0);
        const double out = frame < 6 * bar ? 1.0 : 1.0 - double(frame - 6 * bar) / double(4 * bar);
        ASSERT_EQ(found[0][frame], in24Bits(0.5 * in * out)) << frame;
    }
}

TEST_F(Render, aTrackShorterThanThreeBarsIsAHardCutThatLosesTheOldTail)
{
    const DJ::Set set{track({u"long"_s}, steady(10 * bar, 0.5)), track({u"short"_s}, steady(3 * bar - 1, 0.25))};
    MixSettings settings = plainly;
    settings.fadeEdges = false;
    const DJ::Mix mix = render(set, settings);
    ASSERT_EQ(mix.moves.size(), 1);
    EXPECT_EQ(mix.moves[0].atSeconds, 12.0);
    const Channels found = heard(mix);
    ASSERT_EQ(found[0].size(), 8 * bar);
    EXPECT_EQ(found[0][6 * bar - 1], 0.5);
    EXPECT_EQ(found[0][6 * bar], 0.25);
    expectPlain(set, settings);
}

TEST_F(Render, matchTempoOffChangesNoTrackInSpeedAndLeavesUnmatchedEmpty)
{
    const DJ::Set set{track({u"slow"_s, 80.0}, music(12.0, rate)), track({u"fast"_s, 150.0}, music(11.0, rate)),
                      track({u"middle"_s, 120.0}, music(10.0, rate))};
    const DJ::Mix mix = render(set, plainly);
    EXPECT_THAT(tracklist(mix).toStdString(), testing::Not(testing::HasSubstr("not matched")));
    for (const DJ::Move& move : mix.moves)
        EXPECT_EQ(std::fmod(std::round(move.atSeconds * rate), double(bar)), 0.0);
    expectPlain(set, plainly);
}

TEST_F(Render, aTrackThirtyPerCentAwayPlaysSixPerCentNearerIsListedAndKeepsItsIntro)
{
    Channels sound(2, Samples(20 * 44'100, 0.0));
    sound[0][44'100] = 0.5;
    const DJ::Set set{track({u"far"_s, 84.0, {}, 1.5}, sound), track({u"b"_s}, music(5.0, rate)),
                      track({u"c"_s}, music(5.0, rate))};
    MixSettings settings;
    settings.levelMatch = false;
    settings.fadeEdges = false;
    settings.preservePitch = false;
    const DJ::Mix mix = render(set, settings);
    EXPECT_THAT(tracklist(mix).toStdString(),
                testing::HasSubstr("01. far  [8B · 84 BPM]  0:00  (tempo not matched)\n02. b  [8B · 120 BPM]  "));
    const Samples left = heard(mix)[0];
    const auto loudest = std::max_element(left.begin(), left.begin() + 3 * 44'100);
    EXPECT_NEAR(double(loudest - left.begin()), 44'100.0 / 1.06, 1.0);
    expectPlain(set, settings);
    settings.preservePitch = true;
    expectPlain(set, settings);
}

TEST_F(Render, preservePitchOffAtTwentyPerCentStopsAtEight)
{
    const DJ::Set set{track({u"off"_s, 104.3}, music(8.0, rate)), track({u"b"_s}, music(5.0, rate)),
                      track({u"c"_s}, music(5.0, rate))};
    const MixSettings settings{.levelMatch = false, .maxStretch = 0.2, .preservePitch = false};
    EXPECT_DOUBLE_EQ(DJ::asMixed(set, settings)[0].playedBPM, 120.0);
    EXPECT_THAT(tracklist(render(set, settings)).toStdString(), testing::HasSubstr("0:00  (tempo not matched)\n"));
    expectPlain(set, settings);
    MixSettings keeping = settings;
    keeping.preservePitch = true;
    EXPECT_THAT(tracklist(render(set, keeping)).toStdString(), testing::Not(testing::HasSubstr("not matched")));
}

TEST_F(Render, stoppingOnTheLastTracksBlendStillWritesTheWholeOfThatTrack)
{
    const DJ::Set set = noises(3);
    const QByteArray whole = (render(set, plainly), folder.read(u"mixes/Orvane DJ Mix.wav"_s));
    DJ::Stopper stopper;
    const auto stopOnTheLast = [&](const QString& title, double) {
        if (title == u"track 2")
            stopper.stop();
    };
    DJ::render(
        set, plainly, out(), DJ::usualMixName(), [&] { return stopper.isStopped(); }, stopOnTheLast);
    EXPECT_TRUE(stopper.isStopped());
    EXPECT_TRUE(folder.read(u"mixes/Orvane DJ Mix.wav"_s) == whole);
}

TEST_F(Render, aStopAtEveryTrackBorderLeavesNothing)
{
    const DJ::Set set = noises(4);
    for (const Master::Format format : Master::allFormats) {
        MixSettings settings = plainly;
        settings.format = format;
        for (int last = 0; last < 4; ++last) {
            int asked = 0;
            QStringList begun;
            try {
                DJ::render(
                    set, settings, out(), u"stopped"_s, [&] { return asked++ == last; },
                    [&](const QString& title, double) { begun.append(title); });
                ADD_FAILURE() << "it was not stopped";
            } catch (const DJ::Failure& failure) {
                EXPECT_EQ(failure.code(), DJ::Failure::Cancelled);
                EXPECT_EQ(failure.sentence(), u"Stopped."_s);
            }
            EXPECT_EQ(begun.size(), last);
            EXPECT_EQ(mixes(), QStringList());
        }
    }
}

TEST_F(Render, progressIsToldBeforeEachTrackAndOnceAtTheEnd)
{
    QStringList told;
    int asked = 0;
    DJ::render(
        noises(4), plainly, out(), u"a"_s,
        [&] {
            ++asked;
            return false;
        },
        [&](const QString& title, double fraction) {
            told.append(u"%1 %2 after %3"_s.arg(title, QString::number(fraction), QString::number(asked)));
        });
    EXPECT_EQ(told, (QStringList{u"track 0 0 after 1"_s, u"track 1 0.25 after 2"_s, u"track 2 0.5 after 3"_s,
                                 u"track 3 0.75 after 4"_s, u" 1 after 4"_s}));
}

TEST_F(Render, aSourceAt48000IsResampledByLinearInterpolationBeforeAnythingElse)
{
    const Channels sound = music(9.0, 48000.0);
    const DJ::Set set{track({u"a"_s}, sound, 48000.0)};
    MixSettings settings = plainly;
    settings.fadeEdges = settings.beatMatch = false;
    EXPECT_EQ(heard(render(set, settings)), in24Bits({Reference::resample(in24Bits(sound)[0], 48000.0 / 44100.0),
                                                      Reference::resample(in24Bits(sound)[1], 48000.0 / 44100.0)}));
}

TEST_F(Render, twoTracksWithTheSameTitleShareTheirEntries)
{
    const DJ::Set set{track({u"same"_s, 84.0}, music(6.0, rate), rate, u"first"_s),
                      track({u"other"_s, 120.0}, music(5.0, rate)),
                      track({u"same"_s, 120.0, {.tonic = 9}}, music(6.0, rate), rate, u"second"_s)};
    const std::string list = tracklist(render(set, {.keyNudge = 2})).toStdString();
    EXPECT_THAT(list, testing::HasSubstr("01. same  [6B · 84 BPM]  0:00  (tempo not matched)  "
                                         "(-2 semitones, from 8B)\n"));
    EXPECT_THAT(list, testing::HasSubstr("  (tempo not matched)  (-2 semitones, from 11B)"));
}

TEST_F(Render, theBlendOfAFiveSecondTrackIsLimitedByAThirdOfItsLength)
{
    const DJ::Set set{track({u"long"_s}, steady(10 * bar, 0.5)), track({u"five"_s}, steady(220'500, 0.25))};
    MixSettings settings = plainly;
    settings.fadeEdges = settings.beatMatch = settings.filterSweep = false;
    const Samples free = heard(render(set, settings))[0];
    const std::size_t start = 10 * bar - 352'800;
    EXPECT_EQ(free[start + 73'499], 0.25);
    EXPECT_GT(free[start + 73'498], 0.25);
    expectPlain(set, settings);
    settings.beatMatch = true;
    expectPlain(set, settings);
}

TEST_F(Render, aSignalOf8192SamplesOrFewerIsNeitherStretchedNorPitchShifted)
{
    const DJ::Set set{track({u"a"_s, 120.0}, music(6.0, rate)), track({u"b"_s, 124.0}, music(6.0, rate)),
                      track({u"tiny"_s, 118.0, {.tonic = 9}}, {noise(8192, 0.1)})};
    const MixSettings settings{.levelMatch = false, .fadeEdges = false, .keyNudge = 2};
    const DJ::Mix mix = render(set, settings);
    const Samples left = heard(mix)[0];
    EXPECT_EQ(Samples(left.end() - 8192, left.end()), in24Bits({noise(8192, 0.1)})[0]);
    EXPECT_THAT(tracklist(mix).toStdString(), testing::HasSubstr("(-2 semitones, from 11B)"));
    expectPlain(set, settings);
}

TEST_F(Render, anEmptySetFailsAndLeavesNothingOnDisk)
{
    EXPECT_EQ(failureOf({}), "There are no tracks to mix.");
    EXPECT_EQ(folder.names(), QStringList());
}

TEST_F(Render, theFolderIsMadeWithThoseAboveItOrItsErrorGoesOut)
{
    const DJ::Set set = noises(1);
    EXPECT_TRUE(QFile::exists(DJ::render(set, plainly, folder.path(u"a/b/c"_s), u"mix"_s).url.toLocalFile()));
    folder.write(u"file"_s, "x");
    EXPECT_EQ(errorOf([&] { DJ::render(set, plainly, folder.path(u"file/b"_s)); }), ENOTDIR);
}

TEST_F(Render, aTrackThatFailsHalfwayLeavesAShorterMixWithoutATracklist)
{
    DJ::Set set = noises(4);
    for (const Master::Format format : Master::allFormats) {
        MixSettings settings = plainly;
        settings.format = format;
        const QString name = u"Orvane DJ Mix."_s + extension(format);
        render(set.first(2), settings);
        const double two = double(Master::read(out() + u'/' + name).channels[0].size());
        QDir(out()).removeRecursively();
        DJ::Set broken = set;
        broken[2].url = QUrl::fromLocalFile(folder.write(u"page.wav"_s, "<html>"));
        EXPECT_THAT(failureOf(broken, settings), testing::StartsWith("page.wav: "));
        EXPECT_EQ(mixes(), QStringList{name});
        // Without the tail of its last track.
        EXPECT_NEAR(double(Master::read(out() + u'/' + name).channels[0].size()), two - 4.0 * double(bar), 3000.0);
        QDir(out()).removeRecursively();
    }
    DJ::Set gone = set;
    gone[3].url = QUrl::fromLocalFile(folder.path(u"removed meanwhile.wav"_s));
    EXPECT_EQ(failureOf(gone), "removed meanwhile.wav: No such file or directory");
    EXPECT_EQ(mixes(), QStringList{u"Orvane DJ Mix.wav"_s});
}

TEST_F(Render, aFileRemovedWhileTheMixRunsFailsWhenItsTurnComes)
{
    const DJ::Set set = noises(4);
    QStringList begun;
    const auto removeTheLast = [&](const QString& title, double) {
        begun.append(title);
        QFile::remove(set[3].url.toLocalFile());
    };
    EXPECT_EQ(errorOf([&] { DJ::render(set, plainly, out(), u"a"_s, {}, removeTheLast); }), ENOENT);
    EXPECT_EQ(begun.size(), 4);
    EXPECT_EQ(mixes(), QStringList{u"a.wav"_s});
}

TEST_F(Render, aOneSecondFileAndSilenceAreMixedAsTheyAre)
{
    const DJ::Set set{track({u"a"_s, 120.0}, music(8.0, rate)), track({u"second"_s, 118.0}, music(1.0, rate)),
                      track({u"silent"_s, 122.0}, steady(12 * 44'100, 0.0)), track({u"b"_s, 121.0}, music(7.0, rate))};
    expectPlain(set, {.keyNudge = 2});
    expectPlain({set[2]}, {});
    EXPECT_EQ(Master::largestMagnitude(heard(render({set[2]}, {}))), 0.0);
}

TEST_F(Render, aTracklistThatCannotBeWrittenLeavesTheMix)
{
    folder.write(u"mixes/a.txt/inside"_s, "x");
    EXPECT_EQ(errorOf([&] { DJ::render(noises(1), plainly, out(), u"a"_s); }), EISDIR);
    EXPECT_EQ(mixes(), (QStringList{u"a.txt"_s, u"a.wav"_s}));
}

TEST_F(Render, aFolderOfTheMixsNameIsRefusedAtOnce)
{
    folder.write(u"mixes/a.wav/inside"_s, "x");
    int asked = 0;
    const auto count = [&] { return ++asked < 0; };
    EXPECT_EQ(errorOf([&] { DJ::render(noises(1), plainly, out(), u"a"_s, count); }), EISDIR);
    EXPECT_EQ(asked, 0);
    EXPECT_EQ(mixes(), QStringList{u"a.wav"_s});
    EXPECT_EQ(folder.read(u"mixes/a.wav/inside"_s), "x");
}

TEST_F(Render, aNameInAnotherFolderIsRefused)
{
    for (const QString& name : {u"../a"_s, u"/a"_s, u"a/b"_s, QString(u"a\0b"_s)})
        EXPECT_EQ(errorOf([&] { DJ::render(noises(1), plainly, out(), name); }), EINVAL) << name.toStdString();
    EXPECT_EQ(mixes(), QStringList());
}

TEST_F(Render, anEarlierMixOfThatNameIsRemovedFirst)
{
    folder.write(u"mixes/a.wav"_s, "earlier");
    bool wasThere = true;
    const auto look = [&](const QString&, double fraction) {
        wasThere = wasThere && (fraction == 1.0 || QFile::exists(out() + u"/a.wav"_s));
    };
    DJ::render(noises(2), plainly, out(), u"a"_s, {}, look);
    EXPECT_FALSE(wasThere);
    EXPECT_EQ(mixes(), (QStringList{u"a.txt"_s, u"a.wav"_s}));
    EXPECT_NE(folder.read(u"mixes/a.wav"_s), "earlier");
}

TEST_F(Render, theSoundIsStagedBesideItsNameUntilItIsWhole)
{
    QStringList seen;
    const auto look = [&](const QString&, double fraction) {
        if (fraction == 0.5)
            seen = mixes();
    };
    DJ::render(noises(2), plainly, out(), u"a"_s, {}, look);
    EXPECT_EQ(seen, QStringList{u".a.wav.new"_s});
    EXPECT_EQ(mixes(), (QStringList{u"a.txt"_s, u"a.wav"_s}));
}

TEST_F(Render, aWatermarkWhoseFileVanishedLeavesTheMixWithoutATag)
{
    const DJ::Set set = noises(2);
    MixSettings settings = plainly;
    settings.watermark = {.isOn = true, .file = folder.path(u"vanished.wav"_s)};
    EXPECT_EQ(heard(render(set, settings)), heard(render(set, plainly)));
    settings.watermark.file = folder.write(u"no sound.wav"_s, "x");
    EXPECT_EQ(heard(render(set, settings)), heard(render(set, plainly)));
}

TEST_F(Render, theSameSetGivesTheSameBytes)
{
    const DJ::Set set{track({u"a"_s, 120.0}, music(6.0, rate)), track({u"b"_s, 124.0, {.tonic = 9}}, music(6.0, rate)),
                      track({u"c"_s, 118.0}, music(6.0, 48000.0), 48000.0)};
    for (const Master::Format format : Master::allFormats) {
        MixSettings settings{.keyNudge = 2, .format = format};
        settings.watermark = {.isOn = true, .file = set[0].url.toLocalFile(), .placement = {.count = 1}};
        const DJ::Mix mix = render(set, settings);
        const QString name = u"mixes/"_s + mix.url.fileName();
        const QByteArray first = folder.read(name);
        EXPECT_EQ(render(set, settings), mix);
        EXPECT_TRUE(folder.read(name) == first) << name.toStdString();
    }
}

TEST_F(Render, aTitleWithLineBreaksStaysOneLine)
{
    DJ::Set set = noises(2);
    set[0].title = u"first\nsecond\r\nthird"_s;
    EXPECT_EQ(tracklist(render(set, plainly)).split(u'\n').size(), 5);
    EXPECT_EQ(tracklist(render(set, plainly)).split(u'\n')[3], u"01. first second third  [8B · 120 BPM]  0:00"_s);
}

TEST_F(Render, anMp3ThatCannotBeBegunHasNoTracksToMix)
{
    folder.write(u"mixes/a.mp3/inside"_s, "x");
    MixSettings settings = plainly;
    settings.format = Master::Format::mp3;
    try {
        DJ::render(noises(1), settings, out(), u"a"_s);
        ADD_FAILURE() << "it was begun";
    } catch (const DJ::Failure& failure) {
        EXPECT_EQ(failure.code(), DJ::Failure::Empty);
        EXPECT_EQ(failure.sentence(), u"There are no tracks to mix."_s);
    }
}
