#include "main/Chrome/CardView.h"

#include "main/Chrome/Paint.h"

#include <QGuiApplication>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

namespace orvane {
namespace {

constexpr QChar mayBreakHere(0x200B);
constexpr int longestPiece = 12;

QLabel* plainLabel(const QString& text, const QFont& font, QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    label->setFont(font);
    label->setWordWrap(true);
    label->setAlignment(leadingEdge());
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, Theme::textSecond);
    label->setPalette(palette);
    return label;
}

} // namespace

Qt::Alignment leadingEdge()
{
    const bool isMirrored = QGuiApplication::isRightToLeft();
    return Qt::AlignAbsolute | Qt::AlignVCenter | (isMirrored ? Qt::AlignRight : Qt::AlignLeft);
}

Qt::Alignment trailingEdge()
{
    const bool isMirrored = QGuiApplication::isRightToLeft();
    return Qt::AlignAbsolute | Qt::AlignVCenter | (isMirrored ? Qt::AlignLeft : Qt::AlignRight);
}

QString breakable(const QString& text)
{
    QString broken;
    int sinceBreak = 0;
    for (const QChar character : text) {
        sinceBreak = character.isSpace() ? 0 : sinceBreak + 1;
        if (sinceBreak > longestPiece && !character.isLowSurrogate() && !character.isMark()) {
            broken += mayBreakHere;
            sinceBreak = 1;
        }
        broken += character;
    }
    return broken;
}

QLabel* makeHeading(const QString& text, QWidget* parent)
{
    return plainLabel(text, Theme::heading(), parent);
}

QLabel* makeNote(const QString& text, QWidget* parent)
{
    return plainLabel(text, Theme::small(), parent);
}

CardView::CardView(QWidget* parent)
    : QWidget(parent)
{
}

CardView* CardView::titled(const QString& title, std::initializer_list<QWidget*> content, QWidget* parent)
{
    auto* card = new CardView(parent);
    card->setAccessibleName(title);
    auto* column = new QVBoxLayout(card);
    column->setContentsMargins(Theme::Space::large, Theme::Space::medium, Theme::Space::large, Theme::Space::large);
    column->setSpacing(Theme::Space::small);
    column->addWidget(makeHeading(title, card));
    for (QWidget* view : content)
        column->addWidget(view);
    return card;
}

CardView* CardView::plain(QWidget* view, int inset, QWidget* parent)
{
    auto* card = new CardView(parent);
    auto* column = new QVBoxLayout(card);
    column->setContentsMargins(inset, inset, inset, inset);
    column->addWidget(view);
    return card;
}

void CardView::setFill(const QColor& fill)
{
    fill_ = fill;
    update();
}

void CardView::setStroke(const QColor& stroke)
{
    stroke_ = stroke;
    update();
}

void CardView::setRadius(double radius)
{
    radius_ = radius;
    update();
}

void CardView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    Paint::box(painter, rect(), radius_, fill_, stroke_);
}

} // namespace orvane
