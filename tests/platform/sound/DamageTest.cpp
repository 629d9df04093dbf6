#include "tests/platform/sound/SoundFiles.h"
#include "tests/support/Sandbox.h"
#include "tests/support/TestFolder.h"

#include <QFileInfo>

#include <cmath>
#include <gmock/gmock.h>
#include <random>

using namespace orvane;
using namespace orvane::test;
using namespace Qt::Literals::StringLiterals;

namespace {

struct Format
{
    const char* name;
    QStringList options;
};

void PrintTo(const Format& format, std::ostream* stream)
{
    *stream << format.name;
}

/// A file that is damaged in every way: it is either read, and then holds numbers, or refused by its name.
struct DamagedSound : testing::TestWithParam<Format>
{
    TestFolder folder;

    QByteArray whole() const
    {
        const QString source =
            folder.write(u"source.wav"_s, wav(floatBytes(tones(20'000, 2, 44100)), 44100, 2, 32, WavKind::Float));
        const QString name = u"whole."_s + QString::fromLatin1(GetParam().name).section(u'.', 1);
        EXPECT_TRUE(convert(source, GetParam().options, folder.path(name)));
        return folder.read(name);
    }

    void expectNumbersOrName(const QByteArray& bytes) const
    {
        const QString path = folder.write(QString::fromLatin1(GetParam().name), bytes);
        const QString failure = failureOf(path);
        if (!failure.isEmpty()) {
            EXPECT_THAT(failure.toStdString(), testing::StartsWith(QFileInfo(path).fileName().toStdString() + ": "));
            return;
        }
        for (const auto& plane : decodeWhole(path).planes) {
            for (const float sample : plane)
                ASSERT_TRUE(std::isfinite(sample));
        }
    }
};

INSTANTIATE_TEST_SUITE_P(
    Formats, DamagedSound,
    testing::Values(Format{"cut.mp3", {u"-b:a"_s, u"192k"_s}}, Format{"cut.wav", {u"-c:a"_s, u"pcm_s24le"_s}},
                    Format{"cut.flac", {}}, Format{"cut.m4a", {u"-c:a"_s, u"aac"_s}},
                    Format{"alac.m4a", {u"-c:a"_s, u"alac"_s}}, Format{"cut.ogg", {u"-c:a"_s, u"libvorbis"_s}},
                    Format{"cut.opus", {u"-c:a"_s, u"libopus"_s}}, Format{"cut.aiff", {}}, Format{"cut.caf", {}}));

} // namespace

TEST_P(DamagedSound, cutAtEverySixteenthIsReadOrRefused)
{
    const QByteArray bytes = whole();
    for (int sixteenth = 0; sixteenth <= 16; ++sixteenth)
        expectNumbersOrName(bytes.first(bytes.size() * sixteenth / 16));
}

TEST_P(DamagedSound, withFlippedBytesIsReadOrRefused)
{
    const QByteArray bytes = whole();
    std::mt19937 generator(seed());
    for (int run = 0; run < 40; ++run) {
        QByteArray damaged = bytes;
        // Half of the runs damage the header alone.
        const auto end = std::size_t(run % 2 == 0 ? damaged.size() : std::min<qsizetype>(damaged.size(), 300));
        for (int flip = 0; flip < 8; ++flip)
            damaged[qsizetype(generator() % end)] = char(generator());
        expectNumbersOrName(damaged);
    }
}
