#include "main/Chrome/AccentButton.h"
#include "main/Chrome/Paint.h"
#include "main/Chrome/Theme.h"
#include "tests/main/Chrome/Picture.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace orvane::test {
namespace {

QColor besidesText(AccentButton& button, double height)
{
    const QImage picture = pictureOf(button);
    return picture.pixelColor(picture.width() / 20, int(height * (picture.height() - 1)));
}

struct AccentButtonTest : testing::Test
{
    AccentButtonTest()
    {
        button.resize(300, 40);
        button.setText(u"Go"_s);
    }

    AccentButton button;
};

TEST_F(AccentButtonTest, runsFromTheTopColourToTheAccent)
{
    EXPECT_TRUE(isNear(besidesText(button, 0), Theme::accentTop, 3));
    EXPECT_TRUE(isNear(besidesText(button, 1), Theme::accent, 3));
}

TEST_F(AccentButtonTest, isInTonesOfFailureWhileItIsDanger)
{
    button.setDanger(true);
    EXPECT_TRUE(button.isDanger());
    EXPECT_TRUE(isNear(besidesText(button, 0), Theme::bad, 3));
    EXPECT_EQ(countOf(pictureOf(button), Theme::accent), 0);
    button.setDanger(false);
    EXPECT_TRUE(isNear(besidesText(button, 1), Theme::accent, 3));
}

TEST_F(AccentButtonTest, isDimmedWhenItIsDisabled)
{
    const qint64 bright = brightnessOf(pictureOf(button));
    button.setEnabled(false);
    EXPECT_LT(brightnessOf(pictureOf(button)), bright * 2 / 3);
}

TEST_F(AccentButtonTest, isLighterUnderThePointerAndDarkerWhenHeld)
{
    const qint64 atRest = brightnessOf(pictureOf(button));
    button.setAttribute(Qt::WA_UnderMouse);
    EXPECT_GT(brightnessOf(pictureOf(button)), atRest);
    button.setDown(true);
    EXPECT_LT(brightnessOf(pictureOf(button)), atRest);
}

TEST_F(AccentButtonTest, itsFocusRingShowsForTheKeyboardOnly)
{
    ASSERT_TRUE(showActive(button));
    button.setFocus(Qt::MouseFocusReason);
    EXPECT_EQ(countOf(pictureOf(button), Theme::textPrimary), 0);
    button.setAttribute(Qt::WA_KeyboardFocusChange);
    EXPECT_GT(countOf(pictureOf(button), Theme::textPrimary), button.width());
}

TEST_F(AccentButtonTest, spaceAndClickPressIt)
{
    ASSERT_TRUE(showActive(button));
    const QSignalSpy clicks(&button, &QAbstractButton::clicked);
    button.setFocus();
    QTest::keyClick(&button, Qt::Key_Space);
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(clicks.size(), 2);
}

TEST(PlainButton, standsOnRaisedGroundAndTheDefaultOneOnTheAccent)
{
    QPushButton button(u"Cancel"_s);
    button.resize(200, 32);
    EXPECT_GT(countOf(pictureOf(button), Theme::raised), 1000);
    button.setDefault(true);
    const QImage picture = pictureOf(button);
    EXPECT_TRUE(isNear(picture.pixelColor(20, picture.height() - 1), Theme::accent, 3));
}

TEST(PlainButton, itsLabelIsDarkOnTheAccentAndLightOnRaisedGround)
{
    QPushButton button(u"IIIIIIII"_s);
    button.resize(200, 32);
    EXPECT_GT(countOf(pictureOf(button), Theme::textPrimary, 24), 0);
    button.setDefault(true);
    EXPECT_EQ(countOf(pictureOf(button), Theme::textPrimary, 24), 0);
}

} // namespace
} // namespace orvane::test
