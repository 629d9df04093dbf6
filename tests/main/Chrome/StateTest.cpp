#include "main/Chrome/Badge.h"
#include "main/Chrome/ElidedLabel.h"
#include "main/Chrome/ProgressLine.h"
#include "main/Chrome/StatusPill.h"
#include "main/Chrome/Theme.h"
#include "tests/main/Chrome/Picture.h"

#include <QCoreApplication>
#include <QHelpEvent>
#include <QSignalSpy>
#include <QToolTip>

#include <gtest/gtest.h>
#include <limits>

using namespace Qt::StringLiterals;

namespace orvane::test {
namespace {

void hover(QWidget& widget)
{
    QHelpEvent event(QEvent::ToolTip, QPoint(5, 5), widget.mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(&widget, &event);
}

TEST(StatusPill, keepsItsWordsAndDrawsThemInTheirColour)
{
    StatusPill pill;
    pill.setStatus(u"● Signed in — token captured automatically"_s, Theme::ok);
    pill.resize(pill.sizeHint());
    EXPECT_EQ(pill.text(), u"● Signed in — token captured automatically"_s);
    EXPECT_EQ(pill.accessibleName(), pill.text());
    EXPECT_EQ(pill.colour(), Theme::ok);
    EXPECT_GT(countOf(pictureOf(pill), Theme::ok, 40), 60);
    pill.setStatus(pill.text(), Theme::textMuted);
    EXPECT_EQ(countOf(pictureOf(pill), Theme::ok, 40), 0);
}

TEST(StatusPill, theLampIsFilledWhenLitAndARingWhenNot)
{
    StatusPill pill;
    pill.resize(200, 40);
    const auto lampPixels = [&pill](const QString& text) {
        pill.setStatus(text, Theme::ok);
        return countOf(pictureOf(pill).copy(0, 0, 22, 40), Theme::ok, 70);
    };
    const int lit = lampPixels(u"● x"_s);
    const int unlit = lampPixels(u"○ x"_s);
    EXPECT_GT(lit, 30);
    EXPECT_GT(unlit, 0);
    EXPECT_LT(unlit, lit);
}

TEST(StatusPill, wrapsWhatDoesNotFit)
{
    StatusPill pill;
    pill.setStatus(u"○ Sign in on the left; the token is picked up on its own"_s, Theme::textMuted);
    EXPECT_EQ(pill.heightForWidth(pill.sizeHint().width()), pill.sizeHint().height());
    EXPECT_GT(pill.heightForWidth(pill.sizeHint().width() / 2), pill.sizeHint().height());
}

TEST(Badge, isAsWideAsItsWordAndInItsColour)
{
    Badge badge;
    badge.setBadge(u"IDLE"_s, Theme::textMuted);
    const int narrow = badge.sizeHint().width();
    badge.setBadge(u"RUNNING"_s, Theme::accent);
    EXPECT_GT(badge.sizeHint().width(), narrow);
    badge.resize(badge.sizeHint());
    EXPECT_GT(countOf(pictureOf(badge), Theme::accent, 40), 20);
    EXPECT_EQ(badge.text(), u"RUNNING"_s);
    EXPECT_EQ(badge.colour(), Theme::accent);
    EXPECT_EQ(badge.accessibleName(), u"RUNNING"_s);
}

struct ProgressLineTest : testing::Test
{
    ProgressLineTest() { line.resize(200, line.sizeHint().height()); }

    int filled() { return countOf(pictureOf(line).copy(0, line.height() / 2, 200, 1), Theme::accent); }

    ProgressLine line;
};

TEST_F(ProgressLineTest, fillsByItsValue)
{
    EXPECT_EQ(filled(), 0);
    line.setValue(0.5);
    EXPECT_NEAR(filled(), 100, 2);
    line.setValue(1);
    EXPECT_NEAR(filled(), 200, 2);
}

TEST_F(ProgressLineTest, theFirstStepShowsAsADot)
{
    line.setValue(0.001);
    EXPECT_NEAR(filled(), line.height(), 2);
}

TEST_F(ProgressLineTest, holdsItsValueBetweenNothingAndAll)
{
    line.setValue(1.5);
    EXPECT_EQ(line.value(), 1);
    line.setValue(-1);
    EXPECT_EQ(line.value(), 0);
    line.setValue(0.4);
    line.setValue(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(line.value(), 0);
}

TEST_F(ProgressLineTest, fillsFromTheLeadingEdge)
{
    line.setValue(0.25);
    EXPECT_EQ(pictureOf(line).pixelColor(20, 3), Theme::accent);
    line.setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(pictureOf(line).pixelColor(20, 3), Theme::cardBorder);
    EXPECT_EQ(pictureOf(line).pixelColor(180, 3), Theme::accent);
}

TEST_F(ProgressLineTest, tellsOnlyOfChanges)
{
    const QSignalSpy changes(&line, &ProgressLine::valueChanged);
    line.setValue(0.25);
    line.setValue(0.25);
    EXPECT_EQ(changes.size(), 1);
}

const QString path = u"/home/someone/Music/Suno exports/2026/Night drives/Mastered"_s;

TEST(ElidedLabel, showsAllWhereItFits)
{
    ElidedLabel label(path);
    label.resize(label.sizeHint());
    EXPECT_EQ(label.shownText(), path);
}

TEST(ElidedLabel, cutsTheMiddleAndKeepsBothEnds)
{
    ElidedLabel label(path);
    label.resize(label.sizeHint().width() / 2, 20);
    const QString shown = label.shownText();
    EXPECT_LT(shown.size(), path.size());
    EXPECT_TRUE(shown.startsWith(u"/home"));
    EXPECT_TRUE(shown.endsWith(u"stered"));
    EXPECT_LE(label.fontMetrics().horizontalAdvance(shown), label.width());
    EXPECT_EQ(label.text(), path);
}

TEST(ElidedLabel, theToolTipOfACutOneIsWholeAndPlain)
{
    ElidedLabel label(u"/music/<b>bold</b>/and/a/long/way/down"_s);
    label.resize(60, 20);
    label.show();
    hover(label);
    EXPECT_TRUE(QToolTip::text().contains(u"&lt;b&gt;bold"));
    label.resize(label.sizeHint());
    QToolTip::hideText();
    label.setText(u"short"_s);
    label.resize(label.sizeHint());
    hover(label);
    EXPECT_FALSE(QToolTip::text().contains(u"short"));
}

TEST(ElidedLabel, neverWidensItsColumn)
{
    ElidedLabel label(QString(500, u'x'));
    EXPECT_LT(label.minimumSizeHint().width(), 100);
}

TEST(ElidedLabel, aLineBreakInATextDoesNotMakeTwoLines)
{
    ElidedLabel label(u"one\ntwo"_s);
    label.resize(label.sizeHint());
    EXPECT_EQ(label.shownText(), u"one two"_s);
    EXPECT_EQ(label.sizeHint().height(), ElidedLabel(u"one"_s).sizeHint().height());
}

} // namespace
} // namespace orvane::test
