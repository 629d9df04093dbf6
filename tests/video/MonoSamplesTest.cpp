#include "video/MonoSamples.h"

#include "tests/platform/sound/SoundFiles.h"
#include "tests/support/TestFolder.h"
#include "video/Failure.h"
#include "video/arithmetic/Analyser.h"

#include <gmock/gmock.h>

using namespace orvane;
using namespace orvane::Video;
using namespace Qt::Literals::StringLiterals;

namespace {

QByteArray floatWav(const std::vector<float>& samples, int rate, int channels)
{
    return test::wav(test::floatBytes(samples), rate, channels, 32, test::WavKind::Float);
}

QUrl fileWith(const test::TestFolder& folder, const QByteArray& bytes)
{
    return QUrl::fromLocalFile(folder.write(u"song.wav"_s, bytes));
}

QString failureOf(const QUrl& url)
{
    try {
        monoSamples(url);
        return {};
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.code(), Failure::Unreadable);
        return failure.errorDescription();
    }
}

TEST(MonoSamples, aMonoFileIsNotDivided)
{
    const test::TestFolder folder;
    const MonoSamples mono = monoSamples(fileWith(folder, floatWav({0.5F, -0.25F, 1.5F}, 48000, 1)));
    EXPECT_THAT(mono.samples, testing::ElementsAre(0.5F, -0.25F, 1.5F));
    EXPECT_EQ(mono.rate, 48000);
}

TEST(MonoSamples, aStereoFileIsAveraged)
{
    const test::TestFolder folder;
    const MonoSamples mono = monoSamples(fileWith(folder, floatWav({0.5F, 0.25F, 1.0F, -0.5F}, 44100, 2)));
    EXPECT_THAT(mono.samples, testing::ElementsAre(0.375F, 0.25F));
}

TEST(MonoSamples, sixChannelsAreAveragedToo)
{
    const test::TestFolder folder;
    const MonoSamples mono = monoSamples(fileWith(folder, floatWav({1, 2, 3, 4, 5, 3}, 44100, 6)));
    EXPECT_THAT(mono.samples, testing::ElementsAre(3.0F));
}

TEST(MonoSamples, invertedChannelsCancelToSilenceAndTheBarsStayFlat)
{
    const test::TestFolder folder;
    std::vector<float> samples = test::tones(8192, 2, 44100);
    for (std::size_t index = 0; index < samples.size(); index += 2)
        samples[index + 1] = -samples[index];
    const MonoSamples mono = monoSamples(fileWith(folder, floatWav(samples, 44100, 2)));
    EXPECT_THAT(mono.samples, testing::SizeIs(8192));
    EXPECT_THAT(mono.samples, testing::Each(0.0F));
    EXPECT_THAT(Analyser(1024, 0.8F).magnitudes(mono.samples), testing::Each(0.0F));
}

TEST(MonoSamples, whatCannotBeReadIsNamedByItsFile)
{
    const test::TestFolder folder;
    EXPECT_EQ(failureOf(QUrl::fromLocalFile(folder.path(u"gone.mp3"_s))), u"Could not read gone.mp3.");
    EXPECT_EQ(failureOf(fileWith(folder, "<html>")), u"Could not read song.wav.");
    EXPECT_EQ(failureOf(fileWith(folder, floatWav({}, 44100, 2))), u"Could not read song.wav.");
    EXPECT_EQ(failureOf(fileWith(folder, {})), u"Could not read song.wav.");
    EXPECT_EQ(failureOf(QUrl::fromLocalFile(folder.path())),
              u"Could not read %1."_s.arg(QUrl(folder.path()).fileName()));
}

TEST(MonoSamples, endsEarlyWhenStopped)
{
    const test::TestFolder folder;
    const QUrl url = fileWith(folder, floatWav(test::tones(44100, 1, 44100), 44100, 1));
    int asked = 0;
    const MonoSamples mono = monoSamples(url, [&] { return ++asked == 3; });
    EXPECT_GT(mono.samples.size(), 0);
    EXPECT_LT(mono.samples.size(), 44100);
}

} // namespace
