#include "prompt/Traits.h"

#include <QHash>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace orvane::Prompt {
namespace {

TEST(Traits, aBandHoldsItsLowerEnd)
{
    EXPECT_EQ(tempos(), (QStringList{u"under 90 BPM"_s, u"90–120 BPM"_s, u"120–140 BPM"_s, u"over 140 BPM"_s}));
    EXPECT_EQ(tempo(44), u"under 90 BPM");
    EXPECT_EQ(tempo(89), u"under 90 BPM");
    EXPECT_EQ(tempo(90), u"90–120 BPM");
    EXPECT_EQ(tempo(119), u"90–120 BPM");
    EXPECT_EQ(tempo(120), u"120–140 BPM");
    EXPECT_EQ(tempo(139), u"120–140 BPM");
    EXPECT_EQ(tempo(140), u"over 140 BPM");
    EXPECT_EQ(tempo(288), u"over 140 BPM");
}

TEST(Traits, aDecadeIsTheYearWithoutItsLastDigit)
{
    EXPECT_EQ(decade(u"1986"_s), u"1980s");
    EXPECT_EQ(decade(u"1900"_s), u"1900s");
    EXPECT_EQ(decade(u"2022, spring"_s), u"2020s");
    EXPECT_EQ(decade(u"198"_s), u"190s");
}

TEST(Traits, aYearThatIsNoNumberStandsAsItIs)
{
    EXPECT_EQ(decade(u"the 80s"_s), u"the 80s");
    EXPECT_EQ(decade(u" 198"_s), u" 198");
    EXPECT_EQ(decade(u"١٩٨٦"_s), u"١٩٨٦");
    EXPECT_EQ(decade(QString()), QString());
}

TEST(Traits, everyWordOfAListTellsItsKind)
{
    const QHash<QString, QStringList> words{
        {u"no voice"_s,
         {u"no vocal"_s, u"no voice"_s, u"instrumental"_s, u"wordless"_s, u"no singing"_s, u"no words"_s,
          u"not a lyric"_s, u"no word legible"_s, u"used as texture"_s, u"stop landing"_s, u"never comes back"_s}},
        {u"several voices"_s,
         {u"chorus of"_s,
          u"women's chorus"_s,
          u"male chorus"_s,
          u"choir"_s,
          u"harmony"_s,
          u"unison"_s,
          u"group of voices"_s,
          u"backing singers"_s,
          u"session singers"_s,
          u"everyone"_s,
          u"whole band"_s,
          u"the band shouting"_s,
          u"the band answering"_s,
          u"together"_s,
          u"two singers"_s,
          u"three of them"_s,
          u"several of them"_s,
          u"stacked"_s,
          u"doubled by"_s,
          u"answering every line"_s,
          u"a crowd"_s,
          u"call and response"_s}},
        {u"spoken or rapped"_s,
         {u"one rap"_s, u"an mc on top"_s, u"spoken"_s, u"toast"_s, u"chant"_s, u"shout"_s, u"whisper"_s,
          u"instruction"_s, u"producer's tag"_s, u"talkbox"_s, u"vocoder"_s, u"vocoded"_s, u"sampled"_s, u"sermon"_s,
          u"narrated"_s}},
        {u"female voice"_s,
         {u"female"_s, u"woman"_s, u"women"_s, u"soprano"_s, u"contralto"_s, u"mezzo"_s, u"girl"_s, u"she sings"_s,
          u"in her range"_s, u"herself"_s, u"diva"_s}},
        {u"male voice"_s,
         {u"male"_s, u"a man sings"_s, u"two men"_s, u"baritone"_s, u"tenor"_s, u"falsetto"_s, u"boy"_s, u"he sings"_s,
          u"in his range"_s, u"himself"_s, u"crooner"_s}},
        {u"a single voice"_s, {u"close to the mic"_s, u"wrapped in tape"_s, u"humane"_s}}};
    for (auto list = words.begin(); list != words.end(); ++list) {
        for (const QString& word : list.value())
            EXPECT_EQ(kind(word), list.key()) << word.toStdString();
    }
}

TEST(Traits, anEarlierListDecides)
{
    EXPECT_EQ(kind(u"used as texture, then a girl"), u"no voice");
    EXPECT_EQ(kind(u"a choir of women, shouted"), u"several voices");
    EXPECT_EQ(kind(u"a woman's whisper"), u"spoken or rapped");
    EXPECT_EQ(kind(u"a woman and a man"), u"female voice");
    EXPECT_EQ(kind(u"A WOMAN"), u"female voice");
}

TEST(Traits, aWordAtEitherEndCountsAsAWord)
{
    EXPECT_EQ(kind(u"she"), u"female voice");
    EXPECT_EQ(kind(u"rap"), u"spoken or rapped");
    EXPECT_EQ(kind(u"his"), u"male voice");
    EXPECT_EQ(kind(u"sung by three"), u"several voices");
    EXPECT_EQ(kind(u"sung by an mc"), u"spoken or rapped");
}

TEST(Traits, theKindsStandInTheirOrder)
{
    EXPECT_EQ(voiceKinds(), (QStringList{u"female voice"_s, u"male voice"_s, u"several voices"_s, u"spoken or rapped"_s,
                                         u"a single voice"_s, u"no voice"_s}));
}

} // namespace
} // namespace orvane::Prompt
