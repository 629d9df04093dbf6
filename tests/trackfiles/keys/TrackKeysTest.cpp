#include "trackfiles/keys/TrackKeys.h"

#include "mastering/platforms/PlatformNames.h"

#include <gmock/gmock.h>

namespace orvane {
namespace {

using namespace Qt::Literals::StringLiterals;

using Library::classify;
using Library::trackKey;
using testing::Each;
using testing::ElementsAre;
using testing::Eq;
using testing::Optional;
using TrackNamer::stripIndexPrefix;

TEST(LibraryAsset, theCasesComeInTheOrderOfTheHaveColumn)
{
    QStringList names;
    QStringList labels;
    QString symbols;
    for (const Library::Asset asset : Library::allAssets) {
        names.append(Library::rawValue(asset));
        labels.append(Library::label(asset));
        symbols.append(Library::symbol(asset));
    }
    EXPECT_THAT(names, ElementsAre(u"audio"_s, u"artwork"_s, u"lyrics"_s, u"timed"_s, u"mastered"_s, u"video"_s));
    EXPECT_THAT(labels, ElementsAre(u"Audio"_s, u"Art"_s, u"Lyrics"_s, u"Timed lyrics"_s, u"Mastered"_s, u"Video"_s));
    EXPECT_EQ(symbols, u"♪▦¶◷◎▶"_s);
}

TEST(LibraryAsset, anExtensionOfACaseIsClassifiedAsThatCase)
{
    for (const Library::Asset asset : Library::allAssets) {
        const QString folder = asset == Library::Asset::mastered ? u"Mastered"_s : u"Songs"_s;
        for (const QString& extension : Library::extensions(asset))
            EXPECT_THAT(classify(u"Song."_s + extension, folder), Optional(asset)) << qPrintable(extension);
    }
}

TEST(Classify, aPdfIsNoAsset)
{
    EXPECT_EQ(classify(u"notes.pdf"_s, u"Songs"_s), std::nullopt);
    EXPECT_EQ(classify(u"mp3"_s, u"Songs"_s), std::nullopt);
    EXPECT_EQ(classify(u"Song."_s, u"Songs"_s), std::nullopt);
    EXPECT_EQ(classify(u".mp3"_s, u"Songs"_s), std::nullopt);
}

TEST(Classify, inVideosOnlyVideosAreAnything)
{
    EXPECT_EQ(classify(u"Song.mp3"_s, u"Videos"_s), std::nullopt);
    EXPECT_EQ(classify(u"Song.png"_s, u"Videos"_s), std::nullopt);
    for (const QString& name : {u"Song.mp4"_s, u"Song.mov"_s, u"Song.webm"_s})
        EXPECT_THAT(classify(name, u"Videos"_s), Optional(Library::Asset::video));
}

TEST(Classify, inMasteredAnMp3AndAPictureAreNothing)
{
    EXPECT_EQ(classify(u"Song.mp3"_s, u"Mastered"_s), std::nullopt);
    EXPECT_EQ(classify(u"Song.jpg"_s, u"Mastered"_s), std::nullopt);
    EXPECT_EQ(classify(u"Song.mp4"_s, u"Mastered"_s), std::nullopt);
    for (const QString& name : {u"Song.wav"_s, u"Song.flac"_s, u"Song.m4a"_s})
        EXPECT_THAT(classify(name, u"Mastered"_s), Optional(Library::Asset::mastered));
}

TEST(Classify, theFolderNamesCountExactlyAsWritten)
{
    EXPECT_THAT(classify(u"Song.mp3"_s, u"videos"_s), Optional(Library::Asset::audio));
    EXPECT_THAT(classify(u"Song.mp3"_s, u"MASTERED"_s), Optional(Library::Asset::audio));
    EXPECT_THAT(classify(u"Song.mp4"_s, u"Songs"_s), Optional(Library::Asset::video));
    EXPECT_THAT(classify(u"Song.wav"_s, QString()), Optional(Library::Asset::audio));
}

TEST(Classify, anExtensionInUpperCaseCountsLikeOneInLowerCaseAndTheKeyKeepsItsCase)
{
    EXPECT_THAT(classify(u"SONG.MP3"_s, u"Songs"_s), Optional(Library::Asset::audio));
    EXPECT_THAT(classify(u"a.mp3"_s, u"Songs"_s), Optional(Library::Asset::audio));
    EXPECT_EQ(trackKey(u"SONG.MP3"_s), u"SONG"_s);
}

TEST(TrackKey, dropsTheExtensionAndTheLyricsEnding)
{
    EXPECT_EQ(trackKey(u"Song.mp3"_s), u"Song"_s);
    EXPECT_EQ(trackKey(u"Song lyrics.txt"_s), u"Song"_s);
    EXPECT_EQ(trackKey(u"Mr. Blue.mp3"_s), u"Mr. Blue"_s);
    EXPECT_EQ(trackKey(u"a.mp3"_s), u"a"_s);
    EXPECT_EQ(trackKey(u"Song Lyrics.txt"_s), u"Song Lyrics"_s);
    EXPECT_EQ(trackKey(u"Songlyrics.txt"_s), u"Songlyrics"_s);
    EXPECT_EQ(trackKey(QString()), QString());
}

TEST(TrackKey, aPlatformInBracketsBelongsToTheTrackBeforeIt)
{
    EXPECT_EQ(trackKey(u"Song (Spotify).wav"_s), u"Song"_s);
    EXPECT_EQ(trackKey(u" \tSong \t (X).wav"_s), u"Song"_s);
    EXPECT_EQ(trackKey(u"Song (Live) (Apple Music).flac"_s), u"Song (Live)"_s);
    EXPECT_EQ(trackKey(u"(Spotify).wav"_s), QString());
}

TEST(TrackKey, anyOtherBracketIsATrackOfItsOwn)
{
    EXPECT_EQ(trackKey(u"Song (Live).mp3"_s), u"Song (Live)"_s);
    EXPECT_EQ(trackKey(u"Song (spotify).wav"_s), u"Song (spotify)"_s);
    EXPECT_EQ(trackKey(u"Song (Spotify) .wav"_s), u"Song (Spotify) "_s);
    EXPECT_EQ(trackKey(u"Song (Spotify.wav"_s), u"Song (Spotify"_s);
    EXPECT_EQ(trackKey(u"Song Spotify).wav"_s), u"Song Spotify)"_s);
    EXPECT_EQ(trackKey(u"Song (Spotify].wav"_s), u"Song (Spotify]"_s);
    EXPECT_EQ(trackKey(u"Spotify).wav"_s), u"Spotify)"_s);
    EXPECT_EQ(trackKey(u"Song ().wav"_s), u"Song ()"_s);
}

TEST(TrackKey, ofSongLyricsSpotifyThePlatformIsDroppedAndLyricsStays)
{
    EXPECT_EQ(trackKey(u"Song lyrics (Spotify).txt"_s), u"Song lyrics"_s);
    EXPECT_EQ(trackKey(u"Song (Spotify) lyrics.txt"_s), u"Song"_s);
}

TEST(TrackKey, theLastOpeningBracketCountsSoThatAPlatformWithBracketsOfItsOwnIsNone)
{
    for (const QString& platform : Master::platformNames()) {
        const QString stem = u"Song ("_s + platform + u')';
        EXPECT_EQ(trackKey(stem + u".wav"_s), platform.contains(u'(') ? stem : u"Song"_s) << qPrintable(platform);
    }
}

TEST(StripIndexPrefix, dropsTheNumberItsSeparatorAndTheBlank)
{
    EXPECT_EQ(stripIndexPrefix(u"03 - Song"_s), u"Song"_s);
    EXPECT_EQ(stripIndexPrefix(u"12. Song"_s), u"Song"_s);
    EXPECT_EQ(stripIndexPrefix(u"7) Song"_s), u"Song"_s);
    EXPECT_EQ(stripIndexPrefix(u"  1234\t-\tSong"_s), u"Song"_s);
    EXPECT_EQ(stripIndexPrefix(u"001 - 002 - Song"_s), u"002 - Song"_s);
    EXPECT_EQ(stripIndexPrefix(u"1 -  "_s), QString());
}

TEST(StripIndexPrefix, whatIsNoPrefixStays)
{
    const QStringList names{u"12345 - Song"_s, u"99 Luftballons"_s, u"7-Eleven"_s, u"- Song"_s, u"Song 3 - x"_s,
                            u"1 -"_s,          u"3 : Song"_s,       QString()};
    for (const QString& name : names)
        EXPECT_EQ(stripIndexPrefix(name), name) << qPrintable(name);
}

TEST(StripIndexPrefix, halfACharacterInTheTitleDoesNotKeepTheNumber)
{
    const QString half(QChar(0xDE00));
    EXPECT_EQ(stripIndexPrefix(u"03 - "_s + half), half);
    EXPECT_EQ(stripIndexPrefix(half + u"03 - Song"_s), half + u"03 - Song"_s);
}

TEST(StripIndexPrefix, digitsAndBlanksOfEveryScriptCount)
{
    EXPECT_EQ(stripIndexPrefix(u"\u0663 -\u3000Song"_s), u"Song"_s);
    EXPECT_EQ(stripIndexPrefix(u"\uff11\uff12.\u00a0Song"_s), u"Song"_s);
    EXPECT_EQ(stripIndexPrefix(u"𝟙𝟚𝟛𝟜 - Song"_s), u"Song"_s);
    EXPECT_EQ(stripIndexPrefix(u"𝟙𝟚𝟛𝟜𝟝 - Song"_s), u"𝟙𝟚𝟛𝟜𝟝 - Song"_s);
}

} // namespace
} // namespace orvane
