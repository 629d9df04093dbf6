#include "main/Chrome/FlowRows.h"
#include "main/Chrome/FlowStack.h"

#include <QApplication>
#include <QVBoxLayout>

#include <gmock/gmock.h>
#include <memory>

namespace orvane::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

FlowRows rows()
{
    return {.columnSpacing = 10, .rowSpacing = 4, .centresRows = false};
}

TEST(FlowRows, boxesStandSideBySideFromTheLeft)
{
    const auto placed = rows().place({{30, 20}, {40, 20}}, {}, 100);
    EXPECT_THAT(placed.rects, ElementsAre(QRect(0, 0, 30, 20), QRect(40, 0, 40, 20)));
    EXPECT_EQ(placed.height, 20);
}

TEST(FlowRows, aBoxThatEndsAtTheWidthStaysAndOneMorePointWraps)
{
    EXPECT_EQ(rows().place({{30, 20}, {60, 20}}, {}, 100).rects.last(), QRect(40, 0, 60, 20));
    EXPECT_EQ(rows().place({{30, 20}, {61, 20}}, {}, 100).rects.last(), QRect(0, 24, 61, 20));
}

TEST(FlowRows, rowsAreAsHighAsTheirHighestBoxAndBoxesShareOneMiddle)
{
    const auto placed = rows().place({{30, 10}, {30, 20}, {90, 8}}, {}, 100);
    EXPECT_THAT(placed.rects, ElementsAre(QRect(0, 5, 30, 10), QRect(40, 0, 30, 20), QRect(0, 24, 90, 8)));
    EXPECT_EQ(placed.height, 32);
}

TEST(FlowRows, aBoxWiderThanARowIsAsWideAsTheRow)
{
    const auto placed = rows().place({{30, 20}, {150, 20}, {30, 20}}, {}, 100);
    EXPECT_THAT(placed.rects, ElementsAre(QRect(0, 0, 30, 20), QRect(0, 24, 100, 20), QRect(0, 48, 30, 20)));
}

TEST(FlowRows, trailingBoxesEndAtTheRightOfTheLastRow)
{
    const auto placed = rows().place({{60, 20}, {60, 20}}, {{10, 20}, {10, 10}}, 100);
    EXPECT_THAT(placed.rects,
                ElementsAre(QRect(0, 0, 60, 20), QRect(0, 24, 60, 20), QRect(70, 24, 10, 20), QRect(90, 29, 10, 10)));
    EXPECT_EQ(placed.height, 44);
}

TEST(FlowRows, trailingBoxesWithoutRoomGetARowOfTheirOwn)
{
    const auto placed = rows().place({{80, 20}}, {{30, 20}}, 100);
    EXPECT_THAT(placed.rects, ElementsAre(QRect(0, 0, 80, 20), QRect(70, 24, 30, 20)));
    EXPECT_EQ(placed.height, 44);
}

TEST(FlowRows, trailingBoxesStandAloneWhereThereIsNothingElse)
{
    const auto placed = rows().place({}, {{30, 20}}, 100);
    EXPECT_THAT(placed.rects, ElementsAre(QRect(70, 0, 30, 20)));
    EXPECT_EQ(placed.height, 20);
}

TEST(FlowRows, manyTrailingBoxesWrapAtTheRight)
{
    const auto placed = rows().place({{30, 20}}, {{60, 20}, {60, 20}}, 100);
    EXPECT_THAT(placed.rects, ElementsAre(QRect(0, 0, 30, 20), QRect(40, 24, 60, 20), QRect(40, 48, 60, 20)));
}

TEST(FlowRows, centredRowsHaveTheSameRoomOnBothSides)
{
    FlowRows centred = rows();
    centred.centresRows = true;
    const auto placed = centred.place({{60, 20}, {60, 20}}, {}, 100);
    EXPECT_THAT(placed.rects, ElementsAre(QRect(20, 0, 60, 20), QRect(20, 24, 60, 20)));
}

TEST(FlowRows, aCentredRowBesideTrailingBoxesIsCentredInWhatTheyLeave)
{
    FlowRows centred = rows();
    centred.centresRows = true;
    const auto placed = centred.place({{30, 20}}, {{20, 20}}, 100);
    EXPECT_THAT(placed.rects, ElementsAre(QRect(20, 0, 30, 20), QRect(80, 0, 20, 20)));
}

TEST(FlowRows, nothingIsNoHeight)
{
    const auto placed = rows().place({}, {}, 100);
    EXPECT_THAT(placed.rects, IsEmpty());
    EXPECT_EQ(placed.height, 0);
}

QWidget* box(int width, int height)
{
    auto* view = new QWidget;
    view->setFixedSize(width, height);
    return view;
}

struct FlowStackTest : testing::Test
{
    FlowStackTest()
    {
        stack.setColumnSpacing(10);
        stack.setRowSpacing(4);
        stack.resize(100, 200);
        stack.setViews({one, two}, {end});
    }

    FlowStack stack;
    QWidget* one = box(30, 20);
    QWidget* two = box(40, 20);
    QWidget* end = box(20, 20);
};

TEST_F(FlowStackTest, laysItsViewsOutAndReportsTheHeight)
{
    EXPECT_EQ(one->geometry(), QRect(0, 0, 30, 20));
    EXPECT_EQ(two->geometry(), QRect(40, 0, 40, 20));
    EXPECT_EQ(end->geometry(), QRect(80, 24, 20, 20));
    EXPECT_EQ(stack.laidOutHeight(), 44);
    EXPECT_EQ(stack.sizeHint().height(), 44);
    EXPECT_EQ(stack.heightForWidth(100), 44);
    EXPECT_EQ(stack.heightForWidth(110), 20);
}

TEST_F(FlowStackTest, flowsAnewWhenItsWidthChanges)
{
    stack.show();
    stack.resize(300, 200);
    EXPECT_EQ(stack.laidOutHeight(), 20);
    EXPECT_EQ(end->geometry(), QRect(280, 0, 20, 20));
}

TEST_F(FlowStackTest, isMirroredInALayoutFromRightToLeft)
{
    stack.setLayoutDirection(Qt::RightToLeft);
    QApplication::processEvents();
    EXPECT_EQ(one->geometry(), QRect(70, 0, 30, 20));
    EXPECT_EQ(two->geometry(), QRect(20, 0, 40, 20));
    EXPECT_EQ(end->geometry(), QRect(0, 24, 20, 20));
}

TEST_F(FlowStackTest, aHiddenViewTakesNoRoom)
{
    stack.show();
    two->hide();
    QApplication::processEvents();
    EXPECT_EQ(stack.laidOutHeight(), 20);
    EXPECT_EQ(end->geometry(), QRect(80, 0, 20, 20));
    two->show();
    one->hide();
    QApplication::processEvents();
    EXPECT_EQ(two->geometry(), QRect(0, 0, 40, 20));
    one->show();
    QApplication::processEvents();
    EXPECT_EQ(stack.laidOutHeight(), 44);
}

TEST_F(FlowStackTest, aViewThatGrowsMovesTheOthers)
{
    stack.show();
    one->setFixedSize(60, 20);
    QApplication::processEvents();
    EXPECT_EQ(two->geometry(), QRect(0, 24, 40, 20));
}

TEST_F(FlowStackTest, viewsOfAnEarlierCallAreLetGoOf)
{
    const std::unique_ptr<QWidget> former(two);
    stack.setViews({one, end});
    EXPECT_FALSE(former->parentWidget());
    EXPECT_EQ(end->geometry(), QRect(40, 0, 20, 20));
    stack.setViews({one, two});
    EXPECT_FALSE(two->isHidden());
    EXPECT_EQ(two->geometry(), QRect(40, 0, 40, 20));
    stack.setViews({});
    delete one;
    delete end;
    EXPECT_EQ(stack.laidOutHeight(), 0);
}

TEST_F(FlowStackTest, aViewThatIsDeletedLeavesItsPlace)
{
    delete one;
    EXPECT_EQ(stack.views(), QList<QWidget*>{two});
    EXPECT_EQ(two->geometry(), QRect(0, 0, 40, 20));
}

TEST_F(FlowStackTest, aColumnGivesItTheHeightOfItsRows)
{
    QWidget window;
    auto* column = new QVBoxLayout(&window);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(&stack);
    column->addStretch();
    window.resize(100, 300);
    window.show();
    QApplication::processEvents();
    EXPECT_EQ(stack.height(), 44);
    window.resize(300, 300);
    QApplication::processEvents();
    EXPECT_EQ(stack.height(), 20);
    stack.setParent(nullptr);
}

} // namespace
} // namespace orvane::test
