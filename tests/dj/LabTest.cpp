#include "dj/KeyText.h"
#include "dj/Ordering.h"
#include "mastering/Master.h"
#include "tests/dj/KnownTrack.h"
#include "tests/platform/sound/Program.h"
#include "tests/support/TestFolder.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gmock/gmock.h>

using namespace orvane;
using namespace orvane::test;
using namespace Qt::Literals::StringLiterals;

namespace {

struct DJVerbs : testing::Test
{
    TestFolder folder;
    QStringList files{write(u"fast"_s, 150.0, 0.9), write(u"slow"_s, 90.0, 0.2), write(u"middle"_s, 120.0, 0.5)};

    QString write(const QString& name, double bpm, double gain) const
    {
        Channels channels{playKit({.bpm = bpm, .seconds = 6.0}).samples};
        Master::amplify(channels, gain);
        const QString path = folder.path(name + u".wav"_s);
        Master::write(channels, 44100.0, {.format = Master::Format::wav}, path);
        return path;
    }

    static Outcome lab(const QStringList& arguments) { return run(QStringLiteral(ORVANE_LAB), arguments); }

    static QJsonArray answer(const QStringList& arguments)
    {
        const Outcome outcome = lab(arguments);
        EXPECT_EQ(outcome.exitCode, 0) << outcome.errors.toStdString();
        return QJsonDocument::fromJson(outcome.output).array();
    }

    static QStringList titles(const QJsonArray& tracks)
    {
        QStringList result;
        for (const QJsonValue& track : tracks)
            result.append(track.toObject()[u"title"].toString());
        return result;
    }
};

} // namespace

TEST_F(DJVerbs, analyseTellsWhatIsHeardInEachFile)
{
    const QJsonArray found = answer(QStringList{u"analyse"_s} + files);
    ASSERT_EQ(found.size(), 3);
    for (qsizetype index = 0; index < files.size(); ++index) {
        const DJ::Analysis wanted = DJ::analyse(QUrl::fromLocalFile(files[index]));
        const QJsonObject track = found[index].toObject();
        EXPECT_EQ(track.keys(), (QStringList{u"bpm"_s, u"duration"_s, u"energy"_s, u"grid"_s, u"key"_s, u"playedBPM"_s,
                                             u"title"_s, u"url"_s}));
        EXPECT_EQ(track[u"url"].toString(), wanted.url.toString());
        EXPECT_EQ(track[u"title"].toString(), wanted.title);
        EXPECT_EQ(track[u"bpm"].toDouble(), wanted.bpm);
        EXPECT_EQ(track[u"energy"].toDouble(), wanted.energy);
        EXPECT_EQ(track[u"duration"].toDouble(), wanted.duration);
        EXPECT_EQ(track[u"playedBPM"].toDouble(-1.0), 0.0);
        const QJsonObject grid = track[u"grid"].toObject();
        EXPECT_EQ(grid[u"bpm"].toDouble(), wanted.grid.bpm);
        EXPECT_EQ(grid[u"phase"].toDouble(), wanted.grid.phase);
        EXPECT_EQ(grid[u"downbeat"].toInt(-1), wanted.grid.downbeat);
        EXPECT_EQ(grid[u"cueIn"].toDouble(), wanted.grid.cueIn);
        EXPECT_EQ(grid[u"firstBar"].toDouble(), wanted.grid.firstBar());
        const QJsonObject key = track[u"key"].toObject();
        EXPECT_EQ(key[u"tonic"].toInt(-1), wanted.key.tonic);
        EXPECT_EQ(key[u"isMinor"].toBool(), wanted.key.isMinor);
        EXPECT_EQ(key[u"name"].toString(), DJ::name(wanted.key));
        EXPECT_EQ(key[u"camelot"].toString(), DJ::camelot(wanted.key));
    }
}

TEST_F(DJVerbs, orderTellsTheTracksInTheOrderOfAStyle)
{
    DJ::Set set;
    for (const QString& file : files)
        set.append(DJ::analyse(QUrl::fromLocalFile(file)));
    const auto wanted = [&set](DJ::Ordering style) {
        QStringList result;
        for (const DJ::Analysis& track : DJ::order(set, style))
            result.append(track.title);
        return result;
    };
    const QStringList verb = QStringList{u"order"_s} + files;
    EXPECT_EQ(titles(answer(verb)), wanted(DJ::Ordering::energyArc));
    EXPECT_EQ(titles(answer(verb))[0], u"slow"_s);
    EXPECT_EQ(titles(answer(verb + QStringList{u"--style"_s, u"energyArc"_s})), wanted(DJ::Ordering::energyArc));
    EXPECT_EQ(titles(answer(verb + QStringList{u"--style"_s, u"keyJourney"_s})), wanted(DJ::Ordering::keyJourney));
    EXPECT_EQ(titles(answer(verb + QStringList{u"--style"_s, u"asListed"_s})),
              (QStringList{u"fast"_s, u"slow"_s, u"middle"_s}));
    QStringList shuffled = titles(answer(verb + QStringList{u"--style"_s, u"shuffle"_s}));
    shuffled.sort();
    EXPECT_EQ(shuffled, (QStringList{u"fast"_s, u"middle"_s, u"slow"_s}));
}

TEST_F(DJVerbs, aFailureIsASentenceOnStandardError)
{
    const auto expectFailure = [](const QStringList& arguments, const std::string& sentence) {
        const Outcome outcome = lab(arguments);
        EXPECT_EQ(outcome.exitCode, 1);
        EXPECT_EQ(outcome.output.toStdString(), "");
        EXPECT_THAT(outcome.errors.toStdString(), testing::StartsWith(sentence));
    };
    expectFailure({u"analyse"_s}, "There are 1 arguments too few.");
    expectFailure({u"analyse"_s, files[0], folder.path(u"gone.mp3"_s)}, "gone.mp3: ");
    expectFailure({u"order"_s, files[0], u"--style"_s, u"loud"_s}, "There is no style loud.");
}
