#include "video/Rendering.h"

#include "platform/video/VideoError.h"
#include "platform/video/VideoFile.h"
#include "tests/platform/sound/Program.h"
#include "tests/platform/sound/SoundFiles.h"
#include "tests/support/TestFolder.h"
#include "tests/video/RenderedVideo.h"
#include "video/Failure.h"
#include "video/VideoEngine.h"

#include <atomic>
#include <gtest/gtest.h>
#include <thread>

using namespace orvane;
using namespace orvane::Video;
using namespace Qt::Literals::StringLiterals;

namespace {

TEST(OpenSound, aFileWithoutAnAudioTrackIsNamed)
{
    const test::TestFolder folder;
    const QString silent = folder.path(u"silent.mp4"_s);
    ASSERT_EQ(
        test::run(u"ffmpeg"_s, {u"-v"_s, u"error"_s, u"-f"_s, u"lavfi"_s, u"-i"_s, u"color=s=64x64:d=0.2"_s, silent})
            .exitCode,
        0);
    try {
        openSound(QUrl::fromLocalFile(silent));
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.code(), Failure::NoAudioTrack);
        EXPECT_EQ(failure.errorDescription(), u"silent.mp4 has no audio track.");
    }
}

class Pumping : public testing::Test
{
protected:
    Pumping()
        : settings_(VideoEngine::settingsOf(look_))
    {
        track_.samples.resize(44100 * 2);
        folder_.write(u"song.wav"_s, test::floatWav(track_.samples, 44100, 1));
        settings_.channelCount = 1;
    }

    /// Pumps both tracks with a stop once pictures were asked for it so often; returns how often they were.
    int pump(VideoFile& file, int stopAt)
    {
        int asked = 0;
        const StopQuestion isStopping = [&] { return ++asked > stopAt; };
        FramePainter painter(u"orvane.example"_s);
        FrameSequence frames(painter, {}, look_);
        AudioReader reader = openSound(QUrl::fromLocalFile(folder_.path(u"song.wav"_s)));
        const std::jthread sound([&] { pumpSound(file, reader, [&] { return false; }); });
        pumpPictures(file, track_, look_.fps, frames, isStopping, {});
        return asked;
    }

    test::TestFolder folder_;
    Look look_{.aspect = Look::Aspect::square};
    VideoSettings settings_;
    MonoSamples track_{.samples = {}, .rate = 44100};
};

TEST_F(Pumping, aStopAtAnyFrameEndsThePicturesThereAndAnUnfinishedFileLeavesNothing)
{
    for (const int stopAt : {0, 1, 30, 59}) {
        {
            VideoFile file(folder_.path(u"video.mp4"_s), folder_.path(u".video.mp4.new"_s), settings_);
            EXPECT_EQ(pump(file, stopAt), stopAt + 1);
            EXPECT_FALSE(file.hasFailed());
        }
        EXPECT_EQ(folder_.names(), QStringList{u"song.wav"_s});
    }
}

TEST_F(Pumping, whatAnEncoderWillNotHaveIsToldByItsTrackAndLeavesNothing)
{
    const auto refusal = [this](const VideoSettings& settings) {
        try {
            const VideoFile file(folder_.path(u"video.mp4"_s), folder_.path(u".video.mp4.new"_s), settings);
        } catch (const VideoError& error) {
            return error.reason();
        }
        return QString();
    };
    VideoSettings odd = settings_;
    odd.width = 1081;
    EXPECT_EQ(refusal(odd), u"video input rejected");
    VideoSettings soundless = settings_;
    soundless.sampleRate = 0;
    EXPECT_EQ(refusal(soundless), u"audio input rejected");
    EXPECT_EQ(refusal(settings_), QString());
    EXPECT_EQ(folder_.names(), QStringList{u"song.wav"_s});
}

TEST_F(Pumping, everyFrameIsAskedForOnce)
{
    VideoFile file(folder_.path(u"video.mp4"_s), folder_.path(u".video.mp4.new"_s), settings_);
    EXPECT_EQ(pump(file, 1000), 60);
    EXPECT_EQ(folder_.names(), (QStringList{u".video.mp4.new"_s, u"song.wav"_s})) << "not yet at its final name";
    file.finish();
    EXPECT_EQ(folder_.names(), (QStringList{u"song.wav"_s, u"video.mp4"_s}));
}

TEST_F(Pumping, aTrackThatRunsAheadWaitsForTheOther)
{
    VideoFile file(folder_.path(u"video.mp4"_s), folder_.path(u".video.mp4.new"_s), settings_);
    VideoPicture picture(settings_.width, settings_.height);
    const SoundPlanes tenth{std::vector<float>(4410)};
    std::atomic<int> sounds = 0;
    bool isReady = true;
    std::thread sound([&] {
        while (file.waitUntilReady(VideoFile::Track::Sound) && sounds < 40) {
            file.append(tenth);
            ++sounds;
        }
        file.markAsFinished(VideoFile::Track::Sound);
    });
    for (int frame = 0; frame < 30; ++frame) {
        isReady = isReady && file.waitUntilReady(VideoFile::Track::Picture);
        file.append(picture, picture.area());
    }
    // A second of pictures lets no more than two of sound and a piece in.
    EXPECT_LE(sounds, 21);
    file.markAsFinished(VideoFile::Track::Picture);
    sound.join();
    EXPECT_TRUE(isReady);
    EXPECT_EQ(sounds, 40);
}

TEST_F(Pumping, afterAFailureNobodyWaitsAndTheFirstReasonStays)
{
    VideoFile file(folder_.path(u"video.mp4"_s), folder_.path(u".video.mp4.new"_s), settings_);
    file.fail(u"first"_s);
    file.fail(u"second"_s);
    EXPECT_FALSE(file.waitUntilReady(VideoFile::Track::Sound));
    EXPECT_FALSE(file.waitUntilReady(VideoFile::Track::Picture));
    EXPECT_TRUE(file.hasFailed());
    EXPECT_EQ(file.reason(), u"first");
    EXPECT_EQ(pump(file, 1000), 0);
}

} // namespace
