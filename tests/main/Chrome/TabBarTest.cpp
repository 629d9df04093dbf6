#include "main/Chrome/TabBar.h"

#include "main/Chrome/TabButton.h"
#include "main/Chrome/Theme.h"
#include "tests/main/Chrome/Picture.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace orvane::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const QStringList titles = {u"Downloader"_s, u"Files"_s,     u"Namer"_s, u"Mastering"_s,
                            u"Visualizer"_s, u"Automater"_s, u"DJ"_s,    u"Prompt Master"_s};

struct TabBarTest : testing::Test
{
    TabBarTest()
    {
        bar.onSelect = [this](int index) { chosen.push_back(index); };
        bar.resize(300, bar.sizeHint().height());
        bar.show();
    }

    QScrollBar* scroll() const { return bar.scroller()->horizontalScrollBar(); }

    bool isInSight(int index) const
    {
        const QWidget* button = bar.buttons().at(index);
        const QRect seen(button->mapTo(&bar, QPoint()), button->size());
        return bar.rect().contains(seen);
    }

    std::vector<int> activeOnes() const
    {
        std::vector<int> active;
        for (int index = 0; index < bar.buttons().size(); ++index) {
            if (bar.buttons().at(index)->isActive())
                active.push_back(index);
        }
        return active;
    }

    void wheel(const QPoint& pixels, const QPoint& angle)
    {
        QWidget* port = bar.scroller()->viewport();
        QWheelEvent event(QPointF(9, 9), port->mapToGlobal(QPointF(9, 9)), pixels, angle, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(port, &event);
    }

    TabBar bar{titles};
    std::vector<int> chosen;
};

TEST_F(TabBarTest, startsOnTheFirstTab)
{
    EXPECT_EQ(bar.selected(), 0);
    EXPECT_THAT(activeOnes(), ElementsAre(0));
    EXPECT_EQ(bar.accessibleName(), u"Tools"_s);
    EXPECT_EQ(bar.buttons().size(), 8);
}

TEST_F(TabBarTest, selectMakesOneTabActiveAndCallsNobody)
{
    bar.select(3);
    EXPECT_EQ(bar.selected(), 3);
    EXPECT_THAT(activeOnes(), ElementsAre(3));
    EXPECT_THAT(chosen, IsEmpty());
}

TEST_F(TabBarTest, anIndexBeyondTheButtonsDoesNothing)
{
    bar.select(2);
    bar.select(8);
    bar.select(-1);
    EXPECT_EQ(bar.selected(), 2);
    EXPECT_THAT(activeOnes(), ElementsAre(2));
}

TEST_F(TabBarTest, aClickSelectsAndCalls)
{
    QTest::mouseClick(bar.buttons().at(1), Qt::LeftButton);
    EXPECT_EQ(bar.selected(), 1);
    EXPECT_THAT(chosen, ElementsAre(1));
}

TEST_F(TabBarTest, aClickWithoutAClosureStillSelects)
{
    bar.onSelect = nullptr;
    QTest::mouseClick(bar.buttons().at(1), Qt::LeftButton);
    EXPECT_EQ(bar.selected(), 1);
}

TEST_F(TabBarTest, everySelectedTabIsScrolledIntoView)
{
    for (const int index : {7, 0, 4, 6, 1}) {
        bar.select(index);
        EXPECT_TRUE(isInSight(index)) << index;
    }
}

TEST_F(TabBarTest, everySelectedTabIsScrolledIntoViewFromRightToLeft)
{
    bar.setLayoutDirection(Qt::RightToLeft);
    QCoreApplication::processEvents();
    for (const int index : {0, 7, 0, 4, 6, 1}) {
        bar.select(index);
        EXPECT_TRUE(isInSight(index)) << index;
    }
}

TEST_F(TabBarTest, fadesShowOnlyWhereThereIsMore)
{
    bar.select(0);
    EXPECT_FALSE(bar.fadeLeading()->isVisible());
    EXPECT_TRUE(bar.fadeTrailing()->isVisible());
    bar.select(4);
    EXPECT_TRUE(bar.fadeLeading()->isVisible());
    EXPECT_TRUE(bar.fadeTrailing()->isVisible());
    bar.select(7);
    EXPECT_TRUE(bar.fadeLeading()->isVisible());
    EXPECT_FALSE(bar.fadeTrailing()->isVisible());
}

TEST_F(TabBarTest, thereIsNoFadeWhereAllTabsFit)
{
    bar.resize(bar.sizeHint().width() + 20, bar.height());
    EXPECT_FALSE(bar.fadeLeading()->isVisible());
    EXPECT_FALSE(bar.fadeTrailing()->isVisible());
    bar.resize(200, bar.height());
    EXPECT_TRUE(bar.fadeTrailing()->isVisible());
}

TEST_F(TabBarTest, fadesFollowTheScrolling)
{
    scroll()->setValue(10);
    EXPECT_TRUE(bar.fadeLeading()->isVisible());
    scroll()->setValue(scroll()->maximum());
    EXPECT_FALSE(bar.fadeTrailing()->isVisible());
}

TEST_F(TabBarTest, theFadesStandAtTheEndsAndChangeSidesWithTheDirection)
{
    EXPECT_LT(bar.fadeLeading()->x(), bar.fadeTrailing()->x());
    bar.setLayoutDirection(Qt::RightToLeft);
    EXPECT_GT(bar.fadeLeading()->x(), bar.fadeTrailing()->x());
}

TEST_F(TabBarTest, wheelAndTrackpadScrollSideways)
{
    wheel({}, {0, -120});
    const int byWheel = scroll()->value();
    EXPECT_GT(byWheel, 0);
    wheel({}, {0, 120});
    EXPECT_EQ(scroll()->value(), 0);
    wheel({-25, 0}, {-120, 0});
    EXPECT_EQ(scroll()->value(), 25);
    wheel({0, -10}, {0, -40});
    EXPECT_EQ(scroll()->value(), 35);
}

TEST_F(TabBarTest, theTrackpadMovesTheTabsWithTheFingersFromRightToLeft)
{
    bar.setLayoutDirection(Qt::RightToLeft);
    QCoreApplication::processEvents();
    bar.select(0);
    const QPoint before = bar.buttons().at(3)->mapTo(&bar, QPoint());
    wheel({25, 0}, {120, 0});
    EXPECT_EQ(bar.buttons().at(3)->mapTo(&bar, QPoint()).x(), before.x() + 25);
}

TEST_F(TabBarTest, theSelectedTabStaysInSightWhenTheBarShrinks)
{
    bar.resize(900, bar.height());
    bar.select(6);
    bar.resize(200, bar.height());
    EXPECT_TRUE(isInSight(6));
}

TEST_F(TabBarTest, arrowsHomeAndEndMoveAndTakeTheFocusAlong)
{
    ASSERT_TRUE(showActive(bar));
    bar.buttons().at(0)->setFocus();
    QTest::keyClick(bar.buttons().at(0), Qt::Key_Right);
    EXPECT_EQ(bar.selected(), 1);
    EXPECT_TRUE(bar.buttons().at(1)->hasFocus());
    QTest::keyClick(bar.buttons().at(1), Qt::Key_End);
    EXPECT_EQ(bar.selected(), 7);
    QTest::keyClick(bar.buttons().at(7), Qt::Key_Right);
    QTest::keyClick(bar.buttons().at(7), Qt::Key_Home);
    QTest::keyClick(bar.buttons().at(0), Qt::Key_Left);
    EXPECT_THAT(chosen, ElementsAre(1, 7, 0));
}

TEST_F(TabBarTest, arrowsPointTheWayTheyShowFromRightToLeft)
{
    bar.setLayoutDirection(Qt::RightToLeft);
    QTest::keyClick(bar.buttons().at(0), Qt::Key_Left);
    EXPECT_EQ(bar.selected(), 1);
    QTest::keyClick(bar.buttons().at(1), Qt::Key_Right);
    EXPECT_EQ(bar.selected(), 0);
}

TEST_F(TabBarTest, onlyTheActiveTabIsReachedByTab)
{
    bar.select(2);
    for (int index = 0; index < 8; ++index)
        EXPECT_EQ(bool(bar.buttons().at(index)->focusPolicy() & Qt::TabFocus), index == 2);
}

TEST_F(TabBarTest, theActiveTabIsMarkedInTheAccent)
{
    TabButton* button = bar.buttons().at(0);
    EXPECT_GT(countOf(pictureOf(*button), Theme::accent), button->width() / 2);
    bar.select(1);
    EXPECT_EQ(countOf(pictureOf(*button), Theme::accent), 0);
}

TEST_F(TabBarTest, aTabUnderThePointerIsLighter)
{
    TabButton* button = bar.buttons().at(1);
    const qint64 atRest = brightnessOf(pictureOf(*button));
    QEnterEvent enter(QPointF(3, 3), QPointF(3, 3), QPointF(3, 3));
    QCoreApplication::sendEvent(button, &enter);
    EXPECT_TRUE(button->isHovered());
    EXPECT_GT(brightnessOf(pictureOf(*button)), atRest);
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(button, &leave);
    EXPECT_FALSE(button->isHovered());
}

TEST_F(TabBarTest, screenReadersReadAListOfTabsAndWhichIsSelected)
{
    bar.select(2);
    QAccessibleInterface* list = QAccessible::queryAccessibleInterface(&bar);
    EXPECT_EQ(list->role(), QAccessible::PageTabList);
    EXPECT_EQ(list->text(QAccessible::Name), u"Tools"_s);
    for (int index = 0; index < 8; ++index) {
        QAccessibleInterface* tab = QAccessible::queryAccessibleInterface(bar.buttons().at(index));
        EXPECT_EQ(tab->role(), QAccessible::PageTab);
        EXPECT_EQ(tab->text(QAccessible::Name), titles.at(index));
        EXPECT_EQ(bool(tab->state().selected), index == 2);
    }
}

TEST(TabBar, withoutTabsItBearsEverything)
{
    TabBar bar(QStringList{});
    bar.resize(300, 40);
    bar.show();
    bar.select(0);
    QTest::keyClick(&bar, Qt::Key_Right);
    EXPECT_EQ(bar.selected(), 0);
    EXPECT_FALSE(bar.fadeTrailing()->isVisible());
}

} // namespace
} // namespace orvane::test
