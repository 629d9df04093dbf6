#include "main/Chrome/Theme.h"

#include "main/Chrome/Paint.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QPalette>
#include <QStyle>
#include <QToolTip>

#include <gtest/gtest.h>

namespace orvane {
namespace {

constexpr double readable = 4.5;

struct Pair
{
    QColor text;
    QColor ground;
};

TEST(Theme, itsColoursAreTheBrands)
{
    EXPECT_EQ(Theme::bg, QColor(u"#08090E"));
    EXPECT_EQ(Theme::card, QColor(u"#11141E"));
    EXPECT_EQ(Theme::cardBorder, QColor(u"#1D2334"));
    EXPECT_EQ(Theme::accent, QColor(u"#F26622"));
    EXPECT_EQ(Theme::accentTop, QColor(u"#FF7A18"));
    EXPECT_EQ(Theme::accentEnd, QColor(u"#AF002D"));
    EXPECT_EQ(Theme::textPrimary, QColor(u"#F3F4F6"));
    EXPECT_EQ(Theme::textSecond, QColor(u"#9CA3AF"));
    EXPECT_EQ(Theme::textMuted, QColor(u"#6B7280"));
    EXPECT_EQ(Theme::ok, QColor(u"#34D399"));
    EXPECT_EQ(Theme::bad, QColor(u"#FCA5A5"));
}

TEST(Theme, everyTextCanBeReadOnItsGround)
{
    const Pair pairs[] = {
        {Theme::textPrimary, Theme::bg},
        {Theme::textPrimary, Theme::card},
        {Theme::textPrimary, Theme::field},
        {Theme::textPrimary, Theme::raised},
        {Theme::textPrimary, Theme::selection},
        {Theme::textPrimary, Theme::raisedHover},
        {Theme::textSecond, Theme::bg},
        {Theme::textSecond, Theme::card},
        {Theme::textSecond, Theme::field},
        {Theme::textSecond, Theme::raised},
        {Theme::textHint, Theme::field},
        {Theme::ok, Theme::field},
        {Theme::bad, Theme::field},
        {Theme::onAccent, Theme::accent},
        {Theme::onAccent, Theme::accentTop},
        {Theme::onAccent, Theme::bad},
        {Theme::accent, Theme::card},
        {Theme::accentTop, Paint::mixed(Theme::card, Theme::accent, 0.26)},
    };
    for (const Pair& pair : pairs) {
        EXPECT_GE(Paint::contrast(pair.text, pair.ground), readable)
            << qPrintable(pair.text.name()) << " on " << qPrintable(pair.ground.name());
    }
}

TEST(Theme, mutedTextIsAsReadableAsLargeTextMustBe)
{
    EXPECT_GE(Paint::contrast(Theme::textMuted, Theme::field), 3.0);
    EXPECT_GE(Paint::contrast(Theme::textMuted, Theme::card), 3.0);
}

TEST(Theme, contrastIsOneForTheSameColourAndTwentyOneForBlackOnWhite)
{
    EXPECT_NEAR(Paint::contrast(Theme::accent, Theme::accent), 1, 1e-9);
    EXPECT_NEAR(Paint::contrast(Qt::black, Qt::white), 21, 1e-6);
    EXPECT_NEAR(Paint::contrast(Qt::white, Qt::black), 21, 1e-6);
    EXPECT_NEAR(Paint::contrast(QColor(0x77, 0x77, 0x77), Qt::white), 4.48, 0.005);
}

TEST(Theme, monoIsMonospacedAndRegularAtItsSize)
{
    const QFont font = Theme::mono(12);
    EXPECT_EQ(font.weight(), QFont::Normal);
    EXPECT_EQ(font.family(), QFontDatabase::systemFont(QFontDatabase::FixedFont).family());
    EXPECT_TRUE(QFontInfo(font).fixedPitch());
    EXPECT_NEAR(Theme::mono(24).pointSizeF(), 2 * font.pointSizeF(), 1e-9);
    EXPECT_NEAR(Theme::mono(12).pointSizeF(), Theme::font(12).pointSizeF(), 1e-9);
}

TEST(Theme, aPointIsNoSmallerThanAPointOfTheWindow)
{
    const double pixelsPerInch = 96;
    EXPECT_GE(Theme::font(12).pointSizeF() * pixelsPerInch / 72, 12 - 1e-9);
}

TEST(Theme, textStylesGrowFromNotesToBodyAndHeadingsAreSpaced)
{
    EXPECT_LT(Theme::small().pointSizeF(), Theme::body().pointSizeF());
    EXPECT_GT(Theme::heading().letterSpacing(), 100);
    EXPECT_GT(Theme::heading().weight(), QFont::Normal);
}

TEST(Theme, theApplicationIsDarkWhateverTheSystemSays)
{
    const QPalette palette = QApplication::palette();
    EXPECT_EQ(palette.color(QPalette::Window), Theme::bg);
    EXPECT_EQ(palette.color(QPalette::WindowText), Theme::textPrimary);
    EXPECT_EQ(palette.color(QPalette::Base), Theme::field);
    EXPECT_EQ(palette.color(QPalette::Highlight), Theme::selection);
    EXPECT_EQ(palette.color(QPalette::Disabled, QPalette::Text), Theme::textDisabled);
    EXPECT_EQ(QToolTip::palette().color(QPalette::ToolTipText), Theme::textPrimary);
    EXPECT_EQ(QApplication::font().pointSizeF(), Theme::body().pointSizeF());
    EXPECT_TRUE(QApplication::style()->inherits("orvane::ChromeStyle"));
}

} // namespace
} // namespace orvane
