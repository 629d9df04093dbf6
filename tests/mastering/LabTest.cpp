#include "mastering/Master.h"
#include "tests/platform/sound/Program.h"
#include "tests/platform/sound/SoundFiles.h"
#include "tests/support/TestFolder.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gmock/gmock.h>

using namespace orvane;
using namespace orvane::test;
using namespace Qt::Literals::StringLiterals;

namespace {

struct Laboratory : testing::Test
{
    TestFolder folder;
    std::vector<float> sound = tones(100'000, 2, 44100);
    QString file = folder.write(u"in.wav"_s, wav(floatBytes(sound), 44100, 2, 32, WavKind::Float));

    static Outcome lab(const QStringList& arguments) { return run(QStringLiteral(ORVANE_LAB), arguments); }

    static QJsonDocument answer(const QStringList& arguments)
    {
        const Outcome outcome = lab(arguments);
        EXPECT_EQ(outcome.exitCode, 0) << outcome.errors.toStdString();
        EXPECT_EQ(outcome.errors.toStdString(), "");
        return QJsonDocument::fromJson(outcome.output);
    }

    static void expectFailure(const QStringList& arguments, const std::string& sentence)
    {
        const Outcome outcome = lab(arguments);
        EXPECT_EQ(outcome.exitCode, 1);
        EXPECT_EQ(outcome.output.toStdString(), "");
        EXPECT_THAT(outcome.errors.toStdString(), testing::StartsWith(sentence));
    }

    Master::Reading reading() const
    {
        const Master::Sound read = Master::read(file);
        return Master::measure(read.channels, read.sampleRate);
    }
};

} // namespace

TEST_F(Laboratory, measuresAFile)
{
    const QJsonObject found = answer({u"measure"_s, file}).object();
    EXPECT_EQ(found.keys(), (QStringList{u"integrated"_s, u"range"_s, u"samplePeak"_s, u"truePeak"_s}));
    EXPECT_EQ(found[u"integrated"].toDouble(), reading().integrated);
    EXPECT_EQ(found[u"truePeak"].toDouble(), reading().truePeak);
    EXPECT_EQ(found[u"range"].toDouble(), reading().range);
    EXPECT_EQ(found[u"samplePeak"].toDouble(), reading().samplePeak);
}

TEST_F(Laboratory, whatDoesNotExistIsNull)
{
    const QString silent = folder.write(u"silent.wav"_s, wav(QByteArray(40'000, '\0'), 44100, 2, 16, WavKind::Integer));
    const QJsonObject found = answer({u"measure"_s, silent}).object();
    EXPECT_TRUE(found[u"integrated"].isNull());
    EXPECT_TRUE(found[u"truePeak"].isNull());
    EXPECT_TRUE(found[u"samplePeak"].isNull());
    EXPECT_EQ(found[u"range"].toDouble(-1.0), 0.0);
}

TEST_F(Laboratory, mastersAFile)
{
    const QString out = folder.path(u"out.flac"_s);
    const QJsonObject found =
        answer({u"master"_s, file, out, u"--target"_s, u"-20"_s, u"--ceiling"_s, u"-1"_s, u"--format"_s, u"flac"_s})
            .object();
    EXPECT_EQ(found.keys(), (QStringList{u"after"_s, u"before"_s, u"gainApplied"_s, u"limited"_s}));
    EXPECT_EQ(found[u"before"].toObject()[u"integrated"].toDouble(), reading().integrated);
    EXPECT_NEAR(found[u"after"].toObject()[u"integrated"].toDouble(), -20.0, 1e-6);
    EXPECT_NEAR(found[u"gainApplied"].toDouble(), -20.0 - reading().integrated, 1e-6);
    EXPECT_EQ(found[u"limited"], QJsonValue(false));
    EXPECT_EQ(probed(out, u"format=format_name"_s), u"flac"_s);
}

TEST_F(Laboratory, mastersAnMp3AtItsRateAndWithATag)
{
    const QString out = folder.path(u"out.mp3"_s);
    const QStringList arguments{u"master"_s, file,          out,      u"--target"_s, u"-20"_s, u"--ceiling"_s,
                                u"-1"_s,     u"--format"_s, u"mp3"_s, u"--rate"_s,   u"128"_s};
    const double without = answer(arguments).object()[u"before"].toObject()[u"integrated"].toDouble();
    EXPECT_EQ(probed(out, u"stream=bit_rate"_s), u"128000"_s);
    const QString tag =
        folder.write(u"tag.wav"_s, wav(floatBytes(tones(30'000, 1, 44100)), 44100, 1, 32, WavKind::Float));
    const QStringList tagged{u"--tag"_s, tag, u"--level"_s, u"0"_s, u"--placement"_s, u"1001"_s};
    EXPECT_GT(answer(arguments + tagged).object()[u"before"].toObject()[u"integrated"].toDouble(), without + 0.1);
}

TEST_F(Laboratory, listsThePlatformsAndWhatTheyDo)
{
    const QJsonArray table = answer({u"platforms"_s}).array();
    EXPECT_EQ(table.size(), 16);
    EXPECT_EQ(table[0].toObject().keys(),
              (QStringList{u"ceiling"_s, u"confidence"_s, u"name"_s, u"normalisation"_s, u"note"_s, u"target"_s}));
    EXPECT_EQ(table[0].toObject()[u"name"], u"Spotify"_s);
    EXPECT_EQ(table[0].toObject()[u"normalisation"], u"upAndDown"_s);
    const QJsonArray changes = answer({u"platforms"_s, file}).array();
    EXPECT_EQ(changes.size(), 16);
    EXPECT_NEAR(changes[2].toObject()[u"change"].toDouble(), -16.0 - reading().integrated, 1e-9);
}

TEST_F(Laboratory, decodesAFileToPlanes)
{
    const QJsonObject found = answer({u"decode"_s, file, folder.path(u"out.f32"_s)}).object();
    EXPECT_EQ(found[u"sampleRate"].toInt(), 44100);
    EXPECT_EQ(found[u"channels"].toInt(), 2);
    EXPECT_EQ(found[u"frames"].toInt(), 100'000);
    std::vector<float> planes;
    for (std::size_t channel = 0; channel < 2; ++channel) {
        for (std::size_t frame = 0; frame < 100'000; ++frame)
            planes.push_back(sound[frame * 2 + channel]);
    }
    EXPECT_EQ(folder.read(u"out.f32"_s), floatBytes(planes));
}

TEST_F(Laboratory, stretchesAFileAndMovesItsPitch)
{
    const QString out = folder.path(u"out.flac"_s);
    const QJsonObject shorter = answer({u"stretch"_s, file, out, u"1.25"_s}).object();
    EXPECT_EQ(shorter[u"before"].toInt(), 100'000);
    const Channels channels = Master::read(file).channels;
    EXPECT_EQ(std::size_t(shorter[u"after"].toInt()), Master::stretch(channels[0], 1.25).size());
    EXPECT_EQ(Master::read(out).channels[0].size(), std::size_t(shorter[u"after"].toInt()));
    EXPECT_EQ(probed(out, u"format=format_name"_s), u"flac"_s);
    const QJsonObject higher = answer({u"pitch"_s, file, folder.path(u"out"_s), u"-2"_s}).object();
    EXPECT_EQ(std::size_t(higher[u"after"].toInt()), Master::pitchShift(channels[0], -2.0).size());
    EXPECT_EQ(probed(folder.path(u"out"_s), u"format=format_name"_s), u"wav"_s);
    expectFailure({u"stretch"_s, file, out, u"fast"_s}, "fast is not a number.");
}

TEST_F(Laboratory, aFailureIsASentenceOnStandardError)
{
    expectFailure({u"measure"_s, folder.path(u"gone.wav"_s)}, "gone.wav: No such file or directory\n");
    expectFailure({u"measure"_s, folder.write(u"page.mp3"_s, "<html>")}, "page.mp3: ");
    expectFailure({}, "What to do? One of:");
    expectFailure({u"dance"_s}, "What to do? One of:");
    expectFailure({u"measure"_s}, "There are 1 arguments too few.");
    expectFailure({u"measure"_s, file, file}, "There are 1 arguments too many.");
    expectFailure({u"measure"_s, file, u"--loud"_s, u"1"_s}, "There is no option --loud.");
    const QStringList master{u"master"_s, file, folder.path(u"out.wav"_s), u"--ceiling"_s, u"-1"_s};
    expectFailure(master + QStringList{u"--format"_s, u"wav"_s}, "--target is missing.");
    expectFailure(master + QStringList{u"--format"_s, u"ogg"_s, u"--target"_s, u"-14"_s}, "There is no format ogg.");
    expectFailure(master + QStringList{u"--format"_s, u"wav"_s, u"--target"_s, u"low"_s},
                  "--target takes a number, not low.");
    expectFailure(master + QStringList{u"--format"_s, u"mp3"_s, u"--target"_s, u"-14"_s, u"--rate"_s, u"200"_s},
                  "There is no rate 200.");
    expectFailure(master + QStringList{u"--target"_s}, "--target needs a value.");
    EXPECT_EQ(folder.names(), (QStringList{u"in.wav"_s, u"page.mp3"_s}));
}
