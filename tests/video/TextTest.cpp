#include "video/Text.h"

#include <QImage>

#include <gtest/gtest.h>

using namespace orvane::Video;
using namespace Qt::Literals::StringLiterals;

namespace {

class Text : public testing::Test
{
protected:
    /// The rule step by step.
    QString steps(QString line, double width) const
    {
        while (widthOf(line, font_, image_) > width) {
            const std::vector<qsizetype> ends = characterEnds(line);
            if (ends.size() < 5)
                break;
            line = line.first(ends[ends.size() - 3]) + u'…';
        }
        return line;
    }

    QString fit(const QString& text, double width) const { return fitted(text, font_, width, image_); }

    QImage image_{16, 16, QImage::Format_RGB32};
    QFont font_ = sansSerif(40.0, QFont::Bold, image_);
};

TEST_F(Text, whatFitsStays)
{
    EXPECT_EQ(fit(u"Night Drive"_s, 2000.0), u"Night Drive");
    EXPECT_EQ(fit(QString(), 0.0), QString());
}

TEST_F(Text, aTitleOfFourCharactersIsNeverShortened)
{
    EXPECT_EQ(fit(u"WWWW"_s, 1.0), u"WWWW");
    EXPECT_EQ(
        fit(u"👩‍👩‍👧‍👦👩‍👩‍👧‍👦👩‍👩‍👧‍👦👩‍👩‍👧‍👦"_s,
            1.0),
        u"👩‍👩‍👧‍👦👩‍👩‍👧‍👦👩‍👩‍👧‍👦👩‍👩‍👧‍👦");
}

TEST_F(Text, fiveCharactersLoseTwoAndNoMore)
{
    EXPECT_EQ(fit(u"WWWWW"_s, 1.0), u"WWW…");
}

TEST_F(Text, aLongTitleEndsInOneEllipsisAndFits)
{
    const QString title = u"The Long and Winding Title That Never Seems To End"_s;
    const QString line = fit(title, 600.0);
    EXPECT_EQ(line.count(u'…'), 1);
    EXPECT_TRUE(line.endsWith(u'…'));
    EXPECT_TRUE(title.startsWith(line.chopped(1)));
    EXPECT_LE(widthOf(line, font_, image_), 600.0);
    EXPECT_GT(widthOf(title.first(line.size()) + u'…', font_, image_), 600.0);
}

TEST_F(Text, theFirstStepTakesTwoCharactersEvenWhereOneWouldDo)
{
    const QString title = u"iiiiiiiiiiiiW"_s;
    const double width = widthOf(title, font_, image_) - 0.5;
    EXPECT_EQ(fit(title, width), u"iiiiiiiiiii…");
}

TEST_F(Text, isTheRuleStepByStepInEveryScript)
{
    const QStringList titles{
        u"Where the River Meets the Sea, Part Two"_s,
        u"夜に駆ける、そして朝が来る前の短い物語"_s,
        u"أغنية طويلة جدا عن البحر والليل والنجوم"_s,
        u"सपनों की रात में एक लंबा सफ़र और गीत"_s,
        u"Ночной дозор над спящим городом"_s,
        u"👩‍🚀🚀🌌✨🎵🎶👨‍👩‍👧‍👦🇳🇱🏳️‍🌈🎹🥁🎷"_s,
        u"e\u0301e\u0301e\u0301e\u0301e\u0301e\u0301e\u0301e\u0301"_s};
    for (const QString& title : titles) {
        const double whole = widthOf(title, font_, image_);
        for (double part = 0.05; part < 1.05; part += 0.05)
            EXPECT_EQ(fit(title, whole * part), steps(title, whole * part)) << title.toStdString() << " at " << part;
    }
}

TEST_F(Text, tenThousandCharactersAreShortenedLikeTen)
{
    const QString title = u"Lorem ipsum dolor sit amet. "_s.repeated(400).first(10'000);
    EXPECT_EQ(fit(title, 500.0), steps(title.first(200), 500.0));
}

TEST_F(Text, lineEndsAndControlsAreSpacesAndMarkupIsText)
{
    EXPECT_EQ(oneLine(u"a\nb\r\nc\td\u2028e\u2029f\u0007g"_s), u"a b c d e f g");
    EXPECT_EQ(oneLine(u"<b>bold</b> &amp; *so*"_s), u"<b>bold</b> &amp; *so*");
}

TEST_F(Text, sizesAreExactAndNotWholePixels)
{
    const double ten = widthOf(u"mmmmmmmmmm"_s, sansSerif(66.96, QFont::Bold, image_), image_);
    const double whole = widthOf(u"mmmmmmmmmm"_s, sansSerif(669.6, QFont::Bold, image_), image_);
    EXPECT_NEAR(ten * 10.0, whole, whole * 0.002);
}

} // namespace
