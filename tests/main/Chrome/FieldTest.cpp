#include "main/Chrome/DarkField.h"
#include "main/Chrome/PopUpButton.h"
#include "main/Chrome/Theme.h"
#include "main/Chrome/TickBox.h"
#include "tests/main/Chrome/Picture.h"

#include <QAbstractItemView>
#include <QCoreApplication>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>
#include <memory>

using namespace Qt::StringLiterals;

namespace orvane::test {
namespace {

struct OpenField : DarkField
{
    using DarkField::cursorRect;
};

int leftmostOf(const QImage& picture, const QColor& colour, int tolerance)
{
    for (int x = 2; x < picture.width() - 2; ++x) {
        for (int y = picture.height() / 3; y < picture.height() * 2 / 3; ++y) {
            if (isNear(picture.pixelColor(x, y), colour, tolerance))
                return x;
        }
    }
    return -1;
}

TEST(DarkField, isMadeWithItsPlaceholderBorderAndTwelvePointText)
{
    const std::unique_ptr<DarkField> field(DarkField::make(u"Paste a workspace ID"_s));
    field->resize(200, field->sizeHint().height());
    EXPECT_EQ(field->placeholderText(), u"Paste a workspace ID"_s);
    EXPECT_EQ(field->accessibleName(), u"Paste a workspace ID"_s);
    EXPECT_EQ(field->font().pointSizeF(), Theme::font(12).pointSizeF());
    const QImage picture = pictureOf(*field);
    EXPECT_EQ(picture.pixelColor(100, 0), Theme::cardBorder);
    EXPECT_EQ(picture.pixelColor(195, 10), Theme::field);
    EXPECT_EQ(picture.pixelColor(0, 0), Theme::bg);
    EXPECT_EQ(picture.pixelColor(1, 1), Theme::bg);
}

TEST(DarkField, itsTextStandsStillWhenItTakesFocusAndWhenItIsSelected)
{
    OpenField field;
    field.setPadding({20, 4});
    field.setText(u"llll"_s);
    field.resize(200, field.sizeHint().height());
    const int drawn = leftmostOf(pictureOf(field), Theme::textPrimary, 90);
    field.setCursorPosition(0);
    const QRect caretBefore = field.cursorRect();
    ASSERT_TRUE(showActive(field));
    field.setFocus();
    field.setCursorPosition(0);
    EXPECT_EQ(field.cursorRect(), caretBefore);
    field.selectAll();
    const int selected = leftmostOf(pictureOf(field), Theme::selection, 4);
    EXPECT_GE(drawn, 20);
    EXPECT_GE(selected, 20);
    EXPECT_NEAR(selected, drawn, 2);
}

TEST(DarkField, itsPaddingMovesTheText)
{
    OpenField field;
    field.setText(u"llll"_s);
    field.resize(200, 30);
    field.setPadding({5, 3});
    const int near = leftmostOf(pictureOf(field), Theme::textPrimary, 90);
    field.setPadding({25, 3});
    EXPECT_EQ(leftmostOf(pictureOf(field), Theme::textPrimary, 90), near + 20);
    EXPECT_EQ(field.padding(), QSize(25, 3));
}

TEST(DarkField, itsBorderIsTheAccentWhileItHasTheFocus)
{
    DarkField field;
    field.resize(200, 30);
    ASSERT_TRUE(showActive(field));
    field.setFocus();
    EXPECT_EQ(pictureOf(field).pixelColor(100, 0), Theme::accent);
    field.clearFocus();
    EXPECT_EQ(pictureOf(field).pixelColor(100, 0), Theme::cardBorder);
}

TEST(PopUpButton, aSeparatorIsARowThatCannotBeChosen)
{
    PopUpButton button;
    button.addItem(u"All tracks"_s);
    button.addSeparator();
    button.addItem(u"separator"_s);
    EXPECT_EQ(button.count(), 3);
    EXPECT_FALSE(button.isSeparator(0));
    EXPECT_TRUE(button.isSeparator(1));
    EXPECT_FALSE(button.isSeparator(2));
    EXPECT_FALSE(button.isSeparator(3));
    ASSERT_TRUE(showActive(button));
    button.setFocus();
    QTest::keyClick(&button, Qt::Key_Down);
    EXPECT_EQ(button.currentIndex(), 2);
}

TEST(PopUpButton, aLongNameWidensTheListAndNotTheButton)
{
    PopUpButton button;
    const int before = button.sizeHint().width();
    button.addItem(QString(200, u'm'));
    EXPECT_EQ(button.sizeHint().width(), before);
    button.resize(150, 30);
    button.show();
    button.showPopup();
    EXPECT_GT(button.view()->width(), 300);
    button.hidePopup();
}

TEST(PopUpButton, aLongNameIsCutBeforeTheMark)
{
    PopUpButton button;
    button.resize(150, 30);
    button.addItem(u""_s);
    const QImage empty = pictureOf(button);
    button.setItemText(0, QString(200, u'm'));
    const QImage full = pictureOf(button);
    const QRect trailing(150 - 28, 0, 28, 30);
    EXPECT_EQ(full.copy(trailing), empty.copy(trailing));
    EXPECT_NE(full, empty);
}

TEST(PopUpButton, theWheelChoosesOnlyWithTheFocus)
{
    QWidget window;
    auto* button = new PopUpButton(&window);
    button->addItems({u"one"_s, u"two"_s, u"three"_s});
    ASSERT_TRUE(showActive(window));
    const auto wheel = [button] {
        QWheelEvent event(QPointF(5, 5), button->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(button, &event);
        return event.isAccepted();
    };
    button->clearFocus();
    EXPECT_FALSE(wheel());
    EXPECT_EQ(button->currentIndex(), 0);
    button->setFocus();
    EXPECT_TRUE(wheel());
    EXPECT_EQ(button->currentIndex(), 1);
}

TEST(TickBox, wrapsWhatDoesNotFitAndIsHigherByIt)
{
    TickBox box(u"Die Originaldatei behalten und das Ergebnis danebenlegen"_s);
    const int natural = box.sizeHint().width();
    EXPECT_EQ(box.heightForWidth(natural), box.sizeHint().height());
    EXPECT_GT(box.heightForWidth(natural / 2), box.sizeHint().height());
    EXPECT_LT(box.minimumSizeHint().width(), natural / 2);
}

TEST(TickBox, canBeClickedOnItsTextAndPressedBySpace)
{
    TickBox box(u"Lyrics (.txt)"_s);
    box.resize(box.sizeHint());
    ASSERT_TRUE(showActive(box));
    QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(box.width() - 4, box.height() / 2));
    EXPECT_TRUE(box.isChecked());
    box.setFocus();
    QTest::keyClick(&box, Qt::Key_Space);
    EXPECT_FALSE(box.isChecked());
}

TEST(TickBox, theBoxIsInTheAccentWhenTickedAndDimmedWhenDisabled)
{
    TickBox box(u"Lyrics"_s);
    box.resize(120, box.sizeHint().height());
    EXPECT_EQ(countOf(pictureOf(box), Theme::accent), 0);
    box.setChecked(true);
    EXPECT_GT(countOf(pictureOf(box), Theme::accent), 100);
    box.setEnabled(false);
    EXPECT_EQ(countOf(pictureOf(box), Theme::accent), 0);
}

TEST(TickBox, theBoxStandsAtTheLeadingEdge)
{
    TickBox box(u"Lyrics"_s);
    box.resize(200, box.sizeHint().height());
    box.setChecked(true);
    const auto accentIn = [&box](const QRect& part) { return countOf(pictureOf(box).copy(part), Theme::accent); };
    const QRect left(0, 0, 30, box.height());
    const QRect right(170, 0, 30, box.height());
    EXPECT_GT(accentIn(left), 0);
    EXPECT_EQ(accentIn(right), 0);
    box.setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(accentIn(left), 0);
    EXPECT_GT(accentIn(right), 0);
}

} // namespace
} // namespace orvane::test
