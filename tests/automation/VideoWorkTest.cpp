#include "automation/VideoWork.h"

#include "tests/support/TestFolder.h"

#include <gmock/gmock.h>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

Clip tagged(const QString& tags)
{
    return {.id = u"1"_s, .title = u"Ocean"_s, .tags = tags};
}

SavedTrack lasting(double seconds)
{
    return {.clip = {.id = u"1"_s, .title = u"Ocean"_s, .durationSeconds = seconds}, .base = u"Ocean"_s};
}

TEST(VideoSubtitle, isTheProgramWhereThereAreNoTags)
{
    EXPECT_EQ(VideoWork::subtitleFor(tagged({})), u"Orvane");
    EXPECT_EQ(VideoWork::subtitleFor(tagged(u"  \n "_s)), u"Orvane");
    EXPECT_EQ(VideoWork::subtitleFor(tagged(u" , ,"_s)), u"Orvane");
}

TEST(VideoSubtitle, isTheFirstThreeTags)
{
    EXPECT_EQ(VideoWork::subtitleFor(tagged(u"house"_s)), u"house");
    EXPECT_EQ(VideoWork::subtitleFor(tagged(u" deep house ,, dub,\tslow , night, rain"_s)), u"deep house · dub · slow");
}

TEST(VideoEstimate, aNegativeDurationAddsNothing)
{
    EXPECT_DOUBLE_EQ(VideoWork::playingTime({lasting(100), lasting(-5), lasting(20.5)}), 120.5);
    EXPECT_DOUBLE_EQ(VideoWork::playingTime({}), 0.0);
}

TEST(HumanTime, isToldInSecondsUnderAMinute)
{
    EXPECT_EQ(VideoWork::humanTime(0), u"0s");
    EXPECT_EQ(VideoWork::humanTime(27.7), u"28s");
    EXPECT_EQ(VideoWork::humanTime(59.4), u"59s");
}

TEST(HumanTime, isRoundedToWholeSecondsFirst)
{
    EXPECT_EQ(VideoWork::humanTime(59.6), u"1m");
    EXPECT_EQ(VideoWork::humanTime(3599.6), u"1h 0m");
}

TEST(HumanTime, isToldInWholeMinutesUnderAnHour)
{
    EXPECT_EQ(VideoWork::humanTime(60), u"1m");
    EXPECT_EQ(VideoWork::humanTime(119), u"1m");
    EXPECT_EQ(VideoWork::humanTime(3599), u"59m");
}

TEST(HumanTime, isToldInHoursAndMinutesFromAnHour)
{
    EXPECT_EQ(VideoWork::humanTime(3600), u"1h 0m");
    EXPECT_EQ(VideoWork::humanTime(3 * 3600 + 5 * 60 + 59), u"3h 5m");
    EXPECT_EQ(VideoWork::humanTime(26 * 3600), u"26h 0m");
}

TEST(VideoFile, liesAmongTheVideosUnderASafeName)
{
    EXPECT_EQ(VideoWork::outputFor(u"/music"_s, u"Ocean"_s), u"/music/Videos/Ocean.mp4");
    EXPECT_EQ(VideoWork::outputFor(u"/music"_s, u"a/b"_s).count(u'/'), 3);
    EXPECT_EQ(VideoWork::outputFor(u"/music"_s, u"..."_s), u"/music/Videos/video.mp4");
}

TEST(VideoFile, ofAnyKindCountsAsRendered)
{
    const TestFolder folder;
    for (const QString& name : {u"Videos/Ocean.mp4"_s, u"Videos/Lake.webm"_s, u"Videos/.River.mp4.new"_s, u"Sea.mp4"_s})
        folder.write(name, "x");
    EXPECT_EQ(VideoWork::renderedStems(folder.path()), (QSet<QString>{u"Ocean"_s, u"Lake"_s}));
}

} // namespace
} // namespace orvane::test
