#include "demonstration/service/Words.h"

#include <QSet>

#include <algorithm>
#include <gtest/gtest.h>

namespace orvane::demo {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(Words, noTwoTitlesOfALibraryAreAlike)
{
    QSet<QString> titles;
    for (int ordinal = 0; ordinal < 120'000; ++ordinal)
        titles.insert(titleOf(1, ordinal));
    EXPECT_EQ(titles.size(), 120'000);
}

TEST(Words, theSameNumbersGiveTheSameText)
{
    EXPECT_EQ(titleOf(3, 17), titleOf(3, 17));
    EXPECT_EQ(lyricsOf(17), lyricsOf(17));
    EXPECT_EQ(tagsOf(17), tagsOf(17));
    EXPECT_NE(lyricsOf(17), lyricsOf(18));
}

TEST(Words, lyricsHaveTheirSectionsAndFourLinesInEach)
{
    for (unsigned seed = 0; seed < 200; ++seed) {
        const QStringList sections = lyricsOf(seed).trimmed().split(u"\n\n"_s);
        ASSERT_EQ(sections.size(), 5);
        const QStringList marks{u"[Verse]"_s, u"[Chorus]"_s, u"[Verse]"_s, u"[Chorus]"_s, u"[Outro]"_s};
        for (qsizetype number = 0; number < sections.size(); ++number) {
            const QStringList lines = sections[number].split(u'\n');
            EXPECT_EQ(lines.first(), marks[number]);
            EXPECT_EQ(lines.size(), number == 4 ? 3 : 5);
        }
        EXPECT_EQ(sections[1], sections[3]) << "the chorus comes again";
        EXPECT_NE(sections[0], sections[2]) << "the verse does not";
    }
}

TEST(Words, areOfPlainCharacters)
{
    for (unsigned seed = 0; seed < 200; ++seed) {
        const QString text = titleOf(seed, 5) + tagsOf(seed) + lyricsOf(seed);
        EXPECT_TRUE(std::all_of(text.begin(), text.end(), [](QChar unit) { return unit.unicode() < 0x7F; }));
    }
}

} // namespace
} // namespace orvane::demo
