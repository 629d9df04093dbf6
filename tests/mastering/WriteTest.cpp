#include "mastering/Write.h"

#include "mastering/Failure.h"
#include "mastering/Read.h"
#include "mastering/arithmetic/Loudness.h"
#include "mastering/arithmetic/TruePeak.h"
#include "platform/filesystem/FileError.h"
#include "platform/sound/AudioWriter.h"
#include "tests/mastering/arithmetic/Signals.h"
#include "tests/platform/sound/Program.h"
#include "tests/support/TestFolder.h"

#include <QFileInfo>

#include <cmath>
#include <csignal>
#include <gmock/gmock.h>
#include <numbers>
#include <sys/resource.h>

using namespace orvane;
using namespace orvane::test;
using namespace Qt::Literals::StringLiterals;
using Master::Format;
using Master::MP3Rate;

namespace {

constexpr double rate = 44100.0;

/// What a 24-bit file can hold of a sample.
double in24Bits(double sample)
{
    const double single = std::clamp(double(float(sample)), -1.0, 1.0);
    return std::clamp(std::nearbyint(single * 8388608.0), -8388608.0, 8388607.0) / 8388608.0;
}

Channels in24Bits(Channels channels)
{
    for (auto& channel : channels)
        std::transform(channel.begin(), channel.end(), channel.begin(), [](double sample) { return in24Bits(sample); });
    return channels;
}

struct Writing : testing::Test
{
    TestFolder folder;

    QString write(const Channels& channels, Format format, double sampleRate = rate, MP3Rate mp3Rate = MP3Rate::v320,
                  QString name = {}) const
    {
        if (name.isEmpty())
            name = u"a."_s + extension(format);
        Master::write(channels, sampleRate, {.format = format, .mp3Rate = mp3Rate}, folder.path(name));
        return folder.path(name);
    }

    /// The first stream and the container as ffprobe tells them.
    QString described(const QString& path) const
    {
        const QStringList entries{u"stream=codec_name"_s, u"stream=sample_rate"_s, u"stream=channels"_s,
                                  u"stream=bits_per_raw_sample"_s, u"format=format_name"_s};
        QStringList values;
        for (const QString& entry : entries)
            values << probed(path, entry);
        return values.join(u'|');
    }
};

/// A low tone for each channel, since a channel for effects carries no others.
double pitchOf(std::size_t channel)
{
    return 60.0 + 30.0 * double(channel);
}

/// The channel whose tone is the strongest in these samples.
std::size_t channelHeardIn(const Samples& samples)
{
    std::vector<double> strengths;
    for (std::size_t channel = 0; channel < 8; ++channel) {
        double cosine = 0.0;
        double sine = 0.0;
        for (std::size_t frame = 5000; frame < 5000 + 29'400; ++frame) {
            const double turn = 2.0 * std::numbers::pi * pitchOf(channel) * double(frame) / rate;
            cosine += samples[frame] * std::cos(turn);
            sine += samples[frame] * std::sin(turn);
        }
        strengths.push_back(std::hypot(cosine, sine));
    }
    return std::size_t(std::max_element(strengths.begin(), strengths.end()) - strengths.begin());
}

Channels noisy(std::size_t channels, std::size_t frames)
{
    Channels result;
    for (unsigned channel = 0; channel < channels; ++channel)
        result.push_back(noise(frames, 0.3, channel));
    return result;
}

} // namespace

TEST_F(Writing, everyFormatHasItsCodecDepthAndContainer)
{
    const Channels channels = noisy(2, 50'000);
    EXPECT_EQ(described(write(channels, Format::wav)), u"pcm_s24le|44100|2|24|wav"_s);
    EXPECT_EQ(described(write(channels, Format::flac)), u"flac|44100|2|24|flac"_s);
    EXPECT_EQ(described(write(channels, Format::alac)), u"alac|44100|2|24|mov,mp4,m4a,3gp,3g2,mj2"_s);
    EXPECT_EQ(described(write(channels, Format::aac)), u"aac|44100|2|N/A|mov,mp4,m4a,3gp,3g2,mj2"_s);
    EXPECT_EQ(described(write(channels, Format::mp3)), u"mp3|44100|2|N/A|mp3"_s);
}

TEST_F(Writing, losslessFormatsComeBackToTheLastBit)
{
    for (const Format format : {Format::wav, Format::flac, Format::alac}) {
        for (const std::size_t frames : {1u, 31u, 4095u, 4096u, 4097u, 4608u, 30'000u}) {
            const Channels channels = noisy(2, frames);
            const Master::Sound sound = Master::read(write(channels, format));
            EXPECT_EQ(sound.sampleRate, rate);
            ASSERT_EQ(sound.channels, in24Bits(channels)) << qPrintable(rawValue(format)) << " " << frames;
        }
    }
}

TEST_F(Writing, losslessFormatsKeepOneToEightChannelsInTheirOrder)
{
    for (const Format format : {Format::wav, Format::flac, Format::alac}) {
        for (std::size_t count = 1; count <= 8; ++count) {
            const Channels channels = noisy(count, 6000);
            ASSERT_EQ(Master::read(write(channels, format)).channels, in24Bits(channels))
                << qPrintable(rawValue(format)) << " with " << count;
        }
    }
}

TEST_F(Writing, losslessFormatsKeepEveryRate)
{
    const Channels channels = noisy(2, 6000);
    for (const Format format : {Format::wav, Format::flac, Format::alac}) {
        for (const double hertz : {8000.0, 48000.0, 96000.0, 192000.0}) {
            const Master::Sound sound = Master::read(write(channels, format, hertz));
            EXPECT_EQ(sound.sampleRate, hertz);
            ASSERT_EQ(sound.channels, in24Bits(channels));
        }
    }
}

TEST_F(Writing, samplesBeyondFullScaleAreHeldThere)
{
    const Channels channels{Samples{1.5, -1.5, 1.0, -1.0, 0.0}};
    const double most = 8388607.0 / 8388608.0;
    EXPECT_EQ(Master::read(write(channels, Format::wav)).channels, (Channels{Samples{most, -1.0, most, -1.0, 0.0}}));
}

TEST_F(Writing, anMp3KeepsWhatLiesAboveFullScale)
{
    const Channels loud{tone(441.0, 3.0, 2.0, rate)};
    EXPECT_NEAR(Master::largestMagnitude(Master::read(write(loud, Format::mp3)).channels), std::pow(10.0, 3.0 / 20.0),
                0.05);
}

TEST_F(Writing, noSampleIsTooLargeForAnyFormat)
{
    const Channels huge{noise(5000, 1e30)};
    for (const Format format : Master::allFormats)
        EXPECT_EQ(Master::read(write(huge, format)).channels.size(), 1u) << qPrintable(rawValue(format));
}

TEST_F(Writing, theFlacProgramFindsNothingToWarnOf)
{
    for (std::size_t count = 1; count <= 8; ++count) {
        const Outcome outcome = run(u"flac"_s, {u"-t"_s, u"-w"_s, u"-s"_s, write(noisy(count, 30'000), Format::flac)});
        EXPECT_EQ(outcome.exitCode, 0) << outcome.errors.toStdString();
        EXPECT_EQ(outcome.errors.toStdString(), "");
    }
}

/// Each format with one to eight channels.
class WritingEveryShape : public testing::WithParamInterface<std::tuple<Format, int>>, public Writing
{
protected:
    Format format() const { return std::get<0>(GetParam()); }

    int count() const { return std::get<1>(GetParam()); }

    /// What of them the format keeps.
    int kept() const { return format() == Format::mp3 ? std::min(count(), 2) : count(); }
};

INSTANTIATE_TEST_SUITE_P(Shapes, WritingEveryShape,
                         testing::Combine(testing::ValuesIn(Master::allFormats), testing::Range(1, 9)));

TEST_P(WritingEveryShape, isDecodedByTheFfmpegProgramWithoutAComplaint)
{
    const char* demuxers[] = {"wav", "flac", "mov", "mov", "mp3"};
    const QString path = write(music(0.5, rate, std::size_t(count())), format());
    const QString demuxer = QString::fromLatin1(demuxers[std::size_t(format())]);
    const Outcome outcome = run(
        u"ffmpeg"_s, {u"-v"_s, u"error"_s, u"-xerror"_s, u"-f"_s, demuxer, u"-i"_s, path, u"-f"_s, u"null"_s, u"-"_s});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.errors.toStdString(), "");
    EXPECT_EQ(probed(path, u"stream=channels"_s), QString::number(kept()));
    EXPECT_EQ(probed(path, u"stream=sample_rate"_s), u"44100"_s);
}

TEST_F(Writing, anAacHasItsBitRateAndItsSound)
{
    const Channels channels = music(5.0, rate);
    const QString path = write(channels, Format::aac);
    EXPECT_NEAR(probed(path, u"stream=bit_rate"_s).toDouble(), 256'000.0, 26'000.0);
    const Channels decoded = Master::read(path).channels;
    double error = 0.0;
    double sound = 0.0;
    for (std::size_t frame = 5000; frame < 200'000; ++frame) {
        error += std::pow(decoded[0][frame] - channels[0][frame], 2.0);
        sound += std::pow(channels[0][frame], 2.0);
    }
    EXPECT_LT(error, 0.01 * sound);
}

TEST_F(Writing, anAacKeepsOneToEightChannelsInTheirOrder)
{
    for (std::size_t count = 1; count <= 8; ++count) {
        Channels channels;
        for (std::size_t channel = 0; channel < count; ++channel)
            channels.push_back(tone(pitchOf(channel), -12.0, 1.0, rate));
        const Channels decoded = Master::read(write(channels, Format::aac)).channels;
        ASSERT_EQ(decoded.size(), count);
        for (std::size_t channel = 0; channel < count; ++channel)
            EXPECT_EQ(channelHeardIn(decoded[channel]), channel) << "of " << count;
    }
}

TEST_F(Writing, everyRateIsEncodedAsMp3)
{
    for (const double hertz : {8000.0, 11025.0, 16000.0, 22050.0, 32000.0, 48000.0, 96000.0, 192000.0}) {
        const Channels channels{tone(440.0, -6.0, 10.0, hertz), tone(440.0, -6.0, 10.0, hertz)};
        const Master::Sound sound = Master::read(write(channels, Format::mp3, hertz));
        ASSERT_EQ(sound.channels.size(), 2u);
        EXPECT_EQ(sound.sampleRate, std::min(hertz, 48000.0));
        EXPECT_NEAR(double(sound.channels[0].size()) / sound.sampleRate, 10.0, 0.4) << hertz;
        // At low rates the encoder turns the sound down by half a decibel.
        EXPECT_NEAR(Master::measure(sound.channels, sound.sampleRate).integrated,
                    Master::measure(channels, hertz).integrated, 0.6)
            << hertz;
    }
}

TEST_F(Writing, anMp3HasTheRateThatWasChosen)
{
    for (const MP3Rate mp3Rate : Master::allMP3Rates) {
        const QString path = write(music(2.0, rate), Format::mp3, rate, mp3Rate);
        EXPECT_EQ(probed(path, u"stream=bit_rate"_s), QString::number(rawValue(mp3Rate) * 1000));
    }
}

TEST_F(Writing, mp3valAndMpg123FindAWholeStreamOfOneRate)
{
    for (const std::size_t count : {1u, 2u}) {
        Channels channels = music(3.0, rate, 2);
        channels.resize(count);
        const QString path = write(channels, Format::mp3);
        const std::string verdict = run(u"mp3val"_s, {path}).output.toStdString();
        EXPECT_THAT(verdict, testing::HasSubstr("MPEG frames (MPEG 1 Layer III), no tags, CBR"));
        // It misses tags, which a master has none of, and has nothing else to say.
        EXPECT_EQ(verdict.find("WARNING"), verdict.find("WARNING: \"" + path.toStdString() + "\": No supported tags"));
        EXPECT_EQ(verdict.find("WARNING", verdict.find("WARNING") + 1), std::string::npos) << verdict;
        const Outcome decoded = run(u"mpg123"_s, {u"-t"_s, u"-q"_s, path});
        EXPECT_EQ(decoded.exitCode, 0);
        EXPECT_EQ(decoded.errors.toStdString(), "");
    }
}

TEST_F(Writing, oneChannelGivesAMonoMp3AndMoreThanTwoTheFirstTwo)
{
    EXPECT_EQ(probed(write(noisy(1, 50'000), Format::mp3), u"stream=channels"_s), u"1"_s);
    Channels five = music(2.0, rate, 5);
    five[2] = five[3] = five[4] = noise(five[0].size(), 0.5);
    const QByteArray withFive = (write(five, Format::mp3), folder.read(u"a.mp3"_s));
    five.resize(2);
    const QByteArray withTwo = (write(five, Format::mp3), folder.read(u"a.mp3"_s));
    EXPECT_EQ(probed(folder.path(u"a.mp3"_s), u"stream=channels"_s), u"2"_s);
    EXPECT_EQ(withFive, withTwo);
}

TEST_F(Writing, aMonoMp3SaysSoInEveryFrameAndAStereoOneThatItIsJoint)
{
    write(noisy(1, 50'000), Format::mp3);
    EXPECT_EQ(std::uint8_t(folder.read(u"a.mp3"_s)[3]) >> 6, 3);
    write(noisy(2, 50'000), Format::mp3);
    EXPECT_EQ(std::uint8_t(folder.read(u"a.mp3"_s)[3]) >> 6, 1);
}

TEST_F(Writing, theSameSoundGivesTheSameBytes)
{
    for (const Format format : Master::allFormats) {
        const Channels channels = music(1.0, rate);
        const QString name = u"a."_s + extension(format);
        write(channels, format);
        const QByteArray first = folder.read(name);
        write(channels, format);
        EXPECT_EQ(folder.read(name), first) << qPrintable(rawValue(format));
    }
}

TEST_F(Writing, nothingToWriteWritesNothing)
{
    for (const Format format : Master::allFormats) {
        write({}, format);
        write({{}, {}}, format);
    }
    EXPECT_EQ(folder.names(), QStringList());
}

TEST_F(Writing, anMp3OfNothingFails)
{
    for (const Channels& empty : {Channels{}, Channels{{}, {}}}) {
        try {
            Master::writeMP3(empty, rate, MP3Rate::v320, folder.path(u"a.mp3"_s));
            ADD_FAILURE() << "it was written";
        } catch (const Master::Failure& failure) {
            EXPECT_EQ(failure.code(), Master::Failure::Mp3NoAudio);
            EXPECT_EQ(failure.sentence(), u"There is no audio to encode."_s);
        }
    }
    EXPECT_EQ(folder.names(), QStringList());
}

TEST_F(Writing, settingsThatTheMp3EncoderRefusesFail)
{
    for (const double hertz : {0.0, -5.0, 1e12}) {
        try {
            write(noisy(2, 5000), Format::mp3, hertz);
            ADD_FAILURE() << "it was written at " << hertz;
        } catch (const Master::Failure& failure) {
            EXPECT_EQ(failure.code(), Master::Failure::Mp3BadSettings);
            EXPECT_EQ(failure.sentence(), u"The MP3 encoder would not take those settings."_s);
        }
    }
    EXPECT_EQ(folder.names(), QStringList());
}

TEST_F(Writing, aRateThatIsNoneCannotBePrepared)
{
    for (const double hertz : {0.0, -5.0, 1e12, std::nan("")}) {
        try {
            write(noisy(2, 5000), Format::flac, hertz);
            ADD_FAILURE() << "it was written at " << hertz;
        } catch (const Master::Failure& failure) {
            EXPECT_EQ(failure.code(), Master::Failure::CouldNotPrepare);
            EXPECT_EQ(failure.sentence(), u"Could not prepare the mastered audio."_s);
        }
    }
    EXPECT_EQ(folder.names(), QStringList());
}

TEST_F(Writing, whatTheEncoderRefusesLeavesTheEarlierFile)
{
    const QString path = folder.write(u"a.m4a"_s, "earlier");
    try {
        write(noisy(2, 5000), Format::aac, 192000.0);
        ADD_FAILURE() << "it was written";
    } catch (const std::exception& error) {
        EXPECT_THAT(Master::sentenceOf(error).toStdString(), testing::StartsWith("a.m4a: "));
    }
    EXPECT_EQ(folder.names(), QStringList{u"a.m4a"_s});
    EXPECT_EQ(folder.read(u"a.m4a"_s), "earlier");
}

TEST_F(Writing, aNameWithoutAnExtensionWorks)
{
    for (const Format format : Master::allFormats) {
        const QString path = write(noisy(2, 5000), format, rate, MP3Rate::v320, u"no extension"_s);
        EXPECT_EQ(Master::read(path).channels.size(), 2u);
    }
    EXPECT_EQ(folder.names(), QStringList{u"no extension"_s});
}

TEST_F(Writing, theTemporaryFileIsNamedAfterTheFinalOneAndALeftoverIsReplaced)
{
    folder.write(u".a.wav.new"_s, "left by a crash");
    {
        AudioWriter writer(folder.path(u"a.wav"_s), folder.path(u".a.wav.new"_s), {});
        EXPECT_EQ(folder.names(), QStringList{u".a.wav.new"_s});
        const Channels channels = noisy(2, 5000);
        writer.write(channels, 0, 5000);
        EXPECT_EQ(folder.names(), QStringList{u".a.wav.new"_s});
        writer.finish();
        EXPECT_EQ(folder.names(), QStringList{u"a.wav"_s});
    }
    EXPECT_EQ(folder.names(), QStringList{u"a.wav"_s});
}

TEST_F(Writing, aWriterThatIsNotFinishedLeavesNothing)
{
    folder.write(u"a.wav"_s, "earlier");
    {
        AudioWriter writer(folder.path(u"a.wav"_s), folder.path(u".a.wav.new"_s), {});
        writer.write(noisy(2, 5000), 0, 5000);
    }
    EXPECT_EQ(folder.names(), QStringList{u"a.wav"_s});
    EXPECT_EQ(folder.read(u"a.wav"_s), "earlier");
}

TEST_F(Writing, piecesGiveTheSameFileAsOne)
{
    const Channels channels = noisy(2, 30'000);
    for (const Format format : {Format::wav, Format::flac}) {
        const QByteArray whole = (write(channels, format), folder.read(u"a."_s + extension(format)));
        AudioWriter writer(
            folder.path(u"b"_s), folder.path(u".b.new"_s),
            {.codec = format == Format::wav ? AudioCodec::Wav24 : AudioCodec::Flac24, .expectedFrames = 30'000});
        for (std::size_t start = 0; start < 30'000; start += 777)
            writer.write(channels, start, std::min<std::size_t>(777, 30'000 - start));
        writer.finish();
        EXPECT_EQ(folder.read(u"b"_s), whole);
    }
}

TEST_F(Writing, whatOutgrowsRiffIsWrittenAsRf64)
{
    AudioWriter writer(folder.path(u"long.wav"_s), folder.path(u".long.wav.new"_s),
                       {.expectedFrames = qint64(8) * 3600 * 44100});
    const Channels channels = noisy(2, 5000);
    writer.write(channels, 0, 5000);
    writer.finish();
    EXPECT_EQ(folder.read(u"long.wav"_s).first(4), "RF64");
    EXPECT_EQ(Master::read(folder.path(u"long.wav"_s)).channels, in24Bits(channels));
}

TEST_F(Writing, aFullDiskAtAnyPlaceLeavesTheEarlierFileAlone)
{
    const Channels channels = noisy(2, 50'000);
    for (const Format format : Master::allFormats) {
        const QString name = u"a."_s + extension(format);
        write(channels, format);
        const qint64 size = QFileInfo(folder.path(name)).size();
        for (int tenth = 0; tenth < 10; ++tenth) {
            folder.write(name, "earlier");
            const int code = inChild([&] {
                std::signal(SIGXFSZ, SIG_IGN);
                const rlimit full = {.rlim_cur = rlim_t(size * tenth / 10), .rlim_max = RLIM_INFINITY};
                ::setrlimit(RLIMIT_FSIZE, &full);
                return errorOf([&] { write(channels, format); });
            });
            EXPECT_EQ(code, EFBIG) << qPrintable(name) << " at " << tenth;
            EXPECT_EQ(folder.names(), QStringList{name});
            EXPECT_EQ(folder.read(name), "earlier");
        }
        QFile::remove(folder.path(name));
    }
}

TEST_F(Writing, whatTheSystemRefusesIsToldByTheFilesName)
{
    for (const Format format : Master::allFormats) {
        const QString name = u"gone/a."_s + extension(format);
        try {
            write(noisy(2, 5000), format, rate, MP3Rate::v320, name);
            ADD_FAILURE() << "it was written";
        } catch (const FileError& error) {
            EXPECT_EQ(error.sentence(), u"a.%1: No such file or directory"_s.arg(extension(format)));
        }
    }
}

TEST_F(Writing, aPathWithANulIsRefused)
{
    for (const Format format : Master::allFormats)
        EXPECT_EQ(errorOf([&] { write(noisy(2, 5000), format, rate, MP3Rate::v320, QString(u"a\0b"_s)); }), EINVAL);
    EXPECT_EQ(folder.names(), QStringList());
}

TEST_F(Writing, aFolderAtTheFinalNameStays)
{
    folder.write(u"a.wav/inside.txt"_s, "x");
    for (const Format format : Master::allFormats) {
        EXPECT_EQ(errorOf([&] { write(noisy(2, 5000), format, rate, MP3Rate::v320, u"a.wav"_s); }), EISDIR);
        EXPECT_EQ(folder.names(), QStringList{u"a.wav"_s});
    }
    EXPECT_EQ(folder.read(u"a.wav/inside.txt"_s), "x");
}
