#include "platform/text/Characters.h"

#include "tests/support/Sandbox.h"

#include <QTextBoundaryFinder>

#include <gtest/gtest.h>
#include <random>

namespace orvane {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(Characters, aFamilyOfEmojiIsOneCharacter)
{
    EXPECT_EQ(characterCount(u"👨‍👩‍👧‍👦"), 1);
    EXPECT_EQ(firstCharacters(u"👨‍👩‍👧‍👦 home", 1), u"👨‍👩‍👧‍👦");
}

TEST(Characters, aCombiningMarkBelongsToItsLetter)
{
    EXPECT_EQ(characterCount(u"e\u0301a"), 2);
    EXPECT_EQ(firstCharacters(u"e\u0301a", 1), u"e\u0301");
}

TEST(Characters, aCutNeverTakesTheLetterFromTheMarkBehindIt)
{
    EXPECT_EQ(firstCharacters(u"abe\u0301", 2), u"ab");
    EXPECT_EQ(firstCharacters(u"abe\u0301", 3), u"abe\u0301");
}

TEST(Characters, aCarriageReturnWithALineFeedIsOneCharacter)
{
    EXPECT_EQ(characterCount(u"\r\n"), 1);
}

TEST(Characters, aCutLongerThanTheTextIsTheText)
{
    EXPECT_EQ(firstCharacters(u"abc", 4), u"abc");
    EXPECT_EQ(firstCharacters(u"", 4), u"");
    EXPECT_EQ(firstCharacters(u"abc", 0), u"");
}

TEST(Characters, theShortWayCountsAsTheBoundaryFinderDoes)
{
    std::mt19937 random(test::seed());
    std::uniform_int_distribution<int> unit(1, 0x3FF);
    for (int round = 0; round < 2000; ++round) {
        QString text;
        for (int index = 0; index < round % 40; ++index)
            text.append(QChar(unit(random)));
        QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
        qsizetype count = 0;
        while (finder.toNextBoundary() != -1)
            ++count;
        ASSERT_EQ(characterCount(text), count) << text.toStdString();
        ASSERT_EQ(characterCount(firstCharacters(text, 7)), std::min<qsizetype>(7, count)) << text.toStdString();
    }
}

TEST(Characters, whiteSpaceIsWhatUnicodeCallsWhiteSpace)
{
    const QString white = u"\t\n\v\f\r\u0020\u0085\u00A0\u1680\u2000\u2001\u2002\u2003\u2004\u2005\u2006\u2007\u2008"
                          "\u2009\u200A\u2028\u2029\u202F\u205F\u3000"_s;
    for (int unit = 0; unit <= 0xFFFF; ++unit)
        ASSERT_EQ(isWhiteSpace(static_cast<char16_t>(unit)), white.contains(QChar(unit))) << unit;
}

TEST(Characters, aLineEndIsNoBlank)
{
    EXPECT_TRUE(isBlank(u'\t'));
    EXPECT_FALSE(isBlank(u'\n'));
    EXPECT_EQ(trimmedBlanks(u" \t\u3000 a \n"), u"a \n");
    EXPECT_EQ(trimmedWhiteSpace(u" \n\u2028 a b \r\n"), u"a b");
}

TEST(Characters, aRunOfWhiteSpaceBecomesOneSpace)
{
    EXPECT_EQ(collapsedWhiteSpace(u"  My \n\t Song "), u" My Song "_s);
}

TEST(Characters, everyKindOfLineEndEndsALine)
{
    const QList<QStringView> expected{u"a", u"b", u"", u"c", u"d", u""};
    EXPECT_EQ(lines(u"a\r\nb\n\nc\u2028d\r"), expected);
    EXPECT_EQ(lines(u"").size(), 1);
}

} // namespace
} // namespace orvane
