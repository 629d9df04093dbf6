#include "mastering/Master.h"
#include "tests/dj/MixFiles.h"
#include "tests/mastering/arithmetic/Signals.h"
#include "tests/platform/sound/Program.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace orvane;
using namespace orvane::test;
using namespace Qt::Literals::StringLiterals;

namespace {

struct MixVerb : MixFiles
{
    QStringList files{write(u"one"_s, 6.0), write(u"two"_s, 5.0), write(u"three"_s, 5.5)};

    QString write(const QString& name, double seconds) const
    {
        const QString path = folder.path(name + u".wav"_s);
        Master::write(music(seconds, 44100.0), 44100.0, {.format = Master::Format::wav}, path);
        return path;
    }

    static Outcome lab(const QStringList& options, const QStringList& files)
    {
        return run(QStringLiteral(ORVANE_LAB), QStringList{u"mix"_s} + files + options);
    }

    QByteArray bytes(const QString& path) const { return folder.read(QDir(folder.path()).relativeFilePath(path)); }

    /// Expects that the verb makes of these options what rendering makes of these settings.
    void expectSame(const QStringList& options, const DJ::MixSettings& settings, const QString& name) const
    {
        const Outcome outcome = lab(options, QStringList{folder.path(u"lab"_s)} + files);
        ASSERT_EQ(outcome.exitCode, 0) << outcome.errors.toStdString();
        const QJsonObject told = QJsonDocument::fromJson(outcome.output).object();
        DJ::Set set;
        for (const QString& file : files)
            set.append(DJ::analyse(QUrl::fromLocalFile(file)));
        const DJ::Mix wanted = DJ::render(DJ::asMixed(set, settings), settings, out(), name);
        const QString fileName = name + u'.' + extension(settings.format);
        EXPECT_EQ(told[u"url"].toString(),
                  QUrl::fromLocalFile(folder.path(u"lab/"_s + fileName)).toString(QUrl::FullyEncoded));
        EXPECT_EQ(told[u"cue"].toString(),
                  QUrl::fromLocalFile(folder.path(u"lab/"_s + name + u".txt"_s)).toString(QUrl::FullyEncoded));
        EXPECT_EQ(told[u"duration"].toDouble(), wanted.duration);
        EXPECT_EQ(told[u"bpm"].toDouble(), wanted.bpm);
        const QJsonArray moves = told[u"moves"].toArray();
        ASSERT_EQ(moves.size(), wanted.moves.size());
        for (qsizetype index = 0; index < moves.size(); ++index) {
            const QJsonObject move = moves[index].toObject();
            EXPECT_EQ(move[u"from"].toString(), wanted.moves[index].from);
            EXPECT_EQ(move[u"to"].toString(), wanted.moves[index].to);
            EXPECT_EQ(move[u"atSeconds"].toDouble(-1.0), wanted.moves[index].atSeconds);
            EXPECT_EQ(move[u"keyMove"].toString(), wanted.moves[index].keyMove);
            EXPECT_EQ(move[u"tempoChange"].toDouble(-1e9), wanted.moves[index].tempoChange);
        }
        EXPECT_TRUE(bytes(folder.path(u"lab/"_s + fileName)) == bytes(out() + u'/' + fileName));
        EXPECT_EQ(bytes(folder.path(u"lab/"_s + name + u".txt"_s)), bytes(out() + u'/' + name + u".txt"_s));
    }
};

} // namespace

TEST_F(MixVerb, isARenderOfTheFilesInTheirOrder)
{
    expectSame({}, {}, u"Orvane DJ Mix"_s);
}

TEST_F(MixVerb, everyOptionIsASetting)
{
    expectSame({u"--name"_s, u"Friday night"_s, u"--crossfade"_s, u"3"_s, u"--stretch"_s, u"0.2"_s, u"--nudge"_s,
                u"2"_s, u"--no-level"_s, u"--no-sweep"_s, u"--no-fade"_s, u"--no-preserve-pitch"_s, u"--format"_s,
                u"flac"_s},
               {.crossfade = 3.0,
                .filterSweep = false,
                .levelMatch = false,
                .fadeEdges = false,
                .maxStretch = 0.2,
                .keyNudge = 2,
                .preservePitch = false,
                .format = Master::Format::flac},
               u"Friday night"_s);
    expectSame({u"--no-match"_s, u"--format"_s, u"mp3"_s, u"--rate"_s, u"128"_s, u"--tag"_s, files[1], u"--level"_s,
                u"-9"_s, u"--placement"_s, u"2"_s},
               {.matchTempo = false,
                .watermark = {.isOn = true, .file = files[1], .level = -9.0, .placement = {.count = 2}},
                .format = Master::Format::mp3,
                .mp3Rate = Master::MP3Rate::v128},
               u"Orvane DJ Mix"_s);
}

TEST_F(MixVerb, aFailureIsASentenceOnStandardError)
{
    const auto expectFailure = [](const QStringList& options, const QStringList& paths, const std::string& sentence) {
        const Outcome outcome = lab(options, paths);
        EXPECT_EQ(outcome.exitCode, 1);
        EXPECT_EQ(outcome.output.toStdString(), "");
        EXPECT_THAT(outcome.errors.toStdString(), testing::StartsWith(sentence));
    };
    const QString lab = folder.path(u"lab"_s);
    expectFailure({}, {lab}, "There are 1 arguments too few.");
    expectFailure({}, {lab, folder.path(u"gone.mp3"_s)}, "gone.mp3: ");
    expectFailure({}, {files[0], files[1]}, "one.wav: ");
    expectFailure({u"--stretch"_s, u"20"_s}, {lab, files[0]}, "--stretch takes a number from 0 to 0.5.");
    expectFailure({u"--format"_s, u"ogg"_s}, {lab, files[0]}, "There is no format ogg.");
    expectFailure({u"--name"_s, u"../away"_s}, {lab, files[0]}, "away.wav: Invalid argument");
    EXPECT_FALSE(QFile::exists(folder.path(u"away.wav"_s)));
}
