#include "main/Chrome/MenuChip.h"
#include "main/Chrome/Paint.h"
#include "main/Chrome/Theme.h"
#include "main/Chrome/ToggleChip.h"
#include "tests/main/Chrome/Picture.h"

#include <QMenu>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace orvane::test {
namespace {

QColor groundOf(ToggleChip& chip)
{
    chip.resize(chip.sizeHint() + QSize(40, 0));
    return pictureOf(chip).pixelColor(chip.width() / 2, 2);
}

TEST(ToggleChip, isDrawnInTheAccentsTonesWhenLit)
{
    ToggleChip chip(u"Sweep"_s);
    EXPECT_EQ(groundOf(chip), Theme::raised);
    chip.setLit(true);
    EXPECT_TRUE(chip.isLit());
    EXPECT_TRUE(isNear(groundOf(chip), Paint::mixed(Theme::card, Theme::accent, 0.18), 1));
}

TEST(ToggleChip, isDrawnAsLitWhileItsMenuIsOpen)
{
    ToggleChip chip(u"Sweep"_s);
    chip.setLit(true);
    const QColor lit = groundOf(chip);
    chip.setLit(false);
    chip.setOpen(true);
    EXPECT_EQ(groundOf(chip), lit);
    EXPECT_FALSE(chip.isLit());
    chip.setOpen(false);
    EXPECT_NE(groundOf(chip), lit);
}

TEST(ToggleChip, aClickTellsItsOwnerAndChangesNothing)
{
    ToggleChip chip(u"Sweep"_s);
    const QSignalSpy clicks(&chip, &QAbstractButton::clicked);
    chip.show();
    QTest::mouseClick(&chip, Qt::LeftButton);
    QTest::keyClick(&chip, Qt::Key_Space);
    EXPECT_EQ(clicks.size(), 2);
    EXPECT_FALSE(chip.isLit());
}

TEST(ToggleChip, aLargerFontMakesALargerChip)
{
    ToggleChip chip(u"Sweep"_s);
    const QSize before = chip.sizeHint();
    chip.setChipFont(Theme::font(20));
    EXPECT_GT(chip.sizeHint().width(), before.width());
    EXPECT_GT(chip.sizeHint().height(), before.height());
    EXPECT_EQ(chip.chipFont().pointSizeF(), Theme::font(20).pointSizeF());
}

struct MenuChipTest : testing::Test
{
    MenuChipTest()
    {
        chip.setItems({{u"Any"_s, 0}, {u"Drum & bass"_s, 1}, {u"Synthwave"_s, 2}});
        chip.resize(chip.sizeHint());
        chip.show();
    }

    MenuChip chip{u"Genre"_s};
    QSignalSpy picks{&chip, &MenuChip::picked};
};

TEST_F(MenuChipTest, isDarkAndShowsItsOwnTextWhileItIsOff)
{
    EXPECT_FALSE(chip.isLit());
    EXPECT_EQ(chip.shownText(), u"Genre"_s);
}

TEST_F(MenuChipTest, aPickSelectsLightsAndSends)
{
    chip.pick(2);
    EXPECT_EQ(chip.selectedTag(), 2);
    EXPECT_TRUE(chip.isLit());
    EXPECT_EQ(chip.shownText(), u"Synthwave"_s);
    ASSERT_EQ(picks.size(), 1);
    EXPECT_EQ(picks.first().first().toInt(), 2);
    chip.pick(0);
    EXPECT_FALSE(chip.isLit());
    EXPECT_EQ(chip.shownText(), u"Genre"_s);
}

TEST_F(MenuChipTest, theOffTagDecidesWhatCountsAsOff)
{
    chip.setOffTag(2);
    EXPECT_TRUE(chip.isLit());
    chip.setSelectedTag(2);
    EXPECT_FALSE(chip.isLit());
    EXPECT_EQ(picks.size(), 0);
}

TEST_F(MenuChipTest, aClickOpensTheMenuWithTheSelectedItemTicked)
{
    chip.setSelectedTag(1);
    QTest::mouseClick(&chip, Qt::LeftButton);
    ASSERT_TRUE(chip.menu());
    EXPECT_TRUE(chip.isOpen());
    const QList<QAction*> actions = chip.menu()->actions();
    ASSERT_EQ(actions.size(), 3);
    EXPECT_EQ(actions.at(1)->text(), u"Drum && bass"_s);
    EXPECT_TRUE(actions.at(1)->isChecked());
    EXPECT_FALSE(actions.at(0)->isChecked());
    actions.at(2)->trigger();
    EXPECT_EQ(chip.selectedTag(), 2);
    chip.menu()->close();
    EXPECT_FALSE(chip.isOpen());
    EXPECT_FALSE(chip.menu());
}

TEST_F(MenuChipTest, theDownArrowOpensTheMenuAndEscapeClosesIt)
{
    QTest::keyClick(&chip, Qt::Key_Down);
    ASSERT_TRUE(chip.menu());
    QTest::keyClick(chip.menu(), Qt::Key_Escape);
    EXPECT_FALSE(chip.isOpen());
    EXPECT_EQ(picks.size(), 0);
}

TEST_F(MenuChipTest, withoutItemsThereIsNoMenu)
{
    chip.setItems({});
    QTest::mouseClick(&chip, Qt::LeftButton);
    EXPECT_FALSE(chip.menu());
    EXPECT_FALSE(chip.isOpen());
}

TEST_F(MenuChipTest, theMarkStandsAtTheTrailingEdge)
{
    ToggleChip plain(u"Genre"_s);
    EXPECT_GT(chip.sizeHint().width(), plain.sizeHint().width());
    chip.resize(200, chip.sizeHint().height());
    const auto inkIn = [this](const QRect& part) { return countOf(pictureOf(chip).copy(part), Theme::textSecond, 40); };
    const QRect left(4, 4, 18, chip.height() - 8);
    const QRect right(178, 4, 18, chip.height() - 8);
    EXPECT_EQ(inkIn(left), 0);
    EXPECT_GT(inkIn(right), 0);
    chip.setLayoutDirection(Qt::RightToLeft);
    EXPECT_GT(inkIn(left), 0);
    EXPECT_EQ(inkIn(right), 0);
}

TEST(MenuChip, mayGoAwayWhileItsMenuIsOpen)
{
    auto chip = std::make_unique<MenuChip>(u"Genre"_s);
    chip->setItems({{u"Any"_s, 0}});
    chip->show();
    chip->openMenu();
    const QPointer<QMenu> menu = chip->menu();
    chip.reset();
    EXPECT_FALSE(menu);
}

} // namespace
} // namespace orvane::test
