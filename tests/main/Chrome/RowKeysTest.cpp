#include "main/Chrome/RowKeys.h"

#include <QTest>
#include <QWidget>

#include <gmock/gmock.h>

namespace orvane::test {
namespace {

class RowKeysTest : public testing::Test
{
protected:
    /// Where a key pressed on `widget` leads; nothing where it is left to the widget.
    QList<int> pressed(QWidget& widget, int key, Qt::KeyboardModifiers modifiers = {})
    {
        QList<int> gone;
        gone.swap(gone_);
        QTest::keyClick(&widget, Qt::Key(key), modifiers);
        gone.swap(gone_);
        return gone;
    }

    QWidget row_;
    QWidget thing_{&row_};
    RowKeys::Place place_{.current = 1, .count = 4};
    QList<int> gone_;
    RowKeys keys_{row_, [this] { return place_; }, [this](int index) { gone_.append(index); }};
};

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(RowKeysTest, anArrowLeadsToTheNeighbour)
{
    EXPECT_THAT(pressed(row_, Qt::Key_Right), ElementsAre(2));
    EXPECT_THAT(pressed(row_, Qt::Key_Left), ElementsAre(0));
}

TEST_F(RowKeysTest, theArrowsTurnRoundInARowFromRightToLeft)
{
    row_.setLayoutDirection(Qt::RightToLeft);
    EXPECT_THAT(pressed(row_, Qt::Key_Right), ElementsAre(0));
    EXPECT_THAT(pressed(row_, Qt::Key_Left), ElementsAre(2));
}

TEST_F(RowKeysTest, noArrowLeadsBeyondTheEnds)
{
    place_.current = 3;
    EXPECT_THAT(pressed(row_, Qt::Key_Right), ElementsAre(3));
    place_.current = 0;
    EXPECT_THAT(pressed(row_, Qt::Key_Left), ElementsAre(0));
}

TEST_F(RowKeysTest, homeAndEndLeadToTheEnds)
{
    EXPECT_THAT(pressed(row_, Qt::Key_Home), ElementsAre(0));
    EXPECT_THAT(pressed(row_, Qt::Key_End), ElementsAre(3));
}

TEST_F(RowKeysTest, otherKeysAndThoseWithAModifierAreLeft)
{
    for (const int key : {Qt::Key_Space, Qt::Key_Up, Qt::Key_Down, Qt::Key_Tab})
        EXPECT_THAT(pressed(row_, key), IsEmpty()) << key;
    EXPECT_THAT(pressed(row_, Qt::Key_Left, Qt::AltModifier), IsEmpty());
    EXPECT_THAT(pressed(row_, Qt::Key_Left, Qt::KeypadModifier), ElementsAre(0));
}

TEST_F(RowKeysTest, inAnEmptyRowNoKeyLeadsAnywhere)
{
    place_ = {};
    for (const int key : {Qt::Key_Right, Qt::Key_Left, Qt::Key_Home, Qt::Key_End})
        EXPECT_THAT(pressed(row_, key), IsEmpty()) << key;
}

TEST_F(RowKeysTest, theKeysOfAThingAreHeardOnceItIsWatched)
{
    keys_.watch(thing_);
    EXPECT_THAT(pressed(thing_, Qt::Key_End), ElementsAre(3));
}

} // namespace
} // namespace orvane::test
