#include "trackfiles/namer/NameRules.h"

#include "suno/Clip.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::Literals::StringLiterals;
using TrackNamer::Source;

QString hookOf(const QString& lyrics)
{
    return TrackNamer::hook(lyrics).value_or(u"(none)"_s);
}

TEST(NameRules, aTitleOfUntitledAndAStemOfATrackNumberGiveTheChorusLineSungTwice)
{
    const Source source{.title = u"Untitled"_s,
                        .lyrics = u"[Verse]\nA quiet opening line\n[Chorus]\ncarry me home tonight\n"
                                  "another line\ncarry me home tonight\n"_s,
                        .tags = {},
                        .fileStem = u"03 - Track 3"_s};
    EXPECT_EQ(TrackNamer::base(source, 2), u"Carry Me Home Tonight"_s);
}

TEST(NameRules, aTitleOfMySongWithBlanksAndMarksGivesMySong)
{
    EXPECT_EQ(TrackNamer::base({.title = u"  My   Song!!  "_s}, 0), u"My Song"_s);
    EXPECT_EQ(TrackNamer::base({.title = u"My\n\t Song"_s}, 0), u"My Song"_s);
}

TEST(NameRules, aTitleOfWowWithDotsGivesWowAndOneOfDotsIsEmptyThusAPlaceholder)
{
    EXPECT_EQ(TrackNamer::trimmedForTitle(u"wow..."_s), u"wow"_s);
    EXPECT_EQ(TrackNamer::trimmedForTitle(u"..."_s), QString());
    EXPECT_EQ(TrackNamer::base({.title = u"..."_s}, 3), u"Track 4"_s);
}

TEST(NameRules, everyTrailingMarkGoesAndBlanksBeforeThem)
{
    EXPECT_EQ(TrackNamer::trimmedForTitle(u"Song ,.;:!?-—"_s), u"Song"_s);
    EXPECT_EQ(TrackNamer::trimmedForTitle(u"- Song)"_s), u"- Song)"_s);
    EXPECT_EQ(TrackNamer::trimmedForTitle(u"Song – "_s), u"Song –"_s);
}

TEST(NameRules, placeholdersAreGenericWordsWithOrWithoutANumber)
{
    for (const QString& name : {u""_s, u"  \n"_s, u"untitled"_s, u"Track 12"_s, u"song_3"_s, u"untitled-"_s,
                                u"New Song"_s, u"AUDIO"_s, u"track - _ 7"_s, u"\u3000Song\u2028"_s})
        EXPECT_TRUE(TrackNamer::isPlaceholder(name)) << name.toStdString();
    for (const QString& name : {u"Track 12 remix"_s, u"A song"_s, u"songs"_s, u"track.12"_s, u"new  song"_s})
        EXPECT_FALSE(TrackNamer::isPlaceholder(name)) << name.toStdString();
}

TEST(NameRules, aTitleOf36HexadecimalDigitsAndHyphensIsAPlaceholderSoIsOneOf32DigitsAndOneOf31IsNot)
{
    EXPECT_TRUE(TrackNamer::isPlaceholder(u"0a1b2c3d-4e5f-6071-8293-a4b5c6d7e8f9"_s));
    EXPECT_TRUE(TrackNamer::isPlaceholder(QString(32, u'f')));
    EXPECT_TRUE(TrackNamer::isPlaceholder(QString(32, u'F')));
    EXPECT_FALSE(TrackNamer::isPlaceholder(QString(31, u'f')));
    EXPECT_FALSE(TrackNamer::isPlaceholder(QString(32, u'g')));
}

TEST(NameRules, theFileNamesTheTrackWithoutItsIndex)
{
    EXPECT_EQ(TrackNamer::base({.title = u"Track 1"_s, .fileStem = u"012 - Night  Drive."_s}, 0), u"Night Drive"_s);
}

TEST(NameRules, lyricsWithOnlySectionMarksGiveNoHookAndTheNameIsTrack4ForTheTrackAtIndex3)
{
    const QString lyrics = u"[Verse]\n[Chorus]\n\n(softly)\n* * *"_s;
    EXPECT_EQ(TrackNamer::hook(lyrics), std::nullopt);
    EXPECT_EQ(TrackNamer::base({.title = u"untitled"_s, .lyrics = lyrics}, 3), u"Track 4"_s);
}

TEST(NameRules, aClipBringsItsTitleLyricsAndTags)
{
    const Clip clip{.id = u"x"_s, .title = u"t"_s, .lyrics = u"l"_s, .tags = u"g"_s};
    EXPECT_EQ(Source::of(clip), (Source{.title = u"t"_s, .lyrics = u"l"_s, .tags = u"g"_s, .fileStem = {}}));
}

TEST(Hook, aFirstLineOf60CharactersWithNoRepeatsIsCutAtTheLastBlankWithin48)
{
    const QString line = u"When the morning comes around the corner, slowly over hills"_s + u'k';
    ASSERT_EQ(line.size(), 60);
    EXPECT_EQ(hookOf(line), u"When the morning comes around the corner"_s);
    const QString comma = u"When the mornings come around the corner by, slow over hills k"_s;
    EXPECT_EQ(hookOf(comma), u"When the mornings come around the corner by"_s);
}

TEST(Hook, aFirstLineOf60CharactersWithNoBlankIsCutAt48Exactly)
{
    EXPECT_EQ(hookOf(u"Xy"_s.repeated(30)), u"Xy"_s.repeated(24));
}

TEST(Hook, aStartOf48CharactersWithoutABlankStaysAsItIsAlsoWhereTabsEndIt)
{
    EXPECT_EQ(hookOf(u"Melody"_s + QString(60, u'\t') + u"Again"_s), u"Melody"_s + QString(42, u'\t'));
}

TEST(Hook, aLineOfExactly48CharactersThatRepeatsIsTheHookAndOneOf49IsPassedOver)
{
    const QString fits = u"Ab"_s + QString(46, u'c');
    const QString tooLong = u"Ab"_s + QString(47, u'c');
    const QString first = u"First line"_s;
    EXPECT_EQ(hookOf(first + u'\n' + fits + u'\n' + fits), fits);
    EXPECT_EQ(hookOf(first + u'\n' + tooLong + u'\n' + tooLong), first);
}

TEST(Hook, aFirstLineOfExactly48CharactersStaysWholeAndOneOf49IsCut)
{
    const QString fits = u"When the morning comes around the corner, slowly"_s;
    ASSERT_EQ(fits.size(), 48);
    EXPECT_EQ(hookOf(fits), fits);
    EXPECT_EQ(hookOf(fits + u's'), u"When the morning comes around the corner"_s);
}

TEST(Hook, aLineThatIsOnlyMarksBeforeItsCutIsNone)
{
    const QString line = u"-!- "_s + QString(60, u'x');
    EXPECT_EQ(TrackNamer::hook(line), std::nullopt);
    EXPECT_EQ(TrackNamer::base({.title = {}, .lyrics = line}, 0), u"Track 1"_s);
}

TEST(Hook, aLineIsCountedInCharactersAsAPersonSeesThem)
{
    const QString family = u"👨‍👩‍👧‍👦"_s;
    EXPECT_EQ(hookOf(family.repeated(5)), u"(none)"_s);
    EXPECT_EQ(hookOf(family.repeated(6)), family.repeated(6));
    EXPECT_EQ(hookOf(family.repeated(50)), family.repeated(48));
}

TEST(Hook, theEarliestRepeatedLineWinsAndNotTheMostRepeated)
{
    EXPECT_EQ(hookOf(u"Once only\nSecond line\nThird line\nThird line\nThird line\nSecond line"_s), u"Second line"_s);
}

TEST(Hook, repeatsAreCountedWithoutCaseAndTrailingMarks)
{
    EXPECT_EQ(hookOf(u"Something else\nHold the Line!\nhold the line..."_s), u"Hold the Line"_s);
}

TEST(Hook, linesUnderSixCharactersAreNoCandidates)
{
    EXPECT_EQ(hookOf(u"Hello\nHello\nGoodbye"_s), u"Goodbye"_s);
    EXPECT_EQ(hookOf(u"Hello\nla la!"_s), u"(none)"_s);
}

TEST(Hook, headerLinesOfASavedFileAreNoCandidates)
{
    EXPECT_EQ(hookOf(u"Title: Something\nTags: something\nReal words here"_s), u"Real words here"_s);
    EXPECT_EQ(hookOf(u"  Title: Something\nReal words here"_s), u"Real words here"_s);
}

TEST(Hook, iWannaDanceInTheRainAndTheLongRoadAreWrittenAsTitlesAndMixedCaseLineStaysUnchanged)
{
    EXPECT_EQ(hookOf(u"I WANNA DANCE IN THE RAIN"_s), u"I Wanna Dance in the Rain"_s);
    EXPECT_EQ(hookOf(u"the long road"_s), u"The Long Road"_s);
    EXPECT_EQ(hookOf(u"Mixed Case line"_s), u"Mixed Case line"_s);
}

TEST(Hook, allEighteenSmallWordsStaySmall)
{
    EXPECT_EQ(hookOf(u"go a an and the of in on to for with go"_s), u"Go a an and the of in on to for with Go"_s);
    EXPECT_EQ(hookOf(u"go at by from into over as but or go"_s), u"Go at by from into over as but or Go"_s);
}

TEST(Hook, twoBlanksInATitleCasedLineStay)
{
    EXPECT_EQ(hookOf(u"long  road home"_s), u"Long  Road Home"_s);
}

TEST(Patterns, eachWritesTheNameInItsOwnWay)
{
    const QList<QPair<QString, QString>> expected{
        {u"clean"_s, u"Title"_s},
        {u"numbered"_s, u"01 - Title"_s},
        {u"dotnumber"_s, u"01. Title"_s},
        {u"extended"_s, u"Title (Extended Mix)"_s},
        {u"club"_s, u"Title [Club Edit]"_s},
        {u"radio"_s, u"Title (Radio Edit)"_s},
        {u"vip"_s, u"Title [VIP Remix]"_s},
        {u"slowed"_s, u"Title [Slowed + Reverb]"_s},
        {u"spedup"_s, u"Title [Sped Up / Nightcore]"_s},
        {u"instrumental"_s, u"Title [Instrumental Mix]"_s},
        {u"acoustic"_s, u"Title (Acoustic Version)"_s},
        {u"live"_s, u"Title (Live at Sunset)"_s},
        {u"orchestral"_s, u"Title (Orchestral Version)"_s},
    };
    QList<QPair<QString, QString>> found;
    for (const TrackNamer::Pattern& pattern : TrackNamer::patterns())
        found.append({pattern.id, TrackNamer::apply(pattern.id, u"Title"_s, 0)});
    EXPECT_EQ(found, expected);
}

TEST(Patterns, areLabelledForPeople)
{
    QStringList labels;
    for (const TrackNamer::Pattern& pattern : TrackNamer::patterns())
        labels.append(pattern.label);
    EXPECT_EQ(labels.join(u'|'),
              u"Clean|01 - Title|01. Title|Extended mix|Club mix|Radio edit|VIP mix|Slowed + reverb|Sped up|"
              "Instrumental|Acoustic|Live|Orchestral"_s);
}

TEST(Patterns, numberedAtIndex9Gives10AndAtIndex99Gives100)
{
    EXPECT_EQ(TrackNamer::apply(u"numbered"_s, u"Title"_s, 9), u"10 - Title"_s);
    EXPECT_EQ(TrackNamer::apply(u"numbered"_s, u"Title"_s, 99), u"100 - Title"_s);
    EXPECT_EQ(TrackNamer::apply(u"dotnumber"_s, u"Title"_s, 8), u"09. Title"_s);
}

TEST(Patterns, anUnknownOneLeavesTheNameAsItIs)
{
    EXPECT_EQ(TrackNamer::apply(u"Numbered"_s, u"Title"_s, 0), u"Title"_s);
    EXPECT_EQ(TrackNamer::name({.title = u"untitled"_s}, 4, u"live"_s), u"Track 5 (Live at Sunset)"_s);
}

Source sidecar(const QString& text)
{
    return TrackNamer::sourceFromSidecar(text, u"stem"_s);
}

TEST(Sidecar, headerLinesGiveTitleAndTagsAndTheRestIsLyrics)
{
    EXPECT_EQ(sidecar(u"Title:  Night Drive \nTags: synthwave, slow\n\n[Verse]\n  Words \n\nMore"_s),
              (Source{.title = u"Night Drive"_s,
                      .lyrics = u"[Verse]\n  Words \n\nMore"_s,
                      .tags = u"synthwave, slow"_s,
                      .fileStem = u"stem"_s}));
}

TEST(Sidecar, headersMayComeInAnyOrderAndTheLaterWins)
{
    EXPECT_EQ(sidecar(u"Tags: a\nTitle: one\nTags: b\nTitle: two\n\nx"_s),
              (Source{.title = u"two"_s, .lyrics = u"x"_s, .tags = u"b"_s, .fileStem = u"stem"_s}));
}

TEST(Sidecar, onlyOneBlankLineIsDroppedAndAHeaderBehindItIsLyrics)
{
    EXPECT_EQ(sidecar(u"Title: t\n\n\nTags: sung"_s).lyrics, u"\nTags: sung"_s);
    EXPECT_EQ(sidecar(u"Title: t\n \t\nTitle: sung"_s),
              (Source{.title = u"t"_s, .lyrics = u"Title: sung"_s, .tags = {}, .fileStem = u"stem"_s}));
}

TEST(Sidecar, aBlankLineWithNoTitleBeforeItStartsTheLyrics)
{
    EXPECT_EQ(sidecar(u"\nTitle: t"_s),
              (Source{.title = {}, .lyrics = u"\nTitle: t"_s, .tags = {}, .fileStem = u"stem"_s}));
    EXPECT_EQ(sidecar(u"Tags: g\n\nwords"_s).lyrics, u"\nwords"_s);
}

TEST(Sidecar, aHeaderWithLeadingBlanksOrInAnotherCaseIsLyrics)
{
    EXPECT_EQ(sidecar(u" Title: t"_s).lyrics, u" Title: t"_s);
    EXPECT_EQ(sidecar(u"title: t"_s).title, QString());
}

TEST(Sidecar, lineEndsOfOtherSystemsAreLineEnds)
{
    EXPECT_EQ(sidecar(u"Title: t\r\nTags: g\r\n\r\none\r\ntwo"_s),
              (Source{.title = u"t"_s, .lyrics = u"one\ntwo"_s, .tags = u"g"_s, .fileStem = u"stem"_s}));
}

TEST(Sidecar, anEmptyFileSaysNothing)
{
    EXPECT_EQ(sidecar({}), (Source{.title = {}, .lyrics = {}, .tags = {}, .fileStem = u"stem"_s}));
}

} // namespace
} // namespace orvane
