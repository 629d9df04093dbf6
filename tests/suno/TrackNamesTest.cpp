#include "suno/TrackNames.h"

#include "platform/filesystem/FileError.h"
#include "tests/suno/HostileTitles.h"
#include "trackfiles/keys/TrackKeys.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace orvane {
namespace {

using namespace Qt::Literals::StringLiterals;

const QString fallback = u"track_7"_s;

QString safe(const QString& name)
{
    return safeName(name, fallback);
}

QByteArray contentsOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
    return file.readAll();
}

TEST(SafeName, forbiddenCharactersBecomeUnderscores)
{
    EXPECT_EQ(safe(u"a/b:c"_s), u"a_b_c"_s);
    EXPECT_EQ(safe(u"/\\?%*:|\"<>"_s), QString(10, u'_'));
    EXPECT_EQ(safe(u"a\tb\nc\u0001d\u001fe"_s), u"a_b_c_d_e"_s);
    EXPECT_EQ(safe(u"a\0b"_s), u"a_b"_s);
    EXPECT_EQ(safe(u"a\u2028b\u2029c\u0085d"_s), u"a_b_c_d"_s);
}

TEST(SafeName, dotsAloneGiveTheFallback)
{
    for (const QString& name : {QString(), u"."_s, u".."_s, u"..."_s, u" . ."_s, u"  "_s, QString(300, u'.')})
        EXPECT_EQ(safe(name), fallback) << qPrintable(name);
    EXPECT_EQ(safeName(u"..."_s, QString()), QString());
}

TEST(SafeName, dotsAndBlanksAtTheEndGo)
{
    EXPECT_EQ(safe(u"track. "_s), u"track"_s);
    EXPECT_EQ(safe(u"track . . ."_s), u"track"_s);
    EXPECT_EQ(safe(u"..track"_s), u"track"_s);
    EXPECT_EQ(safe(u".. track"_s), u"track"_s);
    EXPECT_EQ(safe(u"  track"_s), u"track"_s);
}

TEST(SafeName, leadingDotsAreLookedForBeforeBlanks)
{
    EXPECT_EQ(safe(u" .track"_s), u".track"_s);
}

TEST(SafeName, aTitleOf130CharactersEndingAfterTheCutInADotLosesTheDot)
{
    EXPECT_EQ(safe(QString(119, u'a') + u'.' + QString(10, u'b')), QString(119, u'a'));
    EXPECT_EQ(safe(QString(117, u'a') + u". ."_s + QString(10, u'b')), QString(117, u'a'));
    EXPECT_EQ(safe(QString(130, u'a')), QString(120, u'a'));
}

TEST(SafeName, charactersAreCountedAsAPersonSeesThem)
{
    const QString composedOfTwo = u"q\u0301"_s;
    EXPECT_EQ(safe(composedOfTwo.repeated(30) + QString(100, u'a')), composedOfTwo.repeated(30) + QString(90, u'a'));
}

TEST(SafeName, isAtMost200BytesCutBetweenCharacters)
{
    const QString family = u"\U0001F468\u200D\U0001F469\u200D\U0001F467"_s;
    const qsizetype bytes = family.toUtf8().size();
    EXPECT_EQ(safe(family.repeated(40)), family.repeated(200 / bytes));
    EXPECT_EQ(safe(u"漢"_s.repeated(120)), u"漢"_s.repeated(66));
    const QString flag = u"\U0001F1E9\U0001F1EA"_s;
    EXPECT_EQ(safe(flag.repeated(40)), flag.repeated(25));
    EXPECT_EQ(safe(u"a"_s + flag.repeated(40)), u"a"_s + flag.repeated(24));
}

TEST(SafeName, theCutTo200BytesLeavesNoDotOrBlankAtTheEnd)
{
    EXPECT_EQ(safe(u"漢"_s.repeated(66) + u". 漢"_s), u"漢"_s.repeated(66));
}

TEST(SafeName, aSingleCharacterOfMoreThan200BytesIsCutBetweenItsParts)
{
    const QString tower = u"q"_s + QString(500, QChar(0x0301));
    EXPECT_EQ(safe(tower), u"q"_s + QString(99, QChar(0x0301)));
}

TEST(SafeName, theResultIsInComposedForm)
{
    EXPECT_EQ(safe(u"Cafe\u0301"_s), u"Caf\u00e9"_s);
    EXPECT_EQ(safe(u"Cafe\u200e\u0301"_s), u"Caf\u00e9"_s);
}

TEST(SafeName, bidirectionalControlsDoNotSurvive)
{
    EXPECT_EQ(safe(u"a\u202egpj\u202c.\u2066b\u2069\u200f\u200e\u061c"_s), u"agpj.b"_s);
    EXPECT_EQ(safe(u"\u202e.."_s), fallback);
}

TEST(SafeName, aByteOrderMarkDoesNotSurvive)
{
    EXPECT_EQ(safe(u"\ufeffSong\ufeff"_s), u"Song"_s);
    EXPECT_EQ(safe(u"\ufeff."_s), fallback);
}

TEST(SafeName, loneSurrogatesAreReplaced)
{
    const QString high{QChar(0xd83d)};
    const QString low{QChar(0xde00)};
    EXPECT_EQ(safe(u"a"_s + high + u"b"_s), u"a\ufffdb"_s);
    EXPECT_EQ(safe(low + high), u"\ufffd\ufffd"_s);
    EXPECT_EQ(safe(high + low), u"\U0001F600"_s);
}

TEST(SafeName, aTitleOfTenMegabytesIsReadNoFurtherThanItCounts)
{
    const qsizetype tenMegabytes = 10 * 1024 * 1024;
    EXPECT_EQ(safe(QString(tenMegabytes, u'x')), QString(120, u'x'));
    EXPECT_EQ(safe(QString(tenMegabytes, QChar(0x202e)) + u"x"_s), u"x"_s);
    EXPECT_EQ(safe(QString(tenMegabytes, u'.') + u"x"_s), fallback);
}

TEST(SafeName, everyHostileTitleGivesANameThatStaysInItsFolder)
{
    for (const QString& title : test::hostileTitles()) {
        const QString name = safe(title);
        SCOPED_TRACE(qPrintable(name));
        EXPECT_FALSE(name.isEmpty() || name == u"."_s || name == u".."_s);
        EXPECT_FALSE(name.contains(u'/') || name.contains(QChar::Null) || name.contains(u'\n'));
        EXPECT_LE(name.toUtf8().size(), 200);
        EXPECT_EQ(QString::fromUtf8(name.toUtf8()), name);
        EXPECT_EQ(name.normalized(QString::NormalizationForm_C), name);
        EXPECT_EQ(safeName(name, u"other"_s), name);
    }
}

TEST(ClipNames, takeTheNumberOfTheTrackWhereTheTitleLeavesNothing)
{
    const Clip untold{.id = u"a"_s, .title = u"..."_s};
    EXPECT_EQ(clipNames(untold, 6, {}), (ClipNames{.safeTitle = u"track_7"_s, .base = u"007 - track_7"_s}));
}

TEST(ClipNames, twoClipsWithTheSameTitleShareTheSmallerBaseOnALaterRun)
{
    const Clip clip{.id = u"a"_s, .title = u"Same"_s};
    EXPECT_EQ(clipNames(clip, 0, {}).base, u"001 - Same"_s);
    EXPECT_EQ(clipNames(clip, 1, {}).base, u"002 - Same"_s);
    const QTemporaryDir folder;
    for (const QString& name : {u"001 - Same.mp3"_s, u"002 - Same.mp3"_s})
        writeIfAbsent(folder.filePath(name), u"x"_s);
    const auto existing = ExistingFiles::byTitle(folder.path());
    EXPECT_EQ(existing.size(), 1);
    EXPECT_EQ(clipNames(clip, 0, existing).base, u"001 - Same"_s);
    EXPECT_EQ(clipNames(clip, 1, existing).base, u"001 - Same"_s);
}

TEST(ClipNames, whateverATitleIsALaterRunFindsItsFile)
{
    for (const QString& title : test::hostileTitles()) {
        const Clip clip{.id = u"a"_s, .title = title};
        const QTemporaryDir folder;
        const QString first = clipNames(clip, 4, ExistingFiles::byTitle(folder.path())).base;
        writeIfAbsent(folder.filePath(first + u".mp3"_s), u"x"_s);
        // A title that leaves nothing goes by its position, so only the same position leads back to its file.
        const int later = safe(title) == fallback ? 4 : 9;
        EXPECT_EQ(clipNames(clip, later, ExistingFiles::byTitle(folder.path())).base, first) << qPrintable(first);
    }
}

TEST(ArtworkExtension, isReadFromTheWholeAddress)
{
    EXPECT_EQ(artworkExtension(u"https://a/b.png"_s), u"png"_s);
    EXPECT_EQ(artworkExtension(u"https://a/b.webp"_s), u"webp"_s);
    EXPECT_EQ(artworkExtension(u"https://a/b.jpeg"_s), u"jpg"_s);
    EXPECT_EQ(artworkExtension(u"https://a/b?name=x.webp"_s), u"webp"_s);
    EXPECT_EQ(artworkExtension(u"https://a/b.webp?was=x.png"_s), u"png"_s);
    EXPECT_EQ(artworkExtension(QString()), u"jpg"_s);
}

TEST(LyricsText, holdsTitleTagsABlankLineAndTheLyrics)
{
    const Clip clip{.id = u"a"_s, .title = u"Song"_s, .lyrics = u"la\nla"_s, .tags = u"house, %1"_s};
    EXPECT_EQ(lyricsText(clip), u"Title: Song\nTags: house, %1\n\nla\nla"_s);
}

const QString header = u"[ti:T]\n[ar:A]\n[al:Suno AI]\n"_s;

TEST(Lrc, threeLinesOver180SecondsStandAtEvenTimes)
{
    EXPECT_EQ(lrc(u"T"_s, u"A"_s, u"one\ntwo\nthree"_s, 180),
              header + u"[00:45.00]one\n[01:30.00]two\n[02:15.00]three\n"_s);
}

TEST(Lrc, lyricsOfOnlySectionTagsAndBlankLinesGiveTheInstrumentalLine)
{
    const QString instrumental = header + u"[00:00.00]Instrumental / No Lyrics\n"_s;
    EXPECT_EQ(lrc(u"T"_s, u"A"_s, u"[Verse]\n\n  \t\n"_s, 180), instrumental);
    EXPECT_EQ(lrc(u"T"_s, u"A"_s, QString(), 180), instrumental);
    EXPECT_EQ(lrc(u"T"_s, u"A"_s, u"[a] and [b]"_s, 180), instrumental);
}

TEST(Lrc, withDurationZeroAllLinesStandAtZero)
{
    EXPECT_EQ(lrc(u"T"_s, u"A"_s, u"one\ntwo"_s, 0), header + u"[00:00.00]one\n[00:00.00]two\n"_s);
}

TEST(Lrc, linesAreTrimmedAndSectionTagsLeaveNoLine)
{
    EXPECT_EQ(lrc(u"T"_s, u"A"_s, u"  [Chorus] \n\tone [x]\t\n\n[Verse 2\n"_s, 90),
              header + u"[00:30.00]one [x]\n[01:00.00][Verse 2\n"_s);
}

TEST(Lrc, aLineEndOfAnotherSystemEndsALineToo)
{
    EXPECT_EQ(lrc(u"T"_s, u"A"_s, u"[Intro]\r\none\r\ntwo\rthree"_s, 8),
              header + u"[00:02.00]one\n[00:04.00]two\n[00:06.00]three\n"_s);
}

TEST(Lrc, secondsAreTruncatedAndMinutesGrowBeyondTwoDigits)
{
    EXPECT_EQ(lrc(u"T"_s, u"A"_s, u"one"_s, 3.9), header + u"[00:01.00]one\n"_s);
    EXPECT_EQ(lrc(u"T"_s, u"A"_s, u"one"_s, 12119.9), header + u"[100:59.00]one\n"_s);
}

TEST(Lrc, aLengthThatNoTrackHasIsNoDanger)
{
    EXPECT_EQ(lrc(u"T"_s, u"A"_s, u"one"_s, -50), header + u"[00:00.00]one\n"_s);
    EXPECT_EQ(lrc(u"T"_s, u"A"_s, u"one"_s, std::numeric_limits<double>::quiet_NaN()), header + u"[00:00.00]one\n"_s);
    EXPECT_TRUE(lrc(u"T"_s, u"A"_s, u"one"_s, 1e308).endsWith(u".00]one\n"_s));
}

TEST(WriteIfAbsent, writesUtf8WhereNothingIs)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"Sång lyrics.txt"_s);
    writeIfAbsent(path, u"Größe\n"_s);
    EXPECT_EQ(contentsOf(path), QByteArray("Gr\xc3\xb6\xc3\x9f"
                                           "e\n"));
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(), 1);
}

TEST(WriteIfAbsent, leavesWhatIsThereWhateverItHolds)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.lrc"_s);
    writeIfAbsent(path, QString());
    writeIfAbsent(path, u"new"_s);
    EXPECT_EQ(contentsOf(path), QByteArray());
}

TEST(WriteIfAbsent, aFailedWriteThrowsAndNamesTheFile)
{
    const QTemporaryDir folder;
    try {
        writeIfAbsent(folder.filePath(u"absent/a.lrc"_s), u"x"_s);
        FAIL() << "nothing was thrown";
    } catch (const FileError& error) {
        EXPECT_TRUE(error.sentence().startsWith(u"a.lrc: "_s)) << qPrintable(error.sentence());
    }
}

} // namespace
} // namespace orvane
