#include "prompt/Sentences.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace orvane::Prompt {
namespace {

Picked picked()
{
    return {.place = u"a flat in Leeds, above a shop, the third floor"_s,
            .year = u"1986"_s,
            .genre = u"acid house"_s,
            .mood = u"raw"_s,
            .voice = u"a woman humming"_s,
            .motion = u"the filter opening"_s,
            .key = u"A minor"_s,
            .detailOne = u"an 808 kick"_s,
            .detailTwo = u"one clap"_s,
            .bpm = 121};
}

TEST(Sentences, eachFormReadsAsItIsWritten)
{
    const Picked all = picked();
    EXPECT_EQ(style(0, all), u"Acid house from a flat in Leeds, 1986: a woman humming, an 808 kick, one clap. 121 BPM, "
                             u"the filter opening.");
    EXPECT_EQ(style(1, all), u"a flat in Leeds, 1986 — an 808 kick, one clap, a woman humming. The filter opening, 121 "
                             u"BPM.");
    EXPECT_EQ(style(2, all), u"An 808 kick and one clap — acid house, 1986, a woman humming. 121 BPM in A minor.");
    EXPECT_EQ(style(3, all), u"Acid house the way it sounded in a flat in Leeds, above a shop, the third floor, 1986: "
                             u"121 BPM, an 808 kick, the filter opening, a woman humming.");
    EXPECT_EQ(style(4, all), u"Play it like a 1986 the third floor record nobody reissued: an 808 kick, one clap, a "
                             u"woman humming. The filter opening, 121 BPM.");
    EXPECT_EQ(style(5, all), u"Raw acid house from a flat in Leeds, above a shop, the third floor, 1986. An 808 kick, "
                             u"one clap, a woman humming. 121 BPM, A minor.");
    EXPECT_EQ(style(6, all),
              u"Acid house, 1986, a flat in Leeds. A woman humming over an 808 kick one clap. The filter "
              u"opening. 121 BPM, A minor.");
}

TEST(Sentences, aPlaceWithoutAnArticleIsShortByItsFirstPart)
{
    Picked all = picked();
    for (const QString& place : {u"Leeds, above a shop"_s, u"Anfield, a back room"_s, u"Theatre Row, the cellar"_s}) {
        all.place = place;
        EXPECT_TRUE(style(4, all).startsWith(u"Play it like a 1986 "_s + place.section(u',', 0, 0) + u" record"_s));
    }
}

TEST(Sentences, aPlaceWithAnArticleIsShortByItsTail)
{
    Picked all = picked();
    for (const QString& place : {u"a flat,  Leeds "_s, u"An attic, Hull, Leeds"_s, u"the mill,Leeds"_s}) {
        all.place = place;
        EXPECT_TRUE(style(4, all).startsWith(u"Play it like a 1986 Leeds record"_s)) << style(4, all).toStdString();
    }
    all.place = u"the mill"_s;
    EXPECT_TRUE(style(4, all).startsWith(u"Play it like a 1986 the mill record"_s));
}

TEST(Sentences, theWordiestFormIsLeftOutFrom119CharactersOn)
{
    Picked all = picked();
    all.voice = QString(40, u'v');
    all.detailOne = QString(40, u'd');
    all.detailTwo = QString(38, u'e');
    EXPECT_EQ(suitableStyleForms(all), 7);
    all.detailTwo.append(u'e');
    EXPECT_EQ(suitableStyleForms(all), 6);
    all.detailTwo = u"👩‍👩‍👧‍👦"_s.repeated(38);
    EXPECT_EQ(suitableStyleForms(all), 7);
}

TEST(Sentences, anIdeaHasFourOpenings)
{
    EXPECT_EQ(idea(0, u"a bus"_s), u"A song about a bus.");
    EXPECT_EQ(idea(1, u"a bus"_s), u"About a bus.");
    EXPECT_EQ(idea(2, u"a bus"_s), u"Write it about a bus.");
    EXPECT_EQ(idea(3, u"a bus"_s), u"The song is about a bus.");
    for (int form = 0; form < ideaForms; ++form)
        EXPECT_EQ(idea(form, QString()), QString());
}

TEST(Sentences, anEmptyWordIsNotCapitalised)
{
    Picked all = picked();
    all.motion.clear();
    EXPECT_EQ(style(1, all), u"a flat in Leeds, 1986 — an 808 kick, one clap, a woman humming. , 121 BPM.");
}

} // namespace
} // namespace orvane::Prompt
