#include "platform/web/WebPage.h"
#include "platform/web/WebPane.h"
#include "platform/web/WebProfile.h"
#include "tests/platform/web/PageServer.h"
#include "tests/support/TestFolder.h"
#include "tests/video/RenderedVideo.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>
#include <random>

namespace orvane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// What every script here begins with: the page's player, and a wait for what it tells.
constexpr char16_t player[] = uR"(
    const video = document.querySelector('video');
    const told = (event, holds = () => true) => new Promise((resolve, reject) => {
        video.addEventListener(event, () => holds() && resolve());
        video.addEventListener('error', () => reject(new Error(video.error.message)));
    });
)";

/// A rendered film of six seconds on a page of the web engine: silent but for noise from 3 s to 4 s, with a white
/// picture.
class Playback : public testing::Test
{
protected:
    static constexpr int rate = 44100;
    static constexpr double seconds = 6.0;

    Playback()
    {
        QImage white(64, 64, QImage::Format_RGB32);
        white.fill(Qt::white);
        white.save(folder_.path(u"cover.png"_s));
        std::vector<float> samples(std::size_t(rate * seconds));
        std::mt19937 random(1);
        std::uniform_real_distribution<float> noise(-0.9F, 0.9F);
        for (std::size_t index = 3 * std::size_t(rate); index < 4 * std::size_t(rate); ++index)
            samples[index] = noise(random);
        const QUrl audio = QUrl::fromLocalFile(folder_.write(u"song.wav"_s, test::floatWav(samples, rate, 1)));
        VideoEngine(u"orvane.example"_s)
            .render(audio, QUrl::fromLocalFile(folder_.path(u"cover.png"_s)), u"Night Drive"_s, u"synthwave"_s, {},
                    QUrl::fromLocalFile(folder_.path(u"video.mp4"_s)));
        server_.serve("/film", "<video muted preload=auto src=video.mp4></video>");
        server_.serve("/video.mp4", test::Page{.body = folder_.read(u"video.mp4"_s),
                                               .contentType = "video/mp4",
                                               .headers = "Accept-Ranges: bytes\r\n",
                                               .inParts = true});
    }

    void SetUp() override
    {
        // A film that nobody sees is not drawn.
        pane_.resize(360, 640);
        pane_.show();
        ASSERT_TRUE(test::load(pane_.page(), server_.url(u"/film"_s)));
    }

    /// What the script returns; a failed expectation where it throws.
    QJsonValue ask(const QString& body, const QJsonObject& arguments = {})
    {
        const ScriptOutcome outcome = test::call(pane_.page(), QString::fromUtf16(player) + body, arguments);
        EXPECT_TRUE(outcome.isValue()) << outcome.message.toStdString();
        return outcome.value;
    }

    test::TestFolder folder_;
    test::PageServer server_;
    WebProfile profile_{QString()};
    WebPane pane_{profile_};
};

TEST_F(Playback, theEngineTakesTheFilmForOneThatItCanPlay)
{
    EXPECT_EQ(ask(u"return video.canPlayType('video/mp4; codecs=\"avc1.640028, mp4a.40.2\"');"_s).toString(),
              u"probably");
}

TEST_F(Playback, thePlayerKnowsItsLengthAndSizeBeforeItPlays)
{
    const QJsonObject known = ask(uR"(
        if (video.readyState < HTMLMediaElement.HAVE_METADATA)
            await told('loadedmetadata');
        return {width: video.videoWidth, height: video.videoHeight, seconds: video.duration};
    )"_s)
                                  .toObject();
    EXPECT_EQ(known[u"width"].toInt(), 1080);
    EXPECT_EQ(known[u"height"].toInt(), 1920);
    EXPECT_NEAR(known[u"seconds"].toDouble(), seconds, 0.05);
}

TEST_F(Playback, itPlaysFromItsStart)
{
    const QJsonObject played = ask(uR"(
        const onward = told('timeupdate', () => video.currentTime > 0.5);
        await video.play();
        await onward;
        return {seconds: video.currentTime, frames: video.getVideoPlaybackQuality().totalVideoFrames,
                sound: video.webkitAudioDecodedByteCount};
    )"_s)
                                   .toObject();
    EXPECT_GT(played[u"seconds"].toDouble(), 0.5);
    EXPECT_GT(played[u"frames"].toInt(), 1);
    EXPECT_GT(played[u"sound"].toInt(), 0);
}

TEST_F(Playback, itGoesToAnyPlaceAndShowsTheFrameThere)
{
    // Its end, in the noise, before it, and back to its start.
    const QJsonArray places{5.9, 3.5, 1.7, 0.0};
    const QJsonArray seen = ask(uR"(
        if (video.readyState < HTMLMediaElement.HAVE_CURRENT_DATA)
            await told('loadeddata');
        const canvas = document.createElement('canvas');
        [canvas.width, canvas.height] = [video.videoWidth, video.videoHeight];
        const context = canvas.getContext('2d');
        const mean = (left, top, width, height) => {
            const pixels = context.getImageData(left, top, width, height).data;
            return pixels.filter((value, index) => index % 4 === 0).reduce((sum, value) => sum + value) /
                (pixels.length / 4);
        };
        const seen = [];
        for (const place of places) {
            const there = told('seeked');
            const shown = new Promise(resolve => video.requestVideoFrameCallback((now, frame) => resolve(frame)));
            video.currentTime = place;
            await there;
            const frame = await shown;
            context.drawImage(video, 0, 0);
            seen.push({place: video.currentTime, frame: frame.mediaTime, cover: mean(440, 540, 200, 200), bars: mean(90, 1400, 900, 260)});
        }
        return seen;
    )"_s,
                                {{u"places"_s, places}})
                                .toArray();
    ASSERT_EQ(seen.size(), places.size());
    const auto of = [&](int index, const QString& what) { return seen[index].toObject()[what].toDouble(); };
    for (int index = 0; index < places.size(); ++index) {
        EXPECT_NEAR(of(index, u"place"_s), places[index].toDouble(), 0.001);
        EXPECT_NEAR(of(index, u"frame"_s), places[index].toDouble(), 0.034);
        EXPECT_GT(of(index, u"cover"_s), 240.0) << index;
    }
    SCOPED_TRACE(QJsonDocument(seen).toJson().toStdString());
    EXPECT_GT(of(1, u"bars"_s), of(2, u"bars"_s) + 30.0);
    EXPECT_NEAR(of(0, u"bars"_s), of(2, u"bars"_s), 3.0);
    EXPECT_NEAR(of(3, u"bars"_s), of(2, u"bars"_s), 3.0);
}

} // namespace
} // namespace orvane
