#include "main/Chrome/SegmentBar.h"

#include "main/Chrome/Theme.h"
#include "tests/main/Chrome/Picture.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace orvane::test {
namespace {

struct SegmentBarTest : testing::Test
{
    SegmentBarTest()
    {
        bar.setItems({{u"WAV"_s, 10}, {u"FLAC"_s, 20}, {u"MP3"_s, 30}});
        bar.setSelectedTag(20);
        bar.resize(300, bar.sizeHint().height());
        bar.show();
    }

    QColor groundOf(int index)
    {
        const QRect item = bar.itemRect(index);
        return pictureOf(bar).pixelColor(item.left() + 6, item.center().y());
    }

    void click(int index) { QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.itemRect(index).center()); }

    SegmentBar bar;
    QSignalSpy changes{&bar, &SegmentBar::selectionChanged};
};

TEST_F(SegmentBarTest, theSelectedItemHasTheAccent)
{
    EXPECT_EQ(groundOf(1), Theme::accent);
    EXPECT_EQ(groundOf(0), Theme::field);
    bar.setSelectedTag(10);
    EXPECT_EQ(groundOf(0), Theme::accent);
    EXPECT_EQ(groundOf(1), Theme::field);
}

TEST_F(SegmentBarTest, aClickSelectsAndSends)
{
    click(2);
    EXPECT_EQ(bar.selectedTag(), 30);
    ASSERT_EQ(changes.size(), 1);
    EXPECT_EQ(changes.first().first().toInt(), 30);
}

TEST_F(SegmentBarTest, aClickOnTheSelectedItemSendsNothing)
{
    click(1);
    EXPECT_EQ(changes.size(), 0);
}

TEST_F(SegmentBarTest, whatTheProgramSetsIsNotSent)
{
    bar.setSelectedTag(30);
    EXPECT_EQ(changes.size(), 0);
    EXPECT_EQ(bar.selectedIndex(), 2);
}

TEST_F(SegmentBarTest, aPressThatIsLetGoElsewhereSelectsNothing)
{
    QTest::mousePress(&bar, Qt::LeftButton, {}, bar.itemRect(0).center());
    QTest::mouseRelease(&bar, Qt::LeftButton, {}, bar.itemRect(2).center());
    EXPECT_EQ(bar.selectedTag(), 20);
    QTest::mouseClick(&bar, Qt::RightButton, {}, bar.itemRect(0).center());
    EXPECT_EQ(bar.selectedTag(), 20);
}

TEST_F(SegmentBarTest, theItemUnderThePointerIsHoveredAndLighter)
{
    EXPECT_EQ(bar.hovered(), -1);
    QTest::mouseMove(&bar, bar.itemRect(0).center());
    EXPECT_EQ(bar.hovered(), 10);
    EXPECT_EQ(groundOf(0), Theme::raisedHover);
    QTest::mouseMove(&bar, bar.itemRect(2).center());
    EXPECT_EQ(bar.hovered(), 30);
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&bar, &leave);
    EXPECT_EQ(bar.hovered(), -1);
}

TEST_F(SegmentBarTest, arrowsHomeAndEndChoose)
{
    ASSERT_TRUE(showActive(bar));
    bar.setFocus();
    QTest::keyClick(&bar, Qt::Key_Right);
    EXPECT_EQ(bar.selectedTag(), 30);
    QTest::keyClick(&bar, Qt::Key_Right);
    EXPECT_EQ(bar.selectedTag(), 30);
    QTest::keyClick(&bar, Qt::Key_Left);
    EXPECT_EQ(bar.selectedTag(), 20);
    QTest::keyClick(&bar, Qt::Key_Home);
    EXPECT_EQ(bar.selectedTag(), 10);
    QTest::keyClick(&bar, Qt::Key_Left);
    EXPECT_EQ(bar.selectedTag(), 10);
    QTest::keyClick(&bar, Qt::Key_End);
    EXPECT_EQ(bar.selectedTag(), 30);
    EXPECT_EQ(changes.size(), 4);
}

TEST_F(SegmentBarTest, arrowsPointTheWayTheyShowInALayoutFromRightToLeft)
{
    bar.setLayoutDirection(Qt::RightToLeft);
    EXPECT_GT(bar.itemRect(0).left(), bar.itemRect(2).left());
    QTest::keyClick(&bar, Qt::Key_Left);
    EXPECT_EQ(bar.selectedTag(), 30);
    QTest::keyClick(&bar, Qt::Key_Right);
    EXPECT_EQ(bar.selectedTag(), 20);
}

TEST_F(SegmentBarTest, otherKeysAreLeftToOthers)
{
    QWidget parent;
    bar.setParent(&parent);
    QKeyEvent event(QEvent::KeyPress, Qt::Key_F2, Qt::NoModifier);
    QCoreApplication::sendEvent(&bar, &event);
    EXPECT_FALSE(event.isAccepted());
    bar.setParent(nullptr);
}

TEST_F(SegmentBarTest, itemsFillTheBarSideBySide)
{
    EXPECT_EQ(bar.itemRect(0).right() + 1, bar.itemRect(1).left());
    EXPECT_EQ(bar.itemRect(1).right() + 1, bar.itemRect(2).left());
    EXPECT_EQ(bar.itemRect(2).right() + bar.itemRect(0).left(), bar.width() - 1);
    EXPECT_NEAR(bar.itemRect(0).width(), bar.itemRect(2).width(), 1);
}

TEST_F(SegmentBarTest, aLongTitleGetsMoreRoomThanAShortOne)
{
    bar.setItems({{u"A"_s, 1}, {u"Lauter und leiser gemacht"_s, 2}, {u"B"_s, 3}});
    bar.resize(bar.sizeHint());
    EXPECT_GT(bar.itemRect(1).width(), 3 * bar.itemRect(0).width());
    EXPECT_LE(bar.fontMetrics().horizontalAdvance(u"Lauter und leiser gemacht"_s), bar.itemRect(1).width());
}

TEST_F(SegmentBarTest, titlesThatDoNotFitStayInTheirItems)
{
    const QString title(40, u'M');
    bar.setItems({{title, 1}, {title, 2}, {title, 3}});
    bar.setSelectedTag(SegmentBar::none);
    const QImage picture = pictureOf(bar);
    for (const int index : {1, 2}) {
        const QRect border(bar.itemRect(index).left() - 2, 6, 4, bar.height() - 12);
        EXPECT_EQ(countOf(picture.copy(border), Theme::field, 0), border.width() * border.height());
    }
}

TEST_F(SegmentBarTest, aTagThatNoItemHasSelectsNone)
{
    bar.setSelectedTag(99);
    EXPECT_EQ(bar.selectedIndex(), -1);
    EXPECT_EQ(countOf(pictureOf(bar), Theme::accent), 0);
    QTest::keyClick(&bar, Qt::Key_Right);
    EXPECT_EQ(bar.selectedTag(), 10);
}

TEST_F(SegmentBarTest, anEmptyBarBearsEverything)
{
    bar.setItems({});
    pictureOf(bar);
    QTest::mouseMove(&bar, QPoint(20, 10));
    QTest::mouseClick(&bar, Qt::LeftButton, {}, QPoint(20, 10));
    QTest::keyClick(&bar, Qt::Key_Right);
    QTest::keyClick(&bar, Qt::Key_End);
    bar.choose(0);
    EXPECT_EQ(bar.selectedTag(), 20);
    EXPECT_EQ(changes.size(), 0);
}

TEST_F(SegmentBarTest, anItemThatCannotBeChosenIsShownAndPassedOver)
{
    bar.setItems({{u"WAV"_s, 10}, {u"FLAC"_s, 20, false}, {u"MP3"_s, 30}});
    bar.setSelectedTag(10);
    click(1);
    EXPECT_EQ(bar.selectedTag(), 10);
    QTest::mouseMove(&bar, bar.itemRect(1).center());
    EXPECT_EQ(groundOf(1), Theme::field);
    QTest::keyClick(&bar, Qt::Key_Right);
    EXPECT_EQ(bar.selectedTag(), 30);
    QTest::keyClick(&bar, Qt::Key_Left);
    EXPECT_EQ(bar.selectedTag(), 10);
}

TEST_F(SegmentBarTest, noKeyChoosesAnItemThatCannotBeChosenAtTheEnd)
{
    bar.setItems({{u"WAV"_s, 10}, {u"FLAC"_s, 20, false}});
    bar.setSelectedTag(10);
    for (const Qt::Key key : {Qt::Key_Right, Qt::Key_End}) {
        QTest::keyClick(&bar, key);
        EXPECT_EQ(bar.selectedTag(), 10);
    }
    EXPECT_EQ(changes.size(), 0);
}

TEST_F(SegmentBarTest, aDisabledOneIsDimmedAndDeaf)
{
    const qint64 bright = brightnessOf(pictureOf(bar));
    bar.setEnabled(false);
    EXPECT_LT(brightnessOf(pictureOf(bar)), bright);
    EXPECT_EQ(countOf(pictureOf(bar), Theme::accent), 0);
    click(0);
    EXPECT_EQ(bar.selectedTag(), 20);
}

} // namespace
} // namespace orvane::test
