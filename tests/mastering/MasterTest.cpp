#include "mastering/Master.h"

#include "mastering/arithmetic/TruePeak.h"
#include "platform/filesystem/FileError.h"
#include "tests/mastering/arithmetic/Signals.h"
#include "tests/platform/sound/SoundFiles.h"
#include "tests/support/TestFolder.h"

#include <QFile>

#include <cmath>
#include <csignal>
#include <gmock/gmock.h>
#include <limits>
#include <sys/resource.h>

using namespace orvane;
using namespace orvane::test;
using namespace Qt::Literals::StringLiterals;
using Master::Format;
using Master::Placement;
using Master::Watermark;

namespace {

constexpr double rate = 44100.0;

struct Mastering : testing::Test
{
    TestFolder folder;

    QString floatWav(const QString& name, const Channels& channels, double sampleRate = rate) const
    {
        std::vector<float> samples;
        for (std::size_t frame = 0; frame < channels.front().size(); ++frame) {
            for (const auto& channel : channels)
                samples.push_back(float(channel[frame]));
        }
        return folder.write(name, wav(floatBytes(samples), int(sampleRate), int(channels.size()), 32, WavKind::Float));
    }

    Master::Result master(const QString& input, double target, double ceiling, const Watermark& watermark = {}) const
    {
        return Master::master(input, folder.path(u"out.wav"_s), target, ceiling, {.format = Format::wav}, watermark);
    }

    Channels output() const { return Master::read(folder.path(u"out.wav"_s)).channels; }
};

Master::Failure failureOfReading(const QString& path)
{
    try {
        Master::read(path);
    } catch (const Master::Failure& failure) {
        return failure;
    }
    return {Master::Failure::Mp3Failed, u"it was read"_s};
}

} // namespace

TEST_F(Mastering, aFileComesOutAtItsTargetWithTheReadingsOfItsSound)
{
    const Channels input = music(6.0, rate);
    const QString path = floatWav(u"in.wav"_s, input);
    const Master::Result result = master(path, -23.0, -1.0);
    EXPECT_EQ(result.before, Master::measure(Master::read(path).channels, rate));
    EXPECT_FALSE(result.limited);
    EXPECT_NEAR(Master::measure(output(), rate).integrated, -23.0, 0.001);
    EXPECT_EQ(output().front().size(), input.front().size());
}

TEST_F(Mastering, aFileIsMeasuredWhileItIsReadAsItIsAfterwards)
{
    for (const std::size_t frames : {1u, 30u, 1023u, 65'535u, 65'536u, 65'537u, 200'000u}) {
        const QString path = floatWav(u"in.wav"_s, {noise(frames, 0.2), noise(frames, 0.1, 1)});
        const Master::Sound wanted = Master::read(path);
        const Master::MeasuredSound found = Master::readAndMeasure(path);
        EXPECT_EQ(found.sound.channels, wanted.channels);
        EXPECT_EQ(found.sound.sampleRate, wanted.sampleRate);
        EXPECT_EQ(found.reading, Master::measure(wanted.channels, wanted.sampleRate)) << frames;
    }
}

TEST_F(Mastering, damageFarIntoAFileIsToldInItsWordsAndLeavesTheEarlierMaster)
{
    const Channels input = music(6.0, rate);
    const QString path = folder.path(u"in.flac"_s);
    Master::write(input, rate, {.format = Format::flac}, path);
    QByteArray bytes = folder.read(u"in.flac"_s);
    bytes.replace(bytes.size() / 2, 2000, QByteArray(2000, 'x'));
    folder.write(u"in.flac"_s, bytes);
    folder.write(u"out.wav"_s, "earlier");
    try {
        master(path, -14.0, -1.0);
        ADD_FAILURE() << "it was mastered";
    } catch (const std::exception& error) {
        EXPECT_THAT(Master::sentenceOf(error).toStdString(), testing::StartsWith("in.flac: "));
    }
    EXPECT_EQ(folder.read(u"out.wav"_s), "earlier");
    EXPECT_EQ(folder.names(), (QStringList{u"in.flac"_s, u"out.wav"_s}));
}

TEST_F(Mastering, theReadingsAreThoseOfTheSoundAsItIsMastered)
{
    const QString track = floatWav(u"in.wav"_s, music(5.0, rate));
    const QString tag = floatWav(u"tag.wav"_s, {tone(997.0, -3.0, 1.0, rate)});
    const Watermark watermark{.isOn = true, .file = tag, .level = -6.0, .placement = Placement::timesAcross(2)};
    for (const double target : {-9.0, -23.0}) {
        for (const Watermark& mark : {Watermark{.placement = {}}, watermark}) {
            Master::Sound sound = Master::read(track);
            EXPECT_EQ(Master::applyWatermark(mark, sound.channels, rate, 1), mark.isOn ? 2 : 0);
            EXPECT_EQ(master(track, target, -1.0, mark), Master::apply(target, -1.0, sound.channels, rate));
        }
    }
}

TEST_F(Mastering, theOutputHoldsTheCeiling)
{
    const Master::Result result = master(floatWav(u"in.wav"_s, music(6.0, rate)), -9.0, -1.0);
    EXPECT_TRUE(result.limited);
    EXPECT_LE(Master::peakDB(output(), rate), -1.0 + 0.011);
}

TEST_F(Mastering, rateAndChannelsStayTheFilesOwn)
{
    const QString path = floatWav(u"in.wav"_s, music(3.0, 22050.0, 3), 22050.0);
    master(path, -20.0, -1.0);
    const Master::Sound sound = Master::read(folder.path(u"out.wav"_s));
    EXPECT_EQ(sound.sampleRate, 22050.0);
    EXPECT_EQ(sound.channels.size(), 3u);
}

TEST_F(Mastering, silenceAndShortFilesComeOutAsTheyWere)
{
    for (const std::size_t frames : {1u, 5u, 32u, 33u, 10'000u}) {
        Channels input{Samples(frames, 0.25)};
        const Master::Result result = master(floatWav(u"in.wav"_s, input), -5.0, -1.0);
        EXPECT_EQ(output(), input);
        EXPECT_EQ(result.gainApplied, 0.0);
        EXPECT_EQ(result.before.integrated, Master::minusInfinity);
        // The start and the end of a step ring; too few frames for that show their samples.
        EXPECT_GE(result.before.truePeak, result.before.samplePeak);
        EXPECT_NEAR(result.before.samplePeak, -12.04, 0.01);
    }
    master(floatWav(u"in.wav"_s, {silence(100'000)}), -5.0, -1.0);
    EXPECT_EQ(output(), (Channels{silence(100'000)}));
}

TEST_F(Mastering, whatIsNoNumberIsMasteredAsSilence)
{
    Channels input = music(3.0, rate, 1);
    input[0][50'000] = std::nan("");
    input[0][60'000] = std::numeric_limits<double>::infinity();
    const Master::Result result = master(floatWav(u"in.wav"_s, input), -20.0, -1.0);
    EXPECT_NEAR(Master::measure(output(), rate).integrated, -20.0, 0.001);
    EXPECT_EQ(output()[0][50'000], 0.0);
    EXPECT_TRUE(std::isfinite(result.before.truePeak));
}

TEST_F(Mastering, theWatermarkGoesInBeforeTheGain)
{
    const QString tag = floatWav(u"tag.wav"_s, {tone(1500.0, -3.0, 1.0, 16000.0)}, 16000.0);
    const Watermark watermark{.isOn = true, .file = tag, .level = 0.0, .placement = Placement::timesAcross(3)};
    const QString track = floatWav(u"in.wav"_s, {tone(220.0, -20.0, 8.0, rate), tone(220.0, -20.0, 8.0, rate)});
    const Master::Result without = master(track, -23.0, -1.0);
    const Master::Result with = master(track, -23.0, -1.0, watermark);
    EXPECT_GT(with.before.integrated, without.before.integrated + 0.3);
    EXPECT_NEAR(Master::measure(output(), rate).integrated, -23.0, 0.001);
    EXPECT_EQ(output()[0], output()[1]);
}

TEST_F(Mastering, aTagThatCannotBeReadStopsNoMaster)
{
    const QString track = floatWav(u"in.wav"_s, music(3.0, rate));
    const Master::Result without = master(track, -20.0, -1.0);
    const QByteArray wanted = folder.read(u"out.wav"_s);
    const Watermark gone{.isOn = true, .file = folder.path(u"gone.wav"_s), .placement = {}};
    EXPECT_EQ(master(track, -20.0, -1.0, gone), without);
    EXPECT_EQ(folder.read(u"out.wav"_s), wanted);
    const Watermark page{.isOn = true, .file = folder.write(u"page.wav"_s, "<html>"), .placement = {}};
    EXPECT_EQ(master(track, -20.0, -1.0, page), without);
}

TEST_F(Mastering, whatCannotBeReadLeavesTheEarlierMaster)
{
    folder.write(u"out.wav"_s, "earlier");
    EXPECT_THROW(master(folder.write(u"in.mp3"_s, "<html>"), -14.0, -1.0), std::exception);
    EXPECT_EQ(errorOf([&] { master(folder.path(u"gone.mp3"_s), -14.0, -1.0); }), ENOENT);
    EXPECT_EQ(folder.read(u"out.wav"_s), "earlier");
    EXPECT_EQ(folder.names(), (QStringList{u"in.mp3"_s, u"out.wav"_s}));
}

TEST_F(Mastering, whatIsNoMusicIsToldByItsNameAndLeavesTheEarlierMaster)
{
    folder.write(u"out.wav"_s, "earlier");
    const QStringList inputs{
        folder.write(u"empty.mp3"_s, {}),
        folder.write(u"page.mp3"_s, "<!DOCTYPE html><html><body>" + QByteArray(20'000, 'x')),
        folder.write(u"zeros.wav"_s, QByteArray(50'000, '\0')),
        folder.write(u"none.wav"_s, wav({}, 44100, 2, 16, WavKind::Integer)),
        folder.write(u"nine.wav"_s, wav(floatBytes(tones(500, 9, 44100)), 44100, 9, 32, WavKind::Float)),
        folder.write(u"fast.wav"_s, wav(floatBytes(tones(500, 1, 384000)), 384000, 1, 32, WavKind::Float)),
        folder.path(u"gone.flac"_s),
        folder.path(),
    };
    const QStringList before = folder.names();
    for (const QString& input : inputs) {
        try {
            master(input, -14.0, -1.0);
            ADD_FAILURE() << qPrintable(input) << " was mastered";
        } catch (const std::exception& error) {
            const QString name = input.section(u'/', -1);
            EXPECT_TRUE(Master::sentenceOf(error).contains(name)) << qPrintable(Master::sentenceOf(error));
        }
        EXPECT_EQ(folder.read(u"out.wav"_s), "earlier");
        EXPECT_EQ(folder.names(), before);
    }
}

TEST_F(Mastering, aFileCutAtAnySixteenthIsMasteredWholeOrLeavesTheEarlierMaster)
{
    for (const Format format : Master::allFormats) {
        const QString name = u"cut."_s + extension(format);
        Master::write(music(2.0, rate), rate, {.format = format}, folder.path(name));
        const QByteArray whole = folder.read(name);
        for (int sixteenth = 0; sixteenth < 16; ++sixteenth) {
            folder.write(name, whole.first(whole.size() * sixteenth / 16));
            folder.write(u"out.wav"_s, "earlier");
            try {
                const Master::Result result = master(folder.path(name), -23.0, -1.0);
                EXPECT_EQ(output().front().size(), Master::read(folder.path(name)).channels.front().size());
                EXPECT_NEAR(result.after.samplePeak, Master::samplePeakDB(output()), 0.01);
            } catch (const std::exception& error) {
                EXPECT_TRUE(Master::sentenceOf(error).contains(name)) << qPrintable(Master::sentenceOf(error));
                EXPECT_EQ(folder.read(u"out.wav"_s), "earlier");
            }
            EXPECT_EQ(folder.names(), (QStringList{name, u"out.wav"_s})) << qPrintable(name) << " at " << sixteenth;
        }
        QFile::remove(folder.path(name));
    }
}

TEST_F(Mastering, everyRateAndNumberOfChannelsIsMastered)
{
    for (const double hertz : {8000.0, 96000.0, 192000.0}) {
        for (const std::size_t count : {1u, 2u, 5u, 6u, 8u}) {
            master(floatWav(u"in.wav"_s, music(1.0, hertz, count), hertz), -23.0, -1.0);
            const Master::Sound sound = Master::read(folder.path(u"out.wav"_s));
            EXPECT_EQ(sound.sampleRate, hertz);
            EXPECT_EQ(sound.channels.size(), count);
            EXPECT_NEAR(Master::measure(sound.channels, hertz).integrated, -23.0, 0.001) << hertz << ", " << count;
        }
    }
}

TEST_F(Mastering, aFullDiskIsToldByTheMastersNameAndLeavesTheEarlierOne)
{
    const QString path = floatWav(u"in.wav"_s, music(3.0, rate));
    folder.write(u"out.wav"_s, "earlier");
    const int code = inChild([&] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit full = {.rlim_cur = 100'000, .rlim_max = RLIM_INFINITY};
        ::setrlimit(RLIMIT_FSIZE, &full);
        try {
            master(path, -14.0, -1.0);
        } catch (const std::exception& error) {
            return Master::sentenceOf(error) == u"out.wav: File too large"_s ? 0 : 2;
        }
        return 1;
    });
    EXPECT_EQ(code, 0);
    EXPECT_EQ(folder.read(u"out.wav"_s), "earlier");
    EXPECT_EQ(folder.names(), (QStringList{u"in.wav"_s, u"out.wav"_s}));
}

TEST_F(Mastering, aMasterThatIsMasteredAgainMovesByAHundredthOfADecibelAtMost)
{
    for (const Format format : {Format::wav, Format::flac, Format::alac}) {
        const QString out = folder.path(u"once."_s + extension(format));
        ASSERT_FALSE(
            Master::master(floatWav(u"in.wav"_s, music(4.0, rate)), out, -23.0, -1.0, {.format = format}).limited);
        const Master::Result again = master(out, -23.0, -1.0);
        EXPECT_LE(std::abs(again.gainApplied), 0.01) << qPrintable(rawValue(format));
    }
}

TEST_F(Mastering, aMasterMayReplaceItsOwnSource)
{
    const QString path = floatWav(u"in.wav"_s, music(3.0, rate));
    Master::master(path, path, -23.0, -1.0, {});
    EXPECT_NEAR(Master::measure(Master::read(path).channels, rate).integrated, -23.0, 0.001);
    EXPECT_EQ(folder.names(), QStringList{u"in.wav"_s});
}

TEST_F(Mastering, everyFormatIsMastered)
{
    const QString path = floatWav(u"in.wav"_s, music(3.0, rate));
    for (const Format format : Master::allFormats) {
        const QString out = folder.path(u"out."_s + extension(format));
        Master::master(path, out, -20.0, -1.0, {.format = format});
        EXPECT_NEAR(Master::measure(Master::read(out).channels, rate).integrated, -20.0, 0.1)
            << qPrintable(rawValue(format));
    }
}

TEST_F(Mastering, anEmptyFileIsToldByItsName)
{
    const QString path = folder.write(u"none.wav"_s, wav({}, 44100, 2, 16, WavKind::Integer));
    const Master::Failure failure = failureOfReading(path);
    EXPECT_EQ(failure.code(), 1);
    EXPECT_EQ(failure.sentence(), u"Could not read none.wav."_s);
    EXPECT_EQ(Master::Failure::domain(), u"Orvane"_s);
}

TEST_F(Mastering, aFileOfTooManyChannelsIsNotInAFormatToMaster)
{
    const QString path =
        folder.write(u"nine.wav"_s, wav(floatBytes(tones(500, 9, 44100)), 44100, 9, 32, WavKind::Float));
    const Master::Failure failure = failureOfReading(path);
    EXPECT_EQ(failure.code(), 2);
    EXPECT_EQ(failure.sentence(), u"nine.wav is not in a format this can master."_s);
}

TEST_F(Mastering, theSentenceOfAnyFailureNamesTheFile)
{
    for (const QString& path : {folder.path(u"gone.wav"_s), folder.write(u"page.wav"_s, QByteArray(5000, '<'))}) {
        try {
            Master::read(path);
            ADD_FAILURE() << "it was read";
        } catch (const std::exception& error) {
            EXPECT_TRUE(Master::sentenceOf(error).startsWith(path.section(u'/', -1) + u": "_s));
        }
    }
    EXPECT_EQ(Master::sentenceOf(std::runtime_error("other words")), u"other words"_s);
}

TEST_F(Mastering, aPreparedTagHasTheTracksRateChannelsAndLevel)
{
    const QString path = floatWav(u"tag.wav"_s, {tone(997.0, -3.0, 2.0, 16000.0)}, 16000.0);
    const Channels tag = Master::prepareTag(path, rate, 2, -18.0, -10.0);
    ASSERT_EQ(tag.size(), 2u);
    EXPECT_EQ(tag[0], tag[1]);
    EXPECT_EQ(tag[0].size(), 88'200u);
    EXPECT_NEAR(Master::measure(tag, rate).integrated, -28.0, 1e-6);
    EXPECT_EQ(Master::prepareTag(path, rate, 0, -18.0, -10.0).size(), 1u);
}

TEST_F(Mastering, aPreparedTagKeepsItsSamplesAtItsOwnRate)
{
    const Channels input{Samples(5000, 0.25)};
    const QString path = floatWav(u"tag.wav"_s, input);
    EXPECT_EQ(Master::prepareTag(path, rate + 0.5, 1, -18.0, -10.0), input);
    EXPECT_NE(Master::prepareTag(path, rate + 100.0, 1, -18.0, -10.0), input);
}

TEST_F(Mastering, aTagIsPreparedForItsTrack)
{
    const QString path = floatWav(u"tag.wav"_s, {tone(997.0, -3.0, 2.0, rate)});
    const Channels track = music(3.0, rate, 2);
    const double reference = Master::measure(track, rate).integrated;
    EXPECT_EQ(Master::prepareTag(path, track, rate, -6.0), Master::prepareTag(path, rate, 2, -6.0, reference));
    // A silent track has no loudness to be measured against.
    const Channels tag = Master::prepareTag(path, {silence(100'000)}, rate, -6.0);
    EXPECT_EQ(tag, Master::read(path).channels);
}

TEST_F(Mastering, aWatermarkTellsHowOftenItWasMixedIn)
{
    const QString path = floatWav(u"tag.wav"_s, {tone(997.0, -3.0, 1.0, rate)});
    Watermark watermark{.isOn = true, .file = path, .placement = Placement::timesAcross(4)};
    Channels track = music(8.0, rate);
    const Channels before = track;
    EXPECT_EQ(Master::applyWatermark(watermark, track, rate, 1), 4);
    EXPECT_NE(track, before);
    track = before;
    watermark.isOn = false;
    EXPECT_EQ(Master::applyWatermark(watermark, track, rate, 1), 0);
    watermark = {.isOn = true, .file = {}, .placement = {}};
    EXPECT_EQ(Master::applyWatermark(watermark, track, rate, 1), 0);
    watermark.file = folder.path(u"gone.wav"_s);
    EXPECT_EQ(Master::applyWatermark(watermark, track, rate, 1), 0);
    EXPECT_EQ(track, before);
    Channels none;
    watermark.file = path;
    EXPECT_EQ(Master::applyWatermark(watermark, none, rate, 1), 0);
    Channels shorterThanTheTag{noise(1000, 0.1)};
    const Channels unchanged = shorterThanTheTag;
    EXPECT_EQ(Master::applyWatermark(watermark, shorterThanTheTag, rate, 1), 0);
    EXPECT_EQ(shorterThanTheTag, unchanged);
}
