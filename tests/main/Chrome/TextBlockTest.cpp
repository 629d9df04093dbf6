#include "main/Chrome/TextBlock.h"

#include "main/Chrome/Theme.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace orvane::test {
namespace {

constexpr int width = 90;

TextBlock blockOf(const QString& text)
{
    return {.text = text, .font = Theme::small(), .direction = Qt::LeftToRight};
}

TEST(TextBlock, whatFitsIsHeldAsItIs)
{
    EXPECT_EQ(blockOf(u"Short"_s).held(width, 1).text, u"Short"_s);
    EXPECT_EQ(blockOf({}).held(width, 1).text, QString());
}

TEST(TextBlock, aHeldTextTakesNoMoreThanItsLines)
{
    for (const QString& text : {u"Nothing ticked in the Downloader yet, nor anywhere else"_s, QString(200, u'w')}) {
        for (const int lines : {1, 2, 3}) {
            const TextBlock held = blockOf(text).held(width, lines);
            EXPECT_TRUE(held.text.endsWith(u'…')) << held.text.toStdString();
            EXPECT_LE(held.size(width).height(), lines * blockOf(u"X"_s).size(width).height());
            EXPECT_LE(held.size(width).width(), width);
        }
    }
}

} // namespace
} // namespace orvane::test
