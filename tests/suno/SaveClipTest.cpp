#include "suno/SaveClip.h"

#include "suno/TrackNames.h"
#include "tests/suno/EngineTest.h"
#include "tests/suno/HostileTitles.h"
#include "trackfiles/keys/TrackKeys.h"

#include <QDir>
#include <QFileInfo>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

const AssetSet everything{Asset::audio, Asset::lyrics, Asset::lrc, Asset::artwork};

class SaveClip : public EngineTest
{
protected:
    SaveClip()
    {
        clip.audioURL = server.url(u"/a.mp3"_s).toString();
        clip.imageURL = server.url(u"/a.png"_s).toString();
    }

    ClipResult save(const AssetSet& assets = everything)
    {
        return QCoro::waitFor(saveClip(engine, clip, {assets, folder.path(), u"token"_s}, u"001 - Song"_s, u"Song"_s));
    }

    void serveFiles() { server.play({send(answer("200 OK", {}, "bytes"))}); }

    Clip clip{.id = u"a"_s, .title = u"Song!"_s, .lyrics = u"one\ntwo"_s, .tags = u"pop"_s, .durationSeconds = 90};
};

TEST_F(SaveClip, allChosenAssetsLieSideBySide)
{
    serveFiles();
    EXPECT_EQ(save(), ClipResult());
    EXPECT_EQ(namesInFolder(),
              (QStringList{u"001 - Song lyrics.txt"_s, u"001 - Song.lrc"_s, u"001 - Song.mp3"_s, u"001 - Song.png"_s}));
    EXPECT_EQ(contents(path(u"001 - Song lyrics.txt"_s)), "Title: Song!\nTags: pop\n\none\ntwo");
    EXPECT_EQ(contents(path(u"001 - Song.lrc"_s)),
              "[ti:Song!]\n[ar:Suno AI]\n[al:Suno AI]\n[00:30.00]one\n[01:00.00]two\n");
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(SaveClip, whatIsNotChosenIsNotSaved)
{
    serveFiles();
    EXPECT_EQ(save({Asset::lrc}), ClipResult());
    EXPECT_EQ(namesInFolder(), QStringList{u"001 - Song.lrc"_s});
    EXPECT_EQ(save({}), ClipResult());
    EXPECT_THAT(server.requests(), IsEmpty());
}

TEST_F(SaveClip, theAudioIsAskedForBeforeTheCover)
{
    serveFiles();
    save();
    QList<QByteArray> targets;
    for (const QByteArray& head : server.requests())
        targets.append(targetOf(head));
    EXPECT_THAT(targets, ElementsAre("/a.mp3", "/a.png"));
}

TEST_F(SaveClip, anInstrumentalHasNoLyricsFileButATimedOne)
{
    clip.lyrics.clear();
    serveFiles();
    EXPECT_EQ(save({Asset::lyrics, Asset::lrc}), ClipResult());
    EXPECT_EQ(namesInFolder(), QStringList{u"001 - Song.lrc"_s});
}

TEST_F(SaveClip, aClipWithoutACoverIsNoFailure)
{
    clip.imageURL.reset();
    EXPECT_EQ(save({Asset::artwork}), ClipResult());
    EXPECT_THAT(server.requests(), IsEmpty());
}

TEST_F(SaveClip, aFailureIsCountedAndLoggedAndHoldsNothingBack)
{
    server.play(status(404));
    EXPECT_EQ(save(), (ClipResult{.problems = 2, .audioFailed = true, .stopped = false}));
    EXPECT_THAT(log,
                ElementsAre(error(u"MP3 failed for Song: HTTP 404"_s), error(u"Artwork failed for Song: HTTP 404"_s)));
    EXPECT_EQ(namesInFolder(), (QStringList{u"001 - Song lyrics.txt"_s, u"001 - Song.lrc"_s}));
}

TEST_F(SaveClip, anEmptyAudioAddressFailsHere)
{
    clip.audioURL = QString();
    EXPECT_EQ(save({Asset::audio}), (ClipResult{.problems = 1, .audioFailed = true, .stopped = false}));
    EXPECT_THAT(log, ElementsAre(error(u"MP3 failed for Song: bad URL"_s)));
}

TEST_F(SaveClip, aTextThatCannotBeWrittenIsToldWithItsFile)
{
    const ClipResult result =
        QCoro::waitFor(saveClip(engine, clip, {{Asset::lyrics, Asset::lrc}, path(u"gone"_s), {}}, u"b"_s, u"Song"_s));
    EXPECT_EQ(result, (ClipResult{.problems = 2, .stopped = false}));
    EXPECT_THAT(log, ElementsAre(error(u"Lyrics failed for Song: b lyrics.txt: No such file or directory"_s),
                                 error(u"Timed lyrics failed for Song: b.lrc: No such file or directory"_s)));
}

TEST_F(SaveClip, aSecondRunAsksForNothingAndChangesNothing)
{
    serveFiles();
    save();
    const qsizetype asked = server.requests().size();
    clip.lyrics = u"other"_s;
    EXPECT_EQ(save(), ClipResult());
    EXPECT_EQ(server.requests().size(), asked);
    EXPECT_TRUE(contents(path(u"001 - Song lyrics.txt"_s)).endsWith("one\ntwo"));
}

TEST_F(SaveClip, aStoppedAudioEndsTheRunBeforeAnyOtherAsset)
{
    serveFiles();
    engine.stop();
    EXPECT_EQ(save(), (ClipResult{.problems = 0, .stopped = true}));
    EXPECT_EQ(namesInFolder(), QStringList());
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(SaveClip, aStoppedCoverIsNoProblem)
{
    engine.stop();
    EXPECT_EQ(save({Asset::lrc, Asset::artwork}), (ClipResult{.problems = 0, .stopped = true}));
    EXPECT_EQ(namesInFolder(), QStringList{u"001 - Song.lrc"_s});
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(SaveClip, twoClipsWithOneTitleAreBothSavedAtFirstAndShareTheSmallerBaseLater)
{
    serveFiles();
    clip.title = u"Same"_s;
    for (int run = 0; run < 2; ++run) {
        const auto existing = ExistingFiles::byTitle(folder.path());
        for (int index = 0; index < 2; ++index) {
            const ClipNames names = clipNames(clip, index, existing);
            const ClipResult result = QCoro::waitFor(
                saveClip(engine, clip, {{Asset::audio}, folder.path(), u"token"_s}, names.base, names.safeTitle));
            EXPECT_EQ(result, ClipResult());
        }
        EXPECT_EQ(namesInFolder(), (QStringList{u"001 - Same.mp3"_s, u"002 - Same.mp3"_s}));
        EXPECT_EQ(server.requests().size(), 2);
    }
}

TEST_F(SaveClip, everyHostileTitleLandsInsideTheFolderAndIsFoundAgain)
{
    serveFiles();
    ASSERT_TRUE(QDir(folder.path()).mkpath(u"in/side"_s));
    const QString inside = path(u"in/side"_s);
    const QStringList titles = hostileTitles();
    for (int index = 0; index < titles.size(); ++index) {
        clip.title = titles[index];
        const ClipNames names = clipNames(clip, index, {});
        const ClipResult result =
            QCoro::waitFor(saveClip(engine, clip, {everything, inside, u"token"_s}, names.base, names.safeTitle));
        EXPECT_EQ(result, ClipResult()) << qPrintable(names.base);
        for (const QString& ending : {u".mp3"_s, u" lyrics.txt"_s, u".lrc"_s, u".png"_s})
            EXPECT_TRUE(QFileInfo(inside + u'/' + names.base + ending).isFile()) << qPrintable(names.base + ending);
    }
    EXPECT_EQ(QDir(inside).entryList(QDir::Files | QDir::Hidden).size(), titles.size() * 4);
    EXPECT_EQ(namesInFolder(), QStringList{u"in"_s});
    EXPECT_THAT(log, IsEmpty());
}

} // namespace
} // namespace orvane::test
