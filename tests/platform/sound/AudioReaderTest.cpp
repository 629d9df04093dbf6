#include "platform/sound/AudioReader.h"

#include "platform/sound/SoundError.h"
#include "tests/platform/sound/SoundFiles.h"
#include "tests/support/TestFolder.h"

#include <cmath>
#include <gmock/gmock.h>
#include <limits>
#include <sys/stat.h>

using namespace orvane;
using namespace orvane::test;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int rate = 44100;
constexpr std::size_t frames = 30'000;

struct AudioReading : testing::Test
{
    TestFolder folder;
    std::vector<float> source = tones(frames, 2, rate);
    QString original = folder.write(u"source.wav"_s, wav(floatBytes(source), rate, 2, 32, WavKind::Float));

    QString made(const QString& name, const QStringList& options = {}) const
    {
        const QString path = folder.path(name);
        EXPECT_TRUE(convert(original, options, path)) << qPrintable(name);
        return path;
    }

    /// The largest difference from the source, `skip` frames from either end.
    double difference(const Decoded& decoded, std::size_t skip = 0) const
    {
        double largest = 0.0;
        for (std::size_t channel = 0; channel < 2; ++channel) {
            for (std::size_t frame = skip; frame + skip < frames; ++frame) {
                const double wanted = source[frame * 2 + channel];
                largest = std::max(largest, std::abs(double(decoded.planes[channel].at(frame)) - wanted));
            }
        }
        return largest;
    }

    void expectSource(const QString& path, double tolerance, std::size_t skip = 0) const
    {
        const Decoded decoded = decodeWhole(path);
        EXPECT_EQ(decoded.sampleRate, rate) << qPrintable(path);
        ASSERT_EQ(decoded.planes.size(), 2u) << qPrintable(path);
        ASSERT_EQ(decoded.planes[0].size(), frames) << qPrintable(path);
        ASSERT_EQ(decoded.planes[1].size(), frames) << qPrintable(path);
        EXPECT_LE(difference(decoded, skip), tolerance) << qPrintable(path);
    }

    SoundError::Kind kindOf(const QString& path) const
    {
        try {
            decodeWhole(path);
        } catch (const SoundError& error) {
            return error.kind();
        }
        ADD_FAILURE() << "it was read";
        return SoundError::Kind::Platform;
    }
};

QByteArray doubles(const std::vector<double>& values)
{
    return {reinterpret_cast<const char*>(values.data()), qsizetype(values.size() * sizeof(double))};
}

QByteArray silentWav(int sampleRate, int channels, std::size_t count)
{
    return wav(floatBytes(tones(count, channels, sampleRate)), sampleRate, channels, 32, WavKind::Float);
}

} // namespace

TEST_F(AudioReading, aWavOfAnyDepthGivesItsSamples)
{
    expectSource(original, 0.0);
    expectSource(made(u"8.wav"_s, {u"-c:a"_s, u"pcm_u8"_s}), 1.5 / 128.0);
    expectSource(made(u"16.wav"_s, {u"-c:a"_s, u"pcm_s16le"_s}), 1.5 / 32768.0);
    expectSource(made(u"24.wav"_s, {u"-c:a"_s, u"pcm_s24le"_s}), 1.5 / 8388608.0);
    expectSource(made(u"32.wav"_s, {u"-c:a"_s, u"pcm_s32le"_s}), 1e-7);
    expectSource(made(u"f64.wav"_s, {u"-c:a"_s, u"pcm_f64le"_s}), 0.0);
    expectSource(made(u"s64.wav"_s, {u"-c:a"_s, u"pcm_s64le"_s}), 1e-7);
    expectSource(made(u"rf64.wav"_s, {u"-rf64"_s, u"always"_s, u"-c:a"_s, u"pcm_s24le"_s}), 1.5 / 8388608.0);
    expectSource(made(u"w64.w64"_s, {u"-c:a"_s, u"pcm_s24le"_s}), 1.5 / 8388608.0);
}

TEST_F(AudioReading, everyLosslessFormatGivesItsSamples)
{
    expectSource(made(u"a.flac"_s, {u"-sample_fmt"_s, u"s32"_s}), 1.5 / 8388608.0);
    expectSource(made(u"a.m4a"_s, {u"-c:a"_s, u"alac"_s, u"-sample_fmt"_s, u"s32p"_s}), 1.5 / 8388608.0);
    expectSource(made(u"a.aiff"_s, {u"-c:a"_s, u"pcm_s24be"_s}), 1.5 / 8388608.0);
    expectSource(made(u"a.caf"_s, {u"-c:a"_s, u"pcm_s24le"_s}), 1.5 / 8388608.0);
}

TEST_F(AudioReading, anMp3WithItsHeaderGivesTheSoundWithoutWhatTheEncoderAdded)
{
    expectSource(made(u"a.mp3"_s, {u"-b:a"_s, u"320k"_s}), 0.01, 1500);
}

TEST_F(AudioReading, everyFormatGivesWhatTheFfmpegProgramGives)
{
    const QStringList lossy[] = {
        {u"a.mp3"_s, u"-b:a"_s, u"192k"_s},      {u"bare.mp3"_s, u"-b:a"_s, u"192k"_s, u"-write_xing"_s, u"0"_s},
        {u"a.m4a"_s, u"-c:a"_s, u"aac"_s},       {u"a.aac"_s, u"-c:a"_s, u"aac"_s},
        {u"a.ogg"_s, u"-c:a"_s, u"libvorbis"_s}, {u"a.opus"_s, u"-c:a"_s, u"libopus"_s}};
    for (const QStringList& format : lossy) {
        const QString path = made(format.first(), format.mid(1));
        ASSERT_TRUE(convert(path, {u"-f"_s, u"f32le"_s}, folder.path(u"wanted.raw"_s)));
        const Decoded decoded = decodeWhole(path);
        std::vector<float> interleaved;
        for (std::size_t frame = 0; frame < decoded.planes.at(0).size(); ++frame) {
            for (const auto& plane : decoded.planes)
                interleaved.push_back(plane[frame]);
        }
        EXPECT_EQ(floatBytes(interleaved), folder.read(u"wanted.raw"_s)) << qPrintable(path);
    }
}

TEST_F(AudioReading, opusComesAtItsOwnRateAndLength)
{
    const Decoded decoded = decodeWhole(made(u"a.opus"_s, {u"-c:a"_s, u"libopus"_s, u"-b:a"_s, u"256k"_s}));
    EXPECT_EQ(decoded.sampleRate, 48000);
    EXPECT_NEAR(double(decoded.planes.at(0).size()), frames * 48000.0 / rate, 2.0);
}

TEST_F(AudioReading, anMp3WithoutAHeaderFrameIsRead)
{
    const Decoded decoded = decodeWhole(made(u"a.mp3"_s, {u"-b:a"_s, u"320k"_s, u"-write_xing"_s, u"0"_s}));
    EXPECT_EQ(decoded.sampleRate, rate);
    EXPECT_GE(decoded.planes.at(0).size(), frames);
    EXPECT_LT(decoded.planes.at(0).size(), frames + 4 * 1152);
}

TEST_F(AudioReading, anMp3BehindALongTagIsRead)
{
    QByteArray mp3 = folder.read(u"a.mp3"_s);
    made(u"a.mp3"_s, {u"-b:a"_s, u"192k"_s, u"-id3v2_version"_s, u"0"_s});
    mp3 = folder.read(u"a.mp3"_s);
    // A tag of 2 MiB, whose size is written in seven bits a byte.
    const QByteArray tag = QByteArray("ID3\x04\x00\x00\x01\x00\x00\x00", 10) + QByteArray(128 * 128 * 128, '\0');
    const QString path = folder.write(u"tagged.mp3"_s, tag + mp3);
    expectSource(path, 0.02, 1500);
}

TEST_F(AudioReading, theContentCountsAndNotTheName)
{
    const QByteArray flac = [&] {
        made(u"a.flac"_s, {u"-sample_fmt"_s, u"s32"_s});
        return folder.read(u"a.flac"_s);
    }();
    expectSource(folder.write(u"flac.mp3"_s, flac), 1.5 / 8388608.0);
    expectSource(folder.write(u"no name at all"_s, flac), 1.5 / 8388608.0);
    expectSource(folder.write(u"http:a?b#c%20d ü.wav"_s, flac), 1.5 / 8388608.0);
}

TEST_F(AudioReading, everyChannelCountAndRateWithinTheLimitsIsRead)
{
    for (const int sampleRate : {8000, 44100, 192000}) {
        for (int channels = 1; channels <= 8; ++channels) {
            const QString path = folder.write(u"a.wav"_s, silentWav(sampleRate, channels, 500));
            const Decoded decoded = decodeWhole(path);
            EXPECT_EQ(decoded.sampleRate, sampleRate);
            ASSERT_EQ(decoded.planes.size(), std::size_t(channels));
            EXPECT_EQ(decoded.planes.back().size(), 500u);
        }
    }
}

TEST_F(AudioReading, channelsKeepTheirOrder)
{
    const auto six = tones(1000, 6, rate);
    const Decoded decoded = decodeWhole(folder.write(u"six.wav"_s, wav(floatBytes(six), rate, 6, 32, WavKind::Float)));
    for (std::size_t channel = 0; channel < 6; ++channel)
        EXPECT_EQ(decoded.planes.at(channel).at(100), six[600 + channel]);
}

TEST_F(AudioReading, whatIsNoNumberIsSilence)
{
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    constexpr float infinite = std::numeric_limits<float>::infinity();
    const QString path = folder.write(
        u"nan.wav"_s, wav(floatBytes({0.5F, nan, -0.5F, infinite, -infinite, 0.25F}), rate, 1, 32, WavKind::Float));
    EXPECT_EQ(decodeWhole(path).planes.at(0), (std::vector<float>{0.5F, 0.0F, -0.5F, 0.0F, 0.0F, 0.25F}));
    const QString wide =
        folder.write(u"nan64.wav"_s, wav(doubles({0.5, std::nan(""), 1e300, -0.25}), rate, 1, 64, WavKind::Float));
    EXPECT_EQ(decodeWhole(wide).planes.at(0), (std::vector<float>{0.5F, 0.0F, 0.0F, -0.25F}));
}

TEST_F(AudioReading, samplesAboveFullScaleAreKept)
{
    const QString path = folder.write(u"loud.wav"_s, wav(floatBytes({1.5F, -3.0F}), rate, 1, 32, WavKind::Float));
    EXPECT_EQ(decodeWhole(path).planes.at(0), (std::vector<float>{1.5F, -3.0F}));
}

TEST_F(AudioReading, aFileWithoutASampleHoldsNoAudio)
{
    EXPECT_EQ(kindOf(folder.write(u"none.wav"_s, silentWav(rate, 2, 0))), SoundError::Kind::NoAudio);
}

TEST_F(AudioReading, moreThanTheLimitsAllowIsNotSupported)
{
    EXPECT_EQ(kindOf(folder.write(u"nine.wav"_s, silentWav(rate, 9, 500))), SoundError::Kind::Unsupported);
    EXPECT_EQ(kindOf(folder.write(u"fast.wav"_s, silentWav(192001, 2, 500))), SoundError::Kind::Unsupported);
    EXPECT_EQ(kindOf(folder.write(u"faster.wav"_s, silentWav(384000, 1, 500))), SoundError::Kind::Unsupported);
}

TEST_F(AudioReading, aSoundThatChangesItsShapeMidwayIsNotSupported)
{
    made(u"a.mp3"_s, {u"-b:a"_s, u"192k"_s, u"-id3v2_version"_s, u"0"_s, u"-write_xing"_s, u"0"_s});
    made(u"b.mp3"_s, {u"-b:a"_s, u"96k"_s, u"-ac"_s, u"1"_s, u"-id3v2_version"_s, u"0"_s, u"-write_xing"_s, u"0"_s});
    const QString path = folder.write(u"both.mp3"_s, folder.read(u"a.mp3"_s) + folder.read(u"b.mp3"_s));
    EXPECT_EQ(kindOf(path), SoundError::Kind::Unsupported);
}

TEST_F(AudioReading, aPictureIsNotSupported)
{
    const QString path = folder.path(u"picture.mp3"_s);
    ASSERT_TRUE(convert(original,
                        {u"-filter_complex"_s, u"color=red:size=64x64:duration=0.1"_s, u"-frames:v"_s, u"1"_s, u"-f"_s,
                         u"image2"_s, u"-c:v"_s, u"mjpeg"_s, u"-update"_s, u"1"_s, u"-an"_s},
                        path));
    EXPECT_NE(failureOf(path), QString());
    const QString video =
        made(u"silent.mp4"_s, {u"-filter_complex"_s, u"color=red:size=64x64:duration=0.2"_s, u"-an"_s});
    EXPECT_EQ(kindOf(video), SoundError::Kind::Unsupported);
}

TEST_F(AudioReading, whatIsNoSoundIsRefusedByName)
{
    const QByteArray page = "<!DOCTYPE html><html><body>" + QByteArray(20'000, 'x') + "</body></html>";
    EXPECT_THAT(failureOf(folder.write(u"page.mp3"_s, page)).toStdString(), testing::StartsWith("page.mp3: "));
    EXPECT_THAT(failureOf(folder.write(u"empty.mp3"_s, {})).toStdString(), testing::StartsWith("empty.mp3: "));
    EXPECT_THAT(failureOf(folder.write(u"one.wav"_s, "R")).toStdString(), testing::StartsWith("one.wav: "));
    EXPECT_THAT(failureOf(folder.write(u"zeros.mp3"_s, QByteArray(50'000, '\0'))).toStdString(),
                testing::StartsWith("zeros.mp3: "));
}

TEST_F(AudioReading, aPlaylistLeadsToNoOtherFile)
{
    const QByteArray list = "#EXTM3U\n#EXT-X-TARGETDURATION:1\n#EXTINF:1,\n" + original.toUtf8() + "\n#EXT-X-ENDLIST\n";
    EXPECT_NE(failureOf(folder.write(u"list.mp3"_s, list)), QString());
    const QByteArray joined = "ffconcat version 1.0\nfile " + original.toUtf8() + "\n";
    EXPECT_NE(failureOf(folder.write(u"joined.wav"_s, joined)), QString());
}

TEST_F(AudioReading, whatTheSystemRefusesIsToldInItsWords)
{
    EXPECT_EQ(failureOf(folder.path(u"gone.mp3"_s)), u"gone.mp3: No such file or directory"_s);
    EXPECT_EQ(failureOf(folder.path()).section(u": "_s, 1), u"Is a directory"_s);
    EXPECT_EQ(failureOf(original + u"/below.wav"_s), u"below.wav: Not a directory"_s);
    ASSERT_EQ(::mkfifo(qPrintable(folder.path(u"pipe.wav"_s)), 0600), 0);
    EXPECT_EQ(failureOf(folder.path(u"pipe.wav"_s)), u"pipe.wav: Invalid argument"_s);
}

TEST_F(AudioReading, aFileThatMayNotBeReadIsToldSo)
{
    ASSERT_EQ(::chmod(qPrintable(original), 0000), 0);
    const int code = inChild([&] {
        becomeUnprivileged();
        return errorOf([&] { AudioReader reader(original); });
    });
    EXPECT_EQ(code, EACCES);
}

TEST_F(AudioReading, whatAFileSaysOfItsLengthIsToldBeforehand)
{
    EXPECT_EQ(AudioReader(original).expectedFrames(), qint64(frames));
    EXPECT_EQ(AudioReader(made(u"a.flac"_s)).expectedFrames(), qint64(frames));
    EXPECT_EQ(AudioReader(made(u"a.m4a"_s, {u"-c:a"_s, u"alac"_s})).expectedFrames(), qint64(frames));
    EXPECT_NEAR(double(AudioReader(made(u"a.mp3"_s, {u"-b:a"_s, u"192k"_s})).expectedFrames()), double(frames), 2400.0);
}

TEST_F(AudioReading, aPromiseBeyondWhatTheFileCanHoldIsHeldThere)
{
    made(u"a.flac"_s);
    QByteArray flac = folder.read(u"a.flac"_s);
    // The number of samples takes the 36 bits behind rate, channels and depth.
    flac.replace(22, 4, QByteArray(4, '\xFF'));
    const QString path = folder.write(u"hours.flac"_s, flac);
    const qint64 expected = AudioReader(path).expectedFrames();
    EXPECT_GT(expected, qint64(frames));
    EXPECT_LE(expected, 16 * flac.size());
    EXPECT_EQ(decodeWhole(path).planes.at(0).size(), frames);
}

TEST_F(AudioReading, aHeaderThatPromisesHoursGivesWhatIsThere)
{
    const QByteArray samples = floatBytes(tones(1000, 2, rate));
    const QString path = folder.write(u"hours.wav"_s, wav(samples, rate, 2, 32, WavKind::Float, 0xFFFFFF00LL));
    const int pages = inChild([&] {
        const Decoded decoded = decodeWhole(path);
        return decoded.planes.at(0).size() == 1000 ? 0 : 1;
    });
    EXPECT_EQ(pages, 0);
}
