#include "mastering/Format.h"

#include "main/App/Preferences.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace orvane;
using namespace Qt::Literals::StringLiterals;
using Master::Format;
using Master::MP3Rate;

TEST(Format, everyFormatHasItsTextExtensionAndKind)
{
    QStringList rows;
    for (const Format format : Master::allFormats)
        rows << rawValue(format) + u'|' + extension(format) + u'|' + (isLossless(format) ? u"lossless"_s : u"lossy"_s);
    EXPECT_EQ(rows, (QStringList{u"WAV 24-bit|wav|lossless"_s, u"FLAC|flac|lossless"_s, u"ALAC (m4a)|m4a|lossless"_s,
                                 u"AAC (m4a)|m4a|lossy"_s, u"MP3|mp3|lossy"_s}));
}

TEST(Format, aStoredTextComesBack)
{
    for (const Format format : Master::allFormats)
        EXPECT_EQ(Master::formatFromRawValue(rawValue(format)), format);
    EXPECT_EQ(Master::formatFromRawValue(u"wav"_s), std::nullopt);
}

TEST(MP3Rate, everyRateHasItsTitleAndSize)
{
    QStringList rows;
    for (const MP3Rate rate : Master::allMP3Rates)
        rows << u"%1|%2|%3"_s.arg(rawValue(rate)).arg(title(rate)).arg(megabytesPerMinute(rate));
    EXPECT_EQ(rows, (QStringList{u"128|128 kbps|0.96"_s, u"192|192 kbps|1.44"_s, u"256|256 kbps|1.92"_s,
                                 u"320|320 kbps|2.4"_s}));
}

class ChosenOutput : public testing::Test
{
protected:
    QTemporaryDir folder;
    Preferences preferences{folder.filePath(u"preferences.json"_s)};
};

TEST_F(ChosenOutput, isWavAt320UntilChosen)
{
    EXPECT_EQ(Master::chosenFormat(preferences), Format::wav);
    EXPECT_EQ(Master::chosenMP3Rate(preferences), MP3Rate::v320);
}

TEST_F(ChosenOutput, whatIsChosenIsStoredUnderItsKey)
{
    Master::setChosenFormat(preferences, Format::alac);
    Master::setChosenMP3Rate(preferences, MP3Rate::v192);
    EXPECT_EQ(preferences.text(u"outputAudioFormat"_s), u"ALAC (m4a)"_s);
    EXPECT_EQ(preferences.integer(u"mp3Bitrate"_s), 192);
    EXPECT_EQ(Master::chosenFormat(preferences), Format::alac);
    EXPECT_EQ(Master::chosenMP3Rate(preferences), MP3Rate::v192);
}

TEST_F(ChosenOutput, whatIsNoChoiceCountsAsNone)
{
    preferences.set(u"mp3Bitrate"_s, 200);
    preferences.set(u"outputAudioFormat"_s, u"OGG"_s);
    EXPECT_EQ(Master::chosenMP3Rate(preferences), MP3Rate::v320);
    EXPECT_EQ(Master::chosenFormat(preferences), Format::wav);
    preferences.set(u"mp3Bitrate"_s, u"192"_s);
    preferences.set(u"outputAudioFormat"_s, 3);
    EXPECT_EQ(Master::chosenMP3Rate(preferences), MP3Rate::v320);
    EXPECT_EQ(Master::chosenFormat(preferences), Format::wav);
}
