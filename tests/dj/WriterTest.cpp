#include "dj/Writer.h"

#include "mastering/Master.h"
#include "platform/filesystem/FileError.h"
#include "tests/dj/MixFiles.h"
#include "tests/mastering/arithmetic/Signals.h"
#include "tests/platform/sound/Program.h"

#include <csignal>
#include <sys/resource.h>

using namespace orvane;
using namespace orvane::test;
using namespace Qt::Literals::StringLiterals;

namespace {

struct Writing : testing::Test
{
    TestFolder folder;

    QString path(Master::Format format) const { return folder.path(u"a."_s + extension(format)); }

    std::unique_ptr<DJ::Writer> writer(Master::Format format) const
    {
        return std::make_unique<DJ::Writer>(path(format), DJ::Writer::Settings{.output = {.format = format}});
    }
};

} // namespace

TEST_F(Writing, everyFormatIsTheOneThatAMasterHas)
{
    const Channels channels = music(3.0, 44100.0);
    for (const Master::Format format : Master::allFormats) {
        const auto mix = writer(format);
        for (std::size_t start = 0; start < channels[0].size(); start += 30'000)
            mix->write(channels, start, std::min(start + 30'000, channels[0].size()));
        mix->finish();
        mix->requireWhole();
        const QByteArray found = folder.read(u"a."_s + extension(format));
        Master::write(channels, 44100.0, {.format = format}, path(format));
        EXPECT_TRUE(folder.read(u"a."_s + extension(format)) == found) << qPrintable(rawValue(format));
        QFile::remove(path(format));
    }
}

TEST_F(Writing, oneChannelServesAsBoth)
{
    const Samples sound = noise(70'000, 0.2);
    for (const Master::Format format : {Master::Format::wav, Master::Format::mp3}) {
        writer(format)->write({sound});
        const QByteArray mono = folder.read(u"a."_s + extension(format));
        writer(format)->write({sound, sound});
        EXPECT_TRUE(folder.read(u"a."_s + extension(format)) == mono);
        EXPECT_EQ(probed(path(format), u"stream=channels"_s), u"2"_s);
    }
}

TEST_F(Writing, samplesAreHeldAtFullScaleAlsoInAnMp3)
{
    const Samples loud = tone(441.0, 6.0, 1.0, 44100.0);
    Samples held = loud;
    for (double& sample : held)
        sample = std::clamp(sample, -1.0, 1.0);
    for (const Master::Format format : Master::allFormats) {
        writer(format)->write({loud, loud});
        const QByteArray found = folder.read(u"a."_s + extension(format));
        writer(format)->write({held, held});
        EXPECT_TRUE(folder.read(u"a."_s + extension(format)) == found) << qPrintable(rawValue(format));
    }
}

TEST_F(Writing, nothingIsWrittenOfNothingAndNoneAfterTheEnd)
{
    const Channels sound(2, noise(5000, 0.2));
    const auto mix = writer(Master::Format::wav);
    mix->write({});
    mix->write({{}, {}});
    mix->write(sound, 100, 100);
    mix->write(sound, 0, 1000);
    mix->finish();
    mix->write(sound);
    mix->finish();
    mix->requireWhole();
    EXPECT_EQ(Master::read(path(Master::Format::wav)).channels[0].size(), 1000u);
}

TEST_F(Writing, theReleaseFinishesAndAbandoningLeavesNothing)
{
    const Channels sound(2, noise(5000, 0.2));
    for (const Master::Format format : Master::allFormats) {
        {
            const auto mix = writer(format);
            mix->write(sound);
            EXPECT_EQ(folder.names(), QStringList{u".a."_s + extension(format) + u".new"_s});
        }
        EXPECT_EQ(folder.names(), QStringList{u"a."_s + extension(format)});
        QFile::remove(path(format));
        {
            const auto mix = writer(format);
            mix->write(sound);
            mix->abandon();
            EXPECT_EQ(folder.names(), QStringList());
            mix->finish();
        }
        EXPECT_EQ(folder.names(), QStringList());
    }
}

TEST_F(Writing, whatCannotBeOpenedIsToldAsItsFormatDoes)
{
    const auto open = [&](Master::Format format) {
        const DJ::Writer writer(folder.path(u"gone/a"_s), {.output = {.format = format}});
    };
    for (const Master::Format format :
         {Master::Format::wav, Master::Format::flac, Master::Format::alac, Master::Format::aac})
        EXPECT_EQ(errorOf([&] { open(format); }), ENOENT);
    EXPECT_THROW(open(Master::Format::mp3), DJ::Failure);
}

TEST_F(Writing, aFullDiskIsSwallowedUntilItIsAsked)
{
    const Channels sound(2, noise(60'000, 0.2));
    for (const Master::Format format : Master::allFormats) {
        const int code = inChild([&] {
            std::signal(SIGXFSZ, SIG_IGN);
            const rlimit full = {.rlim_cur = 10'000, .rlim_max = RLIM_INFINITY};
            ::setrlimit(RLIMIT_FSIZE, &full);
            const auto mix = writer(format);
            for (int piece = 0; piece < 5; ++piece)
                mix->write(sound);
            mix->finish();
            return errorOf([&] { mix->requireWhole(); });
        });
        EXPECT_EQ(code, EFBIG) << qPrintable(rawValue(format));
        EXPECT_EQ(folder.names(), QStringList());
    }
}
