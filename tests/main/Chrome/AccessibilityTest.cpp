#include "main/Chrome/AccentButton.h"
#include "main/Chrome/Badge.h"
#include "main/Chrome/CardView.h"
#include "main/Chrome/ElidedLabel.h"
#include "main/Chrome/MenuChip.h"
#include "main/Chrome/ProgressLine.h"
#include "main/Chrome/SegmentBar.h"
#include "main/Chrome/StatusPill.h"
#include "main/Chrome/TickBox.h"

#include <QAccessible>
#include <QSignalSpy>

#include <gtest/gtest.h>
#include <memory>

using namespace Qt::StringLiterals;

namespace orvane::test {
namespace {

QAccessibleInterface* readerOf(QObject& object)
{
    return QAccessible::queryAccessibleInterface(&object);
}

TEST(ScreenReader, readsProgressAsAPercentage)
{
    ProgressLine line;
    line.setValue(0.426);
    QAccessibleInterface* reader = readerOf(line);
    EXPECT_EQ(reader->role(), QAccessible::ProgressBar);
    ASSERT_TRUE(reader->valueInterface());
    EXPECT_EQ(reader->valueInterface()->currentValue().toInt(), 43);
    EXPECT_EQ(reader->valueInterface()->maximumValue().toInt(), 100);
    EXPECT_EQ(reader->text(QAccessible::Value), u"43 %"_s);
    EXPECT_TRUE(reader->state().readOnly);
}

struct SegmentReader : testing::Test
{
    SegmentReader()
    {
        bar.setItems({{u"WAV"_s, 10}, {u"FLAC"_s, 20}});
        bar.setSelectedTag(20);
        bar.resize(200, 30);
        bar.show();
        reader = readerOf(bar);
    }

    SegmentBar bar;
    QAccessibleInterface* reader = nullptr;
};

TEST_F(SegmentReader, readsAGroupOfRadioButtons)
{
    EXPECT_EQ(reader->role(), QAccessible::Grouping);
    EXPECT_EQ(reader->text(QAccessible::Value), u"FLAC"_s);
    ASSERT_EQ(reader->childCount(), 2);
    QAccessibleInterface* first = reader->child(0);
    QAccessibleInterface* second = reader->child(1);
    EXPECT_EQ(first->role(), QAccessible::RadioButton);
    EXPECT_EQ(first->text(QAccessible::Name), u"WAV"_s);
    EXPECT_FALSE(first->state().checked);
    EXPECT_TRUE(second->state().checked);
    EXPECT_EQ(first->parent(), reader);
    EXPECT_EQ(reader->indexOfChild(second), 1);
    EXPECT_EQ(reader->child(1), second);
    EXPECT_EQ(reader->child(2), nullptr);
}

TEST_F(SegmentReader, findsAnItemByItsPlaceOnTheScreen)
{
    EXPECT_EQ(reader->child(0)->rect().size(), bar.itemRect(0).size());
    const QPoint place = reader->child(1)->rect().center();
    EXPECT_EQ(reader->childAt(place.x(), place.y()), reader->child(1));
}

TEST_F(SegmentReader, pressesAnItemAsAClickWould)
{
    const QSignalSpy changes(&bar, &SegmentBar::selectionChanged);
    reader->child(0)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(bar.selectedTag(), 10);
    EXPECT_EQ(changes.size(), 1);
    EXPECT_TRUE(reader->child(0)->state().checked);
}

TEST_F(SegmentReader, anItemThatIsGoneIsInvalid)
{
    QAccessibleInterface* second = reader->child(1);
    bar.setItems({{u"WAV"_s, 10}});
    EXPECT_FALSE(second->isValid());
    EXPECT_TRUE(second->state().invalid);
    EXPECT_EQ(second->text(QAccessible::Name), QString());
    EXPECT_EQ(reader->childCount(), 1);
}

TEST(ScreenReader, itemsOutliveTheirBarHarmlessly)
{
    auto bar = std::make_unique<SegmentBar>(QList<SegmentBar::Item>{{u"WAV"_s, 1}});
    QAccessibleInterface* item = readerOf(*bar)->child(0);
    const QAccessible::Id id = QAccessible::uniqueId(item);
    bar.reset();
    EXPECT_EQ(QAccessible::accessibleInterface(id), nullptr);
}

TEST(ScreenReader, readsAChipAsLitAndAMenuChipByItsChoice)
{
    MenuChip chip(u"Genre"_s);
    chip.setItems({{u"Any"_s, 0}, {u"Synthwave"_s, 1}});
    chip.setSelectedTag(1);
    QAccessibleInterface* reader = readerOf(chip);
    EXPECT_EQ(reader->role(), QAccessible::ButtonMenu);
    EXPECT_EQ(reader->text(QAccessible::Name), u"Genre: Synthwave"_s);
    EXPECT_TRUE(reader->state().checked);
    EXPECT_TRUE(reader->state().hasPopup);
    chip.setSelectedTag(0);
    EXPECT_FALSE(reader->state().checked);
    ToggleChip plain(u"Sweep"_s);
    EXPECT_EQ(readerOf(plain)->text(QAccessible::Name), u"Sweep"_s);
}

TEST(ScreenReader, pressesAChip)
{
    ToggleChip chip(u"Sweep"_s);
    const QSignalSpy clicks(&chip, &QAbstractButton::clicked);
    auto* actions = readerOf(chip)->actionInterface();
    EXPECT_TRUE(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
    actions->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(clicks.size(), 1);
}

TEST(ScreenReader, readsWhatIsPaintedAsText)
{
    StatusPill pill;
    pill.setStatus(u"○ Sign in on the left"_s, Qt::white);
    EXPECT_EQ(readerOf(pill)->role(), QAccessible::StaticText);
    EXPECT_EQ(readerOf(pill)->text(QAccessible::Name), u"○ Sign in on the left"_s);
    Badge badge;
    badge.setBadge(u"IDLE"_s, Qt::white);
    EXPECT_EQ(readerOf(badge)->role(), QAccessible::StaticText);
    EXPECT_EQ(readerOf(badge)->text(QAccessible::Name), u"IDLE"_s);
}

TEST(ScreenReader, readsACutPathWhole)
{
    ElidedLabel label(u"/home/someone/Music/Suno"_s);
    label.resize(40, 20);
    EXPECT_EQ(readerOf(label)->text(QAccessible::Name), u"/home/someone/Music/Suno"_s);
}

TEST(ScreenReader, readsACardAsAGroupOfItsTitle)
{
    const std::unique_ptr<CardView> card(CardView::titled(u"SAVE LOCATION"_s, {}));
    EXPECT_EQ(readerOf(*card)->role(), QAccessible::Grouping);
    EXPECT_EQ(readerOf(*card)->text(QAccessible::Name), u"SAVE LOCATION"_s);
}

TEST(ScreenReader, readsButtonsAndTickBoxesAsWhatTheyAre)
{
    AccentButton button(u"Start batch export"_s);
    EXPECT_EQ(readerOf(button)->role(), QAccessible::Button);
    TickBox box(u"Cover art"_s);
    box.setChecked(true);
    EXPECT_EQ(readerOf(box)->role(), QAccessible::CheckBox);
    EXPECT_TRUE(readerOf(box)->state().checked);
    EXPECT_EQ(readerOf(box)->text(QAccessible::Name), u"Cover art"_s);
}

} // namespace
} // namespace orvane::test
