#include "main/Chrome/CardView.h"

#include "main/Chrome/Hairline.h"
#include "tests/main/Chrome/Picture.h"

#include <QLabel>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace orvane::test {
namespace {

TEST(CardView, isFilledOutlinedAndRounded)
{
    CardView card;
    card.resize(100, 60);
    const QImage picture = pictureOf(card);
    EXPECT_EQ(picture.pixelColor(50, 30), Theme::card);
    EXPECT_EQ(picture.pixelColor(50, 0), Theme::cardBorder);
    EXPECT_EQ(picture.pixelColor(0, 30), Theme::cardBorder);
    EXPECT_EQ(picture.pixelColor(0, 0), Theme::bg);
}

TEST(CardView, itsOutlineIsOneWholePixelAtWholeScales)
{
    CardView card;
    card.resize(100, 60);
    const QImage doubled = pictureOf(card, 2);
    EXPECT_EQ(doubled.pixelColor(100, 0), Theme::cardBorder);
    EXPECT_EQ(doubled.pixelColor(100, 1), Theme::cardBorder);
    EXPECT_EQ(doubled.pixelColor(100, 2), Theme::card);
}

TEST(CardView, takesOtherColoursAndCorners)
{
    CardView card;
    card.resize(100, 60);
    card.setFill(Theme::raised);
    card.setStroke(Theme::accent);
    card.setRadius(0);
    const QImage picture = pictureOf(card);
    EXPECT_EQ(picture.pixelColor(50, 30), Theme::raised);
    EXPECT_EQ(picture.pixelColor(0, 0), Theme::accent);
    EXPECT_EQ(card.fill(), Theme::raised);
    EXPECT_EQ(card.stroke(), Theme::accent);
    EXPECT_EQ(card.radius(), 0);
}

TEST(CardView, aTitledOneShowsItsHeadingAboveItsContentInOrder)
{
    auto* first = new QLabel(u"first"_s);
    auto* second = new QLabel(u"second"_s);
    const std::unique_ptr<CardView> card(CardView::titled(u"SAVE LOCATION"_s, {first, second}));
    card->resize(card->sizeHint());
    card->show();
    const auto* heading = card->findChild<QLabel*>();
    ASSERT_TRUE(heading);
    EXPECT_EQ(heading->text(), u"SAVE LOCATION"_s);
    EXPECT_EQ(card->accessibleName(), u"SAVE LOCATION"_s);
    EXPECT_LT(heading->geometry().bottom(), first->geometry().top());
    EXPECT_LT(first->geometry().bottom(), second->geometry().top());
}

TEST(CardView, aPlainOneKeepsItsInsetOnAllSides)
{
    auto* view = new QWidget;
    const std::unique_ptr<CardView> card(CardView::plain(view, 9));
    card->resize(100, 60);
    card->show();
    EXPECT_EQ(view->geometry(), QRect(9, 9, 82, 42));
}

TEST(CardView, headingsAndNotesShowMarkupAsItStands)
{
    const std::unique_ptr<QLabel> heading(makeHeading(u"<b>A</b>"_s));
    const std::unique_ptr<QLabel> note(makeNote(u"<b>A</b>"_s));
    EXPECT_EQ(heading->textFormat(), Qt::PlainText);
    EXPECT_EQ(note->textFormat(), Qt::PlainText);
    EXPECT_TRUE(note->wordWrap());
}

TEST(Hairline, isOnePointOfTheOutlinesColour)
{
    Hairline line;
    line.resize(40, line.sizeHint().height());
    EXPECT_EQ(line.height(), 1);
    EXPECT_EQ(countOf(pictureOf(line), Theme::cardBorder, 0), 40);
    EXPECT_EQ(countOf(pictureOf(line, 2), Theme::cardBorder, 0), 160);
    Hairline standing(Qt::Vertical);
    standing.resize(standing.sizeHint().width(), 40);
    EXPECT_EQ(standing.width(), 1);
}

TEST(CardView, onlyLongWordsGetPlacesToBreak)
{
    const QString plain = u"stopped 3 of 12, no session yet"_s;
    EXPECT_EQ(breakable(plain), plain);
    const QString path = u"no tracks in "_s + QString(40, u'w');
    QString whole = breakable(path);
    for (const QString& piece : whole.split(QChar(0x200B)))
        EXPECT_LE(piece.section(u' ', -1).size(), 12);
    EXPECT_EQ(whole.remove(QChar(0x200B)), path);
}

TEST(CardView, noCharacterIsBrokenInTwo)
{
    const QString faces = QString(u"\U0001F600"_s).repeated(20);
    for (const QString& piece : breakable(faces).split(QChar(0x200B)))
        EXPECT_TRUE(piece.isValidUtf16());
}

} // namespace
} // namespace orvane::test
