#include "mastering/PlatformTexts.h"
#include "mastering/platforms/PlatformNames.h"

#include <cmath>
#include <gmock/gmock.h>

using namespace orvane;
using namespace Qt::Literals::StringLiterals;
using Master::ChangeTone;
using Master::Platform;
using Master::PlatformRow;
using Master::Reading;

namespace {

const Platform& named(const QString& name)
{
    for (const Platform& platform : Master::platforms()) {
        if (platform.name == name)
            return platform;
    }
    throw std::runtime_error("no such platform");
}

Reading reading(double integrated, double truePeak)
{
    return {.integrated = integrated, .truePeak = truePeak, .range = 5.04, .samplePeak = truePeak};
}

double change(const QString& name, double integrated, double truePeak)
{
    return Master::penalty(named(name), reading(integrated, truePeak));
}

PlatformRow row(const QString& name, double integrated, double truePeak)
{
    return {.platform = named(name), .change = change(name, integrated, truePeak)};
}

} // namespace

TEST(Platforms, theTableIsWhole)
{
    QStringList rows;
    for (const Platform& platform : Master::platforms()) {
        rows << u"%1 %2 %3 %4 %5"_s.arg(platform.name)
                    .arg(platform.target)
                    .arg(platform.ceiling)
                    .arg(rawValue(platform.normalisation), rawValue(platform.confidence));
    }
    EXPECT_EQ(rows.join(u'\n'), uR"(Spotify -14 -1 upAndDown official
SoundCloud -14 -1 upAndDown official
Apple Music -16 -1 downOnly measured
YouTube / YouTube Music -14 -1 downOnly measured
Amazon Music -14 -1 downOnly measured
Tidal -14 -1 downOnly measured
Deezer -15 -1 downOnly community
Pandora -13 -1 unknown measured
TikTok -14 -1 unknown measured
Instagram / Reels -14 -1 unknown measured
Facebook -14 -1 unknown measured
X -14 -1 unknown measured
Bandcamp -14 -1 none official
Beatport -14 -1 none measured
Broadcast (EBU R128) -23 -1 upAndDown standard
Broadcast (ATSC A/85) -24 -2 upAndDown standard)"_s);
}

TEST(Platforms, theNamesAreThoseOfTheTable)
{
    QStringList names;
    for (const Platform& platform : Master::platforms())
        names << platform.name;
    EXPECT_EQ(Master::platformNames(), names);
    EXPECT_EQ(names.size(), 16);
}

TEST(Platforms, everyOneHasANote)
{
    QStringList notes;
    for (const Platform& platform : Master::platforms())
        notes << platform.note;
    EXPECT_EQ(notes.join(u'\n'),
              uR"(Loud mode -11, Normal -14, Quiet -19. Boost is limited by your headroom, not a fixed amount.
Adds its own limiter when it turns a quiet track up.
Apple publishes no LUFS figure at all — its own spec only asks for 1 dB of headroom. -16 is a third-party measurement.
Never published. Measured at -14 since 2019, and the reference moves.
From brief third-party testing in 2019.
-14 on mobile and browser, reportedly -18 over AirPlay. Normalises per album, not per track.
The only source is a 2019 community moderator post. Thinnest evidence of any major service.
Loudest target of the majors. Always on.
Publishes nothing. -14 is the working convention.
Publishes nothing.
Publishes nothing.
Publishes nothing.
Does not normalise at all — your master is played exactly as sent.
Does not normalise.
The published European broadcast standard.
The US broadcast standard.)"_s);
}

TEST(Penalty, aTrackWithoutLoudnessIsPlayedAsItIsEverywhere)
{
    for (const PlatformRow& row : Master::platformRows({})) {
        EXPECT_EQ(row.change, 0.0);
        const bool playsAsIs = row.platform.normalisation == Master::Normalisation::none;
        EXPECT_EQ(changeText(row), playsAsIs ? u"plays as-is"_s : u"no change"_s);
        EXPECT_EQ(changeTone(row), ChangeTone::Muted);
    }
    EXPECT_EQ(Master::platformRows({}).size(), 16);
}

TEST(Penalty, whoTurnsDownOnlyLeavesQuietTracks)
{
    EXPECT_EQ(change(u"Apple Music"_s, -10.0, -0.5), -6.0);
    EXPECT_EQ(change(u"Apple Music"_s, -20.0, -3.0), 0.0);
    EXPECT_EQ(changeText(row(u"Apple Music"_s, -10.0, -0.5)), u"-6.0 dB"_s);
    EXPECT_EQ(changeTone(row(u"Apple Music"_s, -10.0, -0.5)), ChangeTone::Bad);
    EXPECT_EQ(changeText(row(u"Apple Music"_s, -20.0, -3.0)), u"no change"_s);
}

TEST(Penalty, aBoostEndsAtTheHeadroom)
{
    EXPECT_EQ(change(u"Spotify"_s, -20.0, -3.0), 2.0);
    EXPECT_EQ(changeText(row(u"Spotify"_s, -20.0, -3.0)), u"+2.0 dB"_s);
    EXPECT_EQ(changeTone(row(u"Spotify"_s, -20.0, -3.0)), ChangeTone::Ok);
    EXPECT_EQ(change(u"Spotify"_s, -20.0, -30.0), 6.0);
    EXPECT_EQ(change(u"Spotify"_s, -20.0, 0.5), 0.0);
    EXPECT_EQ(changeText(row(u"Spotify"_s, -20.0, 0.5)), u"no change"_s);
    EXPECT_EQ(change(u"Spotify"_s, -10.0, 0.5), -4.0);
    EXPECT_EQ(change(u"Broadcast (ATSC A/85)"_s, -30.0, -5.0), 3.0);
}

TEST(Penalty, whatIsNotDocumentedShowsNoChange)
{
    for (const QString& name : {u"Pandora"_s, u"TikTok"_s, u"Bandcamp"_s, u"Beatport"_s})
        EXPECT_EQ(change(name, -5.0, 0.0), 0.0);
    EXPECT_EQ(changeText(row(u"Pandora"_s, -5.0, 0.0)), u"no change"_s);
    EXPECT_EQ(changeText(row(u"TikTok"_s, -5.0, 0.0)), u"no change"_s);
    EXPECT_EQ(changeText(row(u"Bandcamp"_s, -5.0, 0.0)), u"plays as-is"_s);
    EXPECT_EQ(changeText(row(u"Beatport"_s, -5.0, 0.0)), u"plays as-is"_s);
}

TEST(ChangeText, underATwentiethOfADecibelThereIsNoChange)
{
    EXPECT_EQ(Master::changeText({.platform = named(u"Spotify"_s), .change = -0.04}), u"no change"_s);
    EXPECT_EQ(Master::changeText({.platform = named(u"Spotify"_s), .change = 0.0499}), u"no change"_s);
    EXPECT_NE(Master::changeText({.platform = named(u"Spotify"_s), .change = -0.05}), u"no change"_s);
    EXPECT_EQ(Master::changeTone({.platform = named(u"Spotify"_s), .change = -0.05}), ChangeTone::Bad);
    EXPECT_EQ(Master::changeTone({.platform = named(u"Spotify"_s), .change = 0.05}), ChangeTone::Ok);
    EXPECT_EQ(Master::changeText({.platform = named(u"Spotify"_s), .change = 0.06}), u"+0.1 dB"_s);
}

TEST(Confidence, figuresThatArePublishedStandOut)
{
    EXPECT_TRUE(isPublished(Master::Confidence::official));
    EXPECT_TRUE(isPublished(Master::Confidence::standard));
    EXPECT_FALSE(isPublished(Master::Confidence::measured));
    EXPECT_FALSE(isPublished(Master::Confidence::community));
}

TEST(Confidence, everyCaseHasItsText)
{
    EXPECT_EQ(text(Master::Confidence::official), u"published by the platform"_s);
    EXPECT_EQ(text(Master::Confidence::measured), u"measured by third parties, not published"_s);
    EXPECT_EQ(text(Master::Confidence::community), u"community report only"_s);
    EXPECT_EQ(text(Master::Confidence::standard), u"published standard"_s);
}

TEST(Normalisation, everyCaseHasItsText)
{
    EXPECT_EQ(text(Master::Normalisation::upAndDown), u"turns quiet tracks up and loud tracks down"_s);
    EXPECT_EQ(text(Master::Normalisation::downOnly), u"only turns loud tracks down — quiet masters stay quiet"_s);
    EXPECT_EQ(text(Master::Normalisation::none), u"plays your file as-is"_s);
    EXPECT_EQ(text(Master::Normalisation::unknown), u"not documented"_s);
}

TEST(Verdict, aPeakAboveMinusOneComesFirst)
{
    EXPECT_EQ(Master::verdict(reading(-5.0, 0.26)),
              u"This is peaking at 0.3 dBTP. Anything above -1 can distort when a platform re-encodes it to a lossy "
              u"format, even though it looks fine here."_s);
    EXPECT_EQ(Master::verdict(reading(-5.0, -1.0)),
              u"This is very loud. Every platform below that normalises will turn it down, so the loudness costs "
              u"headroom and buys nothing."_s);
    EXPECT_EQ(Master::verdict(reading(-9.0, -1.0)),
              u"Healthy. The table shows what each platform will still do to it."_s);
    EXPECT_EQ(Master::verdict({}), Master::verdict(reading(-9.0, -1.0)));
}

TEST(Readout, showsLoudnessPeakAndRange)
{
    EXPECT_EQ(Master::readout(reading(-14.26, -1.04)), u"-14.3 LUFS    -1.0 dBTP    5.0 LU range"_s);
}

TEST(Summary, tellsAllThatIsKnown)
{
    EXPECT_EQ(
        Master::summary(named(u"Apple Music"_s)),
        u"Apple Music only turns loud tracks down — quiet masters stay quiet. Target -16 LUFS, -1 dBTP — measured "
        u"by third parties, not published. Apple publishes no LUFS figure at all — its own spec only asks for 1 dB "
        u"of headroom. -16 is a third-party measurement."_s);
    Platform bare = named(u"X"_s);
    bare.note.clear();
    EXPECT_EQ(Master::summary(bare),
              u"X not documented. Target -14 LUFS, -1 dBTP — measured by third parties, not published."_s);
}
