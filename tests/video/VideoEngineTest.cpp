#include "video/VideoEngine.h"

#include "platform/sound/AudioReader.h"
#include "tests/mastering/arithmetic/Signals.h"
#include "tests/platform/sound/SoundFiles.h"
#include "tests/support/TestFolder.h"
#include "tests/video/PlainPainter.h"
#include "tests/video/RenderedVideo.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <cmath>
#include <csignal>
#include <gmock/gmock.h>
#include <sys/resource.h>

using namespace orvane;
using namespace Qt::Literals::StringLiterals;
using test::streamEntries;
using test::streamSeconds;

namespace {

constexpr VideoEngine::Look small{.aspect = VideoEngine::Look::Aspect::square};

std::vector<float> music(double seconds, int rate = 44100, std::size_t channels = 2)
{
    const Channels sound = test::music(seconds, rate, channels);
    std::vector<float> samples;
    for (std::size_t frame = 0; frame < sound.front().size(); ++frame) {
        for (const auto& channel : sound)
            samples.push_back(float(channel[frame]));
    }
    return samples;
}

/// A folder with a song in it, and the engine that makes its video.
class Rendering : public testing::Test
{
protected:
    QUrl song(const std::vector<float>& samples, int rate = 44100, int channels = 2) const
    {
        return QUrl::fromLocalFile(folder_.write(u"song.wav"_s, test::floatWav(samples, rate, channels)));
    }

    QUrl output() const { return QUrl::fromLocalFile(path_); }

    /// What the render says when it fails; "" when it does not.
    QString render(const QUrl& audio, const VideoEngine::Look& look = small, const QUrl& artwork = {},
                   const QString& title = u"Night Drive"_s)
    {
        progress_.clear();
        const auto told = engine_.onProgress;
        engine_.onProgress = [&](double part) {
            progress_.push_back(part);
            if (told)
                told(part);
        };
        QString failure;
        try {
            engine_.render(audio, artwork, title, u"synthwave"_s, look, output());
        } catch (const VideoEngine::Failure& error) {
            failure = error.errorDescription();
        }
        engine_.onProgress = told;
        return failure;
    }

    test::TestFolder folder_;
    QString path_ = folder_.path(u"video.mp4"_s);
    VideoEngine engine_{u"orvane.example"_s};
    std::vector<double> progress_;
};

TEST_F(Rendering, makesH264InHighProfileWithStereoAacAndTheFramesTold)
{
    for (const VideoEngine::Look::Aspect aspect : VideoEngine::Look::allAspects) {
        ASSERT_EQ(render(song(music(2.0)), {.aspect = aspect}), QString());
        const QSize size = Video::size(aspect);
        EXPECT_EQ(
            streamEntries(path_, u"v:0"_s, u"codec_name,profile,pix_fmt,width,height,avg_frame_rate,nb_read_packets"_s),
            (QStringList{u"h264"_s, u"High"_s, QString::number(size.width()), QString::number(size.height()),
                         u"yuv420p"_s, u"30/1"_s, u"60"_s}));
        EXPECT_EQ(streamEntries(path_, u"a:0"_s, u"codec_name,sample_rate,channels"_s),
                  (QStringList{u"aac"_s, u"44100"_s, u"2"_s}));
        EXPECT_EQ(streamEntries(path_, u"v:0"_s, u"color_range,color_space,color_transfer,color_primaries"_s),
                  (QStringList{u"tv"_s, u"bt709"_s, u"bt709"_s, u"bt709"_s}));
    }
}

TEST_F(Rendering, theFileIsSoundFromEndToEnd)
{
    ASSERT_EQ(render(song(music(5.0))), QString());
    EXPECT_TRUE(test::decodesWhole(path_));
    const QStringList boxes = test::boxes(folder_.read(u"video.mp4"_s));
    EXPECT_LT(boxes.indexOf(u"moov"), boxes.indexOf(u"mdat"));
    EXPECT_TRUE(boxes.contains(u"moov"));
    EXPECT_EQ(folder_.names(), (QStringList{u"song.wav"_s, u"video.mp4"_s}));
    const std::vector<double> keys = test::keyFrameTimes(path_);
    ASSERT_GE(keys.size(), 3);
    EXPECT_EQ(keys.front(), 0.0);
    for (std::size_t key = 1; key < keys.size(); ++key)
        EXPECT_LE(keys[key] - keys[key - 1], 2.001);
    for (const double time : keys)
        EXPECT_TRUE(test::decodesFrom(path_, time)) << time;
}

TEST_F(Rendering, pictureAndSoundEndWithinAFrameOfEachOther)
{
    for (const double seconds : {0.5, 1.0, 1.99, 3.37}) {
        ASSERT_EQ(render(song(music(seconds))), QString());
        EXPECT_NEAR(streamSeconds(path_, u"a:0"_s), seconds, 0.001);
        EXPECT_NEAR(streamSeconds(path_, u"v:0"_s), std::floor(seconds * 30.0) / 30.0, 0.001);
    }
}

TEST_F(Rendering, aClickStaysWhereItWasAndMovesTheBarsOfItsFrame)
{
    // In frame 60, which looks at 88200 and on.
    std::vector<float> samples(44100 * 4);
    constexpr std::size_t place = 88300;
    for (std::size_t index = 0; index < 200; ++index)
        samples[place + index] = index % 20 < 10 ? 0.9F : -0.9F;
    ASSERT_EQ(render(song(samples, 44100, 1), {.aspect = VideoEngine::Look::Aspect::portrait}), QString());
    const test::Decoded heard = test::decodeWhole(path_);
    ASSERT_EQ(heard.sampleRate, 44100);
    const std::vector<float>& left = heard.planes.front();
    const auto loud = std::find_if(left.begin(), left.end(), [](float sample) { return std::abs(sample) > 0.45F; });
    ASSERT_NE(loud, left.end());
    EXPECT_NEAR(double(loud - left.begin()), double(place), 220.0);
    const std::vector<double> bars = test::brightness(path_, {90, 1400, 900, 260});
    ASSERT_EQ(bars.size(), 120);
    const auto moved = std::find_if(bars.begin(), bars.end(), [&](double mean) { return mean > bars[30] + 3.0; });
    EXPECT_NEAR(double(moved - bars.begin()), 60.0, 1.0);
}

TEST_F(Rendering, aTrackOfTenMillisecondsHasOneFrame)
{
    ASSERT_EQ(render(song(std::vector<float>(882), 44100, 2)), QString());
    EXPECT_EQ(streamEntries(path_, u"v:0"_s, u"nb_read_packets"_s), QStringList{u"1"_s});
    EXPECT_TRUE(test::decodesWhole(path_));
    EXPECT_THAT(progress_, testing::ElementsAre(1.0));
}

TEST_F(Rendering, aMonoSourceHasTwoChannelsAsLoudAsIt)
{
    const std::vector<float> tone = test::tones(44100, 1, 44100);
    ASSERT_EQ(render(song(tone, 44100, 1)), QString());
    EXPECT_EQ(streamEntries(path_, u"a:0"_s, u"channels"_s), QStringList{u"2"_s});
    const test::Decoded heard = test::decodeWhole(path_);
    ASSERT_EQ(heard.planes.size(), 2);
    for (const auto& plane : heard.planes)
        EXPECT_NEAR(*std::max_element(plane.begin(), plane.end()), 0.5, 0.02);
}

TEST_F(Rendering, a48KilohertzSourceComesOutAt44100HertzAndAsLong)
{
    ASSERT_EQ(render(song(test::tones(96000, 2, 48000), 48000)), QString());
    EXPECT_EQ(streamEntries(path_, u"a:0"_s, u"sample_rate"_s), QStringList{u"44100"_s});
    EXPECT_NEAR(streamSeconds(path_, u"a:0"_s), 2.0, 0.001);
}

TEST_F(Rendering, theLastProgressIsExactly1AndThoseBeforeJumpBy15Frames)
{
    ASSERT_EQ(render(song(music(1.7))), QString());
    EXPECT_THAT(progress_, testing::ElementsAre(15.0 / 51.0, 30.0 / 51.0, 45.0 / 51.0, 1.0));
}

TEST_F(Rendering, aStopBeforeTheFirstFrameLeavesNoFileAndReportsCancelled)
{
    folder_.write(u"video.mp4"_s, "the previous video");
    engine_.stop();
    EXPECT_EQ(render(song(music(1.0))), u"Cancelled.");
    EXPECT_EQ(folder_.names(), QStringList{u"song.wav"_s});
    engine_.reset();
    EXPECT_EQ(render(song(music(0.2))), QString());
}

TEST_F(Rendering, aStopInTheMiddleOrAtTheLastFrameLeavesNoFile)
{
    const QUrl audio = song(music(1.0));
    for (const double moment : {0.5, 1.0}) {
        engine_.onProgress = [&](double part) {
            if (part >= moment)
                engine_.stop();
        };
        EXPECT_EQ(render(audio), u"Cancelled.");
        EXPECT_EQ(folder_.names(), QStringList{u"song.wav"_s});
        engine_.reset();
    }
}

TEST_F(Rendering, aFailedRenderDoesNotKeepThePreviousVideo)
{
    folder_.write(u"video.mp4"_s, "the previous video");
    ASSERT_TRUE(QDir().mkdir(folder_.path(u".video.mp4.new"_s)));
    EXPECT_EQ(render(song(music(0.5))), u"The video could not be written: Is a directory");
    EXPECT_FALSE(QFile::exists(path_));
}

TEST_F(Rendering, aTrackThatCannotBeReadKeepsThePreviousVideo)
{
    folder_.write(u"video.mp4"_s, "the previous video");
    EXPECT_EQ(render(QUrl::fromLocalFile(folder_.write(u"page.mp3"_s, "<html></html>"))), u"Could not read page.mp3.");
    EXPECT_EQ(folder_.read(u"video.mp4"_s), "the previous video");
}

TEST_F(Rendering, aFolderAtTheOutputIsLeftAlone)
{
    folder_.write(u"video.mp4/inside"_s, "mine");
    EXPECT_EQ(render(song(music(0.2))), u"The video could not be written: Is a directory");
    EXPECT_EQ(folder_.read(u"video.mp4/inside"_s), "mine");
}

TEST_F(Rendering, aFolderWithoutPermissionFailsWithTheSystemsText)
{
    const QUrl audio = song(music(0.2));
    const QString locked = folder_.path(u"locked"_s);
    ASSERT_TRUE(QDir().mkdir(locked));
    path_ = locked + u"/video.mp4"_s;
    QFile::setPermissions(folder_.path(), QFile::Permissions(0x7755));
    QFile::setPermissions(locked, QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther);
    const int outcome = test::inChild([&] {
        test::becomeUnprivileged();
        return render(audio) == u"The video could not be written: Permission denied" ? 7 : 1;
    });
    EXPECT_EQ(outcome, 7);
}

TEST_F(Rendering, artworkThatIsNoPictureIsNoError)
{
    const QUrl audio = song(music(0.5));
    ASSERT_EQ(render(audio), QString());
    const QByteArray without = folder_.read(u"video.mp4"_s);
    ASSERT_EQ(render(audio, small, QUrl::fromLocalFile(folder_.write(u"cover.jpg"_s, "no picture"))), QString());
    EXPECT_EQ(folder_.read(u"video.mp4"_s), without);
    ASSERT_EQ(render(audio, small, QUrl::fromLocalFile(folder_.path(u"gone.jpg"_s))), QString());
    EXPECT_EQ(folder_.read(u"video.mp4"_s), without);
}

TEST_F(Rendering, artworkShowsInTheVideo)
{
    QImage white(64, 64, QImage::Format_RGB32);
    white.fill(Qt::white);
    white.save(folder_.path(u"cover.png"_s));
    ASSERT_EQ(render(song(music(0.5)), small, QUrl::fromLocalFile(folder_.path(u"cover.png"_s))), QString());
    const std::vector<double> square = test::brightness(path_, {300, 20, 400, 400});
    ASSERT_EQ(square.size(), 15);
    EXPECT_GT(square.back(), 245.0);
}

TEST_F(Rendering, anyTitleWillDo)
{
    const QUrl audio = song(music(0.1));
    for (const QString& title : {u"A"_s.repeated(10'000), u"🌌"_s, u"one\ntwo\r\nthree"_s, u"<h1>no</h1>&amp;"_s,
                                 QString(QChar(0xD800)), u"\u202Eback\u0000front"_s, QString()})
        EXPECT_EQ(render(audio, small, {}, title), QString());
}

TEST_F(Rendering, aTrackOfThreeHoursTakesTheMemoryOfItsSamplesAndNoMore)
{
    constexpr int rate = 8000;
    constexpr qint64 frames = qint64(3) * 3600 * rate;
    const QByteArray header = test::wav({}, rate, 1, 16, test::WavKind::Integer, frames * 2);
    folder_.write(u"song.wav"_s, header);
    ASSERT_TRUE(QFile::resize(folder_.path(u"song.wav"_s), header.size() + frames * 2));
    engine_.onProgress = [&](double) { engine_.stop(); };
    EXPECT_EQ(render(QUrl::fromLocalFile(folder_.path(u"song.wav"_s)), {.aspect = small.aspect, .fps = 1}),
              u"Cancelled.");
    EXPECT_THAT(progress_, testing::ElementsAre(15.0 / 10800.0));
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
#ifdef __SANITIZE_ADDRESS__
    // Memory that is given back is held back for a while, to catch who still uses it.
    constexpr qint64 besides = 800;
#else
    constexpr qint64 besides = 400;
#endif
    EXPECT_LT(usage.ru_maxrss / 1024, frames * qint64(sizeof(float)) / (1024 * 1024) + besides);
}

TEST_F(Rendering, theAverageBitRateIsWithin15PercentOfTheTargetOverAMinute)
{
    ASSERT_EQ(render(song(music(60.0)), {.aspect = VideoEngine::Look::Aspect::square}), QString());
    const double rate = streamEntries(path_, u"v:0"_s, u"bit_rate"_s).value(0).toDouble();
    EXPECT_EQ(VideoEngine::settingsOf({.aspect = VideoEngine::Look::Aspect::square}).bitRate, 128304);
    EXPECT_EQ(VideoEngine::settingsOf({}).bitRate, 228096);
    EXPECT_EQ(VideoEngine::settingsOf({.aspect = VideoEngine::Look::Aspect::landscape}).bitRate, 228096);
    EXPECT_NEAR(rate, 128304.0, 0.15 * 128304.0);
}

TEST(VideoSettings, aKeyFrameComesEveryTwoSeconds)
{
    EXPECT_EQ(VideoEngine::settingsOf({.fps = 24}).keyFrameInterval, 48);
}

TEST(VideoFailure, hasItsSentences)
{
    using Failure = VideoEngine::Failure;
    EXPECT_EQ(Failure::unreadable(u"a.mp3"_s).errorDescription(), u"Could not read a.mp3.");
    EXPECT_EQ(Failure::noAudioTrack(u"a.mp4"_s).errorDescription(), u"a.mp4 has no audio track.");
    EXPECT_EQ(Failure::writerFailed(u"why"_s).errorDescription(), u"The video could not be written: why");
    EXPECT_EQ(Failure::cancelled().errorDescription(), u"Cancelled.");
}

} // namespace
