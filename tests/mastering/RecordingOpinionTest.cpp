#include "mastering/Read.h"
#include "mastering/Write.h"
#include "mastering/arithmetic/Loudness.h"
#include "tests/mastering/arithmetic/LibraryOpinion.h"
#include "tests/mastering/arithmetic/Signals.h"
#include "tests/platform/sound/Program.h"
#include "tests/support/TestFolder.h"

#include <QDir>

#include <cstdio>
#include <gmock/gmock.h>

using namespace orvane;
using namespace orvane::test;
using namespace Qt::Literals::StringLiterals;

namespace {

/// What ffmpeg's meter reads, to three places: what it prints as its summary has only one.
Master::Reading programOpinion(const QString& path)
{
    const Outcome outcome =
        run(u"ffmpeg"_s, {u"-v"_s, u"error"_s, u"-i"_s, path, u"-af"_s,
                          u"ebur128=metadata=1,ametadata=mode=print:file=-"_s, u"-f"_s, u"null"_s, u"-"_s});
    EXPECT_EQ(outcome.exitCode, 0) << outcome.errors.toStdString();
    const auto last = [&](const QByteArray& key) {
        const qsizetype found = outcome.output.lastIndexOf(key);
        EXPECT_GE(found, 0) << qPrintable(path);
        return outcome.output.mid(found + key.size(), 20).split('\n').first().toDouble();
    };
    Master::Reading opinion;
    opinion.integrated = last("lavfi.r128.I=");
    opinion.range = last("lavfi.r128.LRA=");
    return opinion;
}

double secondsOf(const Master::Sound& sound)
{
    return double(sound.channels.front().size()) / sound.sampleRate;
}

/// What both other meters read of the file lies within a twentieth of a unit of what we read.
void expectAgreement(const QString& path)
{
    const Master::MeasuredSound file = Master::readAndMeasure(path);
    const Master::Reading program = programOpinion(path);
    EXPECT_NEAR(file.reading.integrated, program.integrated, 0.05) << qPrintable(path);
    // It takes the percentiles one rank further up, which tells where there are few values.
    if (secondsOf(file.sound) > 15.0) {
        EXPECT_NEAR(file.reading.range, program.range, 0.05) << qPrintable(path);
    }
    const Master::Reading library = libraryOpinion(file.sound.channels, file.sound.sampleRate);
    EXPECT_NEAR(file.reading.integrated, library.integrated, 0.05) << qPrintable(path);
    EXPECT_NEAR(file.reading.range, library.range, 0.05) << qPrintable(path);
    EXPECT_NEAR(file.reading.samplePeak, library.samplePeak, 1e-6) << qPrintable(path);
    EXPECT_NEAR(file.reading.truePeak, library.truePeak, 0.6) << qPrintable(path);
}

struct ThreeMeters : testing::Test
{
    TestFolder folder;
};

} // namespace

TEST_F(ThreeMeters, agreeOnComposedMusic)
{
    const QString path = folder.path(u"composed.wav"_s);
    Master::write(music(20.0, 44100.0), 44100.0, {}, path);
    expectAgreement(path);
    Master::write(sections(48000.0, 1), 48000.0, {}, path);
    expectAgreement(path);
}

TEST_F(ThreeMeters, agreeOnSixChannels)
{
    const QString path = folder.path(u"six.wav"_s);
    Master::write(sections(48000.0, 6), 48000.0, {}, path);
    expectAgreement(path);
}

/// The recordings lie beside the project where it is worked on. They are no part of it, so that elsewhere there are
/// none; the test says how many it was held against.
TEST_F(ThreeMeters, agreeOnEveryRecordingThatIsAtHand)
{
    const QDir recordings(QStringLiteral(ORVANE_RECORDINGS));
    const QStringList names = recordings.entryList({u"*.mp3"_s, u"*.wav"_s, u"*.flac"_s}, QDir::Files);
    std::printf("recordings: %d%s%s\n", int(names.size()), names.isEmpty() ? "" : ": ",
                qPrintable(names.join(u", "_s)));
    RecordProperty("recordings", int(names.size()));
    for (const QString& name : names)
        expectAgreement(recordings.filePath(name));
    const QString path = folder.path(u"composed.mp3"_s);
    Master::write(music(30.0, 44100.0), 44100.0, {.format = Master::Format::mp3}, path);
    expectAgreement(path);
}
