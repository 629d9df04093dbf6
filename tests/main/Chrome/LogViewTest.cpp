#include "main/Chrome/LogView.h"

#include "main/Chrome/Theme.h"
#include "tests/main/Chrome/Picture.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLocale>
#include <QScrollBar>
#include <QTextBlock>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace orvane::test {
namespace {

const QTime at(14, 3, 9);

struct LogViewTest : testing::Test
{
    LogViewTest()
    {
        view.resize(300, 120);
        view.show();
    }

    void fill(int count)
    {
        QList<LogLine> lines;
        for (int index = 0; index < count; ++index)
            lines.append({at, u"line %1"_s.arg(index), Theme::textSecond});
        view.append(lines);
    }

    QString topLine() { return view.cursorForPosition(QPoint(60, 12)).block().text(); }

    QString messageOf(int line) { return view.lineText(line).section(u"] "_s, 1); }

    LogView view;
};

TEST_F(LogViewTest, aLineIsItsShortLocalTimeInBracketsAndItsMessage)
{
    view.append({at, u"Found 3 tracks."_s, Theme::ok});
    ASSERT_EQ(view.lineCount(), 1);
    EXPECT_EQ(view.lineText(0), u"[%1] Found 3 tracks."_s.arg(QLocale().toString(at, QLocale::ShortFormat)));
}

TEST_F(LogViewTest, eachLineHasItsOwnColour)
{
    view.append({{at, u"bad"_s, Theme::bad}, {at, u"good"_s, Theme::ok}, {at, u"so"_s, Theme::textSecond}});
    EXPECT_EQ(view.lineColour(0), Theme::bad);
    EXPECT_EQ(view.lineColour(1), Theme::ok);
    EXPECT_EQ(view.lineColour(2), Theme::textSecond);
    const QImage picture = pictureOf(view);
    EXPECT_GT(countOf(picture, Theme::bad, 60), 10);
    EXPECT_GT(countOf(picture, Theme::ok, 60), 10);
}

TEST_F(LogViewTest, nothingAppendedChangesNothing)
{
    view.append(QList<LogLine>{});
    EXPECT_EQ(view.lineCount(), 0);
}

TEST_F(LogViewTest, markupStandsAsItIs)
{
    view.append({at, u"<b>bold</b> &amp; <img src='x'>"_s, Theme::bad});
    EXPECT_EQ(messageOf(0), u"<b>bold</b> &amp; <img src='x'>"_s);
}

TEST_F(LogViewTest, aMessageOfSeveralLinesIsOneLineOfTheLog)
{
    view.append({at, u"one\ntwo\u2029three"_s, Theme::bad});
    view.append({at, u"next"_s, Theme::ok});
    EXPECT_EQ(view.lineCount(), 2);
    EXPECT_EQ(messageOf(0), u"one\ntwo\nthree"_s);
    EXPECT_EQ(view.lineColour(1), Theme::ok);
}

TEST_F(LogViewTest, controlCharactersDoNothing)
{
    view.append({at, u"a\u0007b\u0000c\td"_s, Theme::bad});
    EXPECT_EQ(messageOf(0), u"a b c d"_s);
}

TEST_F(LogViewTest, aMessageCannotTurnTheTextAroundIt)
{
    view.append({at, u"gnp.\u202Eevil\u2069\u2066"_s, Theme::bad});
    const QString raw = view.document()->firstBlock().text();
    EXPECT_FALSE(raw.contains(QChar(0x202E)));
    EXPECT_EQ(raw.count(QChar(0x2068)), 1);
    EXPECT_EQ(raw.count(QChar(0x2069)), 1);
    EXPECT_EQ(raw.count(QChar(0x2066)), 0);
    EXPECT_EQ(raw.back(), QChar(0x2069));
    EXPECT_EQ(messageOf(0), u"gnp.evil"_s);
}

TEST_F(LogViewTest, anEndlessMessageIsCut)
{
    view.append({at, QString(10'000'000, u'x'), Theme::bad});
    EXPECT_EQ(messageOf(0).size(), LogView::longestMessage);
    EXPECT_TRUE(messageOf(0).endsWith(u'…'));
}

TEST_F(LogViewTest, aCutNeverSplitsACharacter)
{
    view.append({at, QString(LogView::longestMessage - 2, u'x') + u"😀😀"_s, Theme::bad});
    EXPECT_TRUE(messageOf(0).isValidUtf16());
    EXPECT_TRUE(messageOf(0).endsWith(u"x…"));
}

TEST_F(LogViewTest, followsTheEnd)
{
    fill(100);
    EXPECT_TRUE(view.isAtEnd());
    EXPECT_GT(view.verticalScrollBar()->maximum(), 0);
    fill(1);
    EXPECT_TRUE(view.isAtEnd());
}

TEST_F(LogViewTest, staysWhereTheUserScrolledTo)
{
    fill(100);
    view.verticalScrollBar()->setValue(40);
    const QString top = topLine();
    fill(50);
    EXPECT_EQ(view.verticalScrollBar()->value(), 40);
    EXPECT_EQ(topLine(), top);
    EXPECT_FALSE(view.isAtEnd());
}

TEST_F(LogViewTest, followsAgainOnceTheUserIsBackAtTheEnd)
{
    fill(100);
    view.verticalScrollBar()->setValue(40);
    view.verticalScrollBar()->setValue(view.verticalScrollBar()->maximum());
    fill(50);
    EXPECT_TRUE(view.isAtEnd());
}

TEST_F(LogViewTest, dropsTheOldestLines)
{
    fill(LogView::mostLines);
    fill(30);
    EXPECT_EQ(view.lineCount(), LogView::mostLines);
    EXPECT_EQ(messageOf(0), u"line 30"_s);
    EXPECT_EQ(messageOf(LogView::mostLines - 1), u"line 29"_s);
}

TEST_F(LogViewTest, aBlockLargerThanTheViewKeepsItsEnd)
{
    fill(LogView::mostLines + 10);
    EXPECT_EQ(view.lineCount(), LogView::mostLines);
    EXPECT_EQ(messageOf(0), u"line 10"_s);
}

TEST_F(LogViewTest, whatTheUserReadsStaysInPlaceWhenOlderLinesAreDropped)
{
    fill(LogView::mostLines);
    view.verticalScrollBar()->setValue(5'000);
    const QString top = topLine();
    fill(25);
    EXPECT_EQ(topLine(), top);
}

TEST_F(LogViewTest, theUserSelectsAndCopiesPlainWords)
{
    view.append({{at, u"مطر saved"_s, Theme::ok}, {at, u"two"_s, Theme::ok}});
    view.selectAll();
    view.copy();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), view.lineText(0) + u'\n' + view.lineText(1));
    EXPECT_FALSE(QGuiApplication::clipboard()->text().contains(QChar(0x2068)));
}

TEST_F(LogViewTest, itsLinesCannotBeEdited)
{
    EXPECT_TRUE(view.isReadOnly());
    EXPECT_FALSE(view.isUndoRedoEnabled());
}

TEST_F(LogViewTest, linesStartAtTheRightInALayoutFromRightToLeft)
{
    view.append({at, u"I"_s, Theme::ok});
    const auto isInkedAt = [this](const QRect& part) { return countOf(pictureOf(view).copy(part), Theme::ok, 60) > 0; };
    const QRect left(0, 0, 120, view.height());
    const QRect right(180, 0, 120, view.height());
    EXPECT_TRUE(isInkedAt(left));
    EXPECT_FALSE(isInkedAt(right));
    view.setLayoutDirection(Qt::RightToLeft);
    EXPECT_FALSE(isInkedAt(left));
    EXPECT_TRUE(isInkedAt(right));
}

} // namespace
} // namespace orvane::test
