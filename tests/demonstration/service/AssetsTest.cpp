#include "tests/demonstration/service/StandInFixture.h"

#include <QBuffer>
#include <QImageReader>
#include <QProcess>

#include <cmath>
#include <cstring>
#include <thread>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using demo::Track;

class Assets : public StandIn
{
protected:
    /// Left channel of an MP3, decoded by another program.
    static std::vector<double> decoded(const QByteArray& mp3)
    {
        QProcess mpg123;
        mpg123.start(u"mpg123"_s, {u"-q"_s, u"-s"_s, u"-"_s});
        mpg123.write(mp3);
        mpg123.closeWriteChannel();
        EXPECT_TRUE(mpg123.waitForFinished());
        EXPECT_EQ(mpg123.exitCode(), 0) << mpg123.readAllStandardError().constData();
        const QByteArray pcm = mpg123.readAllStandardOutput();
        std::vector<double> samples(static_cast<std::size_t>(pcm.size() / 4));
        for (std::size_t frame = 0; frame < samples.size(); ++frame) {
            qint16 sample = 0;
            std::memcpy(&sample, pcm.constData() + 4 * frame, sizeof sample);
            samples[frame] = sample / 32768.0;
        }
        return samples;
    }
};

TEST_F(Assets, recordingsDecodeInAnotherProgramToTheirLength)
{
    const Track track = service.tracks()[1];
    const RawAnswer answer = ask(port, audioTarget(1));
    EXPECT_EQ(answer.values("Content-Type"), QList<QByteArray>{"audio/mpeg"});
    EXPECT_EQ(answer.body, service.audioOf(track.id));
    EXPECT_EQ(decoded(answer.body).size(),
              static_cast<std::size_t>(std::lround(track.song.seconds * demo::sampleRate)));
}

TEST_F(Assets, theFirstKickOfARecordingLiesWhereTheSongSays)
{
    for (int position = 0; position < 4; ++position) {
        const Track track = service.tracks()[position];
        const std::vector<double> samples = decoded(service.audioOf(track.id));
        const auto struck =
            std::find_if(samples.begin(), samples.end(), [](double sample) { return std::abs(sample) > 0.1; });
        const double beat = static_cast<double>(demo::sampleOf(track.song, 0));
        // A kick needs 10 to 40 samples to rise that far, and the encoder smears it a little.
        EXPECT_NEAR(static_cast<double>(struck - samples.begin()), beat + 20, 90) << position;
    }
}

TEST_F(Assets, recordingsAreWholeToOneWhoLooksAtFrames)
{
    QProcess ffmpeg;
    ffmpeg.start(u"ffmpeg"_s,
                 {u"-v"_s, u"error"_s, u"-xerror"_s, u"-f"_s, u"mp3"_s, u"-i"_s, u"-"_s, u"-f"_s, u"null"_s, u"-"_s});
    ffmpeg.write(ask(port, audioTarget(0)).body);
    ffmpeg.closeWriteChannel();
    ASSERT_TRUE(ffmpeg.waitForFinished());
    EXPECT_EQ(ffmpeg.exitCode(), 0);
    EXPECT_EQ(ffmpeg.readAllStandardError(), "");
}

TEST_F(Assets, coversArePicturesOfTheirKind)
{
    for (const Track& track : service.tracks().first(3)) {
        const RawAnswer answer = ask(port, "/image/" + track.id.toLatin1() + '.' + track.artworkExtension.toLatin1());
        QByteArray bytes = answer.body;
        QBuffer buffer(&bytes);
        QImageReader reader(&buffer);
        const QByteArray format = track.artworkExtension == u"jpg" ? "jpeg" : track.artworkExtension.toLatin1();
        EXPECT_EQ(reader.format(), format);
        EXPECT_EQ(answer.values("Content-Type"), QList<QByteArray>{"image/" + format});
        EXPECT_EQ(reader.size(), QSize(1024, 1024));
        EXPECT_FALSE(reader.read().isNull());
        EXPECT_EQ(answer.body, service.artworkOf(track.id));
    }
}

TEST_F(Assets, aThumbnailIsASmallerCover)
{
    const QByteArray target = "/thumbnail/" + service.tracks()[2].id.toLatin1() + ".jpg";
    EXPECT_EQ(QImage::fromData(ask(port, target).body).size(), QSize(256, 256));
}

TEST_F(Assets, whatIsUnknownIsNotFound)
{
    EXPECT_EQ(ask(port, "/no-such-track.mp3").status(), 404);
    EXPECT_EQ(ask(port, "/image/no-such-track.jpg").status(), 404);
}

TEST_F(Assets, aLargeAssetIsStreamedToItsLastByte)
{
    demo::LibraryOptions options = shortLibrary();
    options.assetBytes = 20'000'001;
    service.setLibrary(options);
    const RawAnswer answer = ask(port, audioTarget(0));
    EXPECT_EQ(answer.values("Content-Length"), QList<QByteArray>{"20000001"});
    ASSERT_EQ(answer.body.size(), 20'000'001);
    // The recording comes again and again.
    const qsizetype again = answer.body.indexOf(answer.body.first(4096), 1);
    ASSERT_GT(again, 0);
    EXPECT_TRUE(answer.body.sliced(again).startsWith(answer.body.first(again)));
}

TEST_F(Assets, aFileBeyondAllMemoryBegins)
{
    demo::LibraryOptions options = shortLibrary();
    options.assetBytes = 100'000'000'000;
    service.setLibrary(options);
    RawConnection connection(port);
    connection.send(requestText(audioTarget(0)));
    EXPECT_EQ(connection.receiveBytes(3'000'000).size(), 3'000'000);
    EXPECT_EQ(ask(port, audioTarget(0), {}, "HEAD").values("Content-Length"), QList<QByteArray>{"100000000000"});
}

TEST_F(Assets, othersAreAnsweredWhileARecordingIsMade)
{
    demo::LibraryOptions options = shortLibrary();
    options.shortestSeconds = options.longestSeconds = 120;
    service.setLibrary(options);
    RawConnection slow(port);
    slow.send(requestText(audioTarget(0)));
    EXPECT_EQ(askPage(1).status(), 200);
    EXPECT_EQ(seenAfter(1).first().target, "/api/feed/v2?page=1") << "the page came first";
}

TEST_F(Assets, whatTwoAskForAtOnceIsMadeOnceAndAlike)
{
    const QString id = service.tracks()[0].id;
    QByteArray other;
    std::thread second([&] { other = service.audioOf(id); });
    const QByteArray served = ask(port, audioTarget(0)).body;
    second.join();
    EXPECT_EQ(other, served);
    EXPECT_TRUE(other.isSharedWith(service.audioOf(id))) << "the same bytes, not made again";
}

} // namespace
} // namespace orvane::test
