#include "video/VisualizerStyle.h"

#include "main/App/Preferences.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace orvane;
using namespace Qt::Literals::StringLiterals;
using Video::VisualizerStyle;

namespace {

const VisualizerStyle another{.aspect = u"1:1"_s,
                              .theme = u"violet"_s,
                              .wave = u"circle"_s,
                              .background = u"blur"_s,
                              .branding = u"none"_s,
                              .artist = u"Néa"_s};

class RememberedStyle : public testing::Test
{
protected:
    QTemporaryDir folder;
    Preferences preferences{folder.filePath(u"preferences.json"_s)};
};

} // namespace

TEST(VisualizerStyle, startsAsThePageDoes)
{
    const VisualizerStyle style;
    EXPECT_EQ(style.aspect, u"9:16");
    EXPECT_EQ(style.theme, u"amber");
    EXPECT_EQ(style.wave, u"bars");
    EXPECT_EQ(style.background, u"none");
    EXPECT_EQ(style.branding, u"logo");
    EXPECT_EQ(style.artist, u"Suno AI");
}

TEST(VisualizerStyle, comesBackFromItsJson)
{
    EXPECT_EQ(VisualizerStyle::fromJson(another.toJson()), another);
    EXPECT_EQ(another.toJson(), (QJsonObject{{u"aspect"_s, u"1:1"_s},
                                             {u"theme"_s, u"violet"_s},
                                             {u"wave"_s, u"circle"_s},
                                             {u"background"_s, u"blur"_s},
                                             {u"branding"_s, u"none"_s},
                                             {u"artist"_s, u"Néa"_s}}));
}

TEST(VisualizerStyle, keepsTheDefaultOfWhatIsMissingOrNoText)
{
    const QJsonObject partial{{u"theme"_s, u"violet"_s}, {u"wave"_s, 3}, {u"other"_s, u"x"_s}};
    EXPECT_EQ(VisualizerStyle::fromJson(partial), (VisualizerStyle{.theme = u"violet"_s}));
}

TEST(VisualizerStyle, isSummedUpInFourWords)
{
    EXPECT_EQ(VisualizerStyle().summary(), u"9:16 · amber · bars · none");
    EXPECT_EQ(another.summary(), u"1:1 · violet · circle · blur");
}

TEST_F(RememberedStyle, isTheDefaultOneAtFirst)
{
    EXPECT_EQ(VisualizerStyle::remembered(preferences), VisualizerStyle());
}

TEST_F(RememberedStyle, comesBackAfterARestart)
{
    another.remember(preferences);
    preferences.flush();
    const Preferences afterwards(folder.filePath(u"preferences.json"_s));
    EXPECT_EQ(VisualizerStyle::remembered(afterwards), another);
}

TEST_F(RememberedStyle, isTheDefaultOneWhereWhatIsStoredCannotBeRead)
{
    const QList<QJsonValue> unreadable{u"{"_s, u"[]"_s, u""_s, 7, true};
    for (const QJsonValue& value : unreadable) {
        preferences.set(u"visualizerStyle"_s, value);
        EXPECT_EQ(VisualizerStyle::remembered(preferences), VisualizerStyle());
    }
}
