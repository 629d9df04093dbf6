#include "suno/view/ProgressCard.h"

#include "main/Chrome/ElidedLabel.h"
#include "main/Chrome/ProgressLine.h"
#include "suno/LibraryExport.h"

#include <QLabel>

#include <gtest/gtest.h>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

class ProgressCardTest : public testing::Test
{
protected:
    QString label() const { return card.findChild<ElidedLabel*>(u"progressLabel"_s)->text(); }

    QString timeLeft() const { return card.findChild<QLabel*>(u"timeLeft"_s)->text(); }

    double bar() const { return card.findChild<ProgressLine*>(u"progress"_s)->value(); }

    ProgressCard card;
};

TEST_F(ProgressCardTest, aTrackIsCountedFromOneAndTheBarFromNothing)
{
    card.show({.done = 0, .count = 4, .base = u"001 - Song"_s, .timeLeft = {}});
    EXPECT_EQ(label(), u"1 of 4 tracks — 001 - Song"_s);
    EXPECT_EQ(bar(), 0);
    EXPECT_EQ(timeLeft(), QString());
}

TEST_F(ProgressCardTest, theTimeLeftStandsBesideTheTrackAsSoonAsItIsKnown)
{
    card.show({.done = 3, .count = 4, .base = u"004 - Last"_s, .timeLeft = 4min});
    EXPECT_EQ(label(), u"4 of 4 tracks — 004 - Last"_s);
    EXPECT_EQ(bar(), 0.75);
    EXPECT_EQ(timeLeft(), u"about 4 min left"_s);
}

TEST_F(ProgressCardTest, aNameThatLooksLikeAPlaceholderOrMarkupStandsAsItIs)
{
    card.show({.done = 0, .count = 1, .base = u"001 - %1 <b>%2</b>"_s, .timeLeft = {}});
    EXPECT_EQ(label(), u"1 of 1 tracks — 001 - %1 <b>%2</b>"_s);
    EXPECT_EQ(card.findChild<ElidedLabel*>(u"progressLabel"_s)->textFormat(), Qt::PlainText);
}

TEST_F(ProgressCardTest, allDoneFillsTheBar)
{
    card.show({.done = 4, .count = 4, .base = {}, .timeLeft = {}});
    EXPECT_EQ(bar(), 1);
}

} // namespace
} // namespace orvane::test
