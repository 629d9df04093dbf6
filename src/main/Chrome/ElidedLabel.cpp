#include "main/Chrome/ElidedLabel.h"

#include "main/Chrome/Paint.h"
#include "main/Chrome/Theme.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

namespace orvane {
namespace {

constexpr int leastCharacters = 6;

QString oneLine(QString text)
{
    return text.replace(u'\n', u' ').replace(QChar::LineSeparator, u' ').replace(QChar::ParagraphSeparator, u' ');
}

} // namespace

ElidedLabel::ElidedLabel(const QString& text, QWidget* parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setFont(Theme::font(12));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setText(text);
}

void ElidedLabel::setElideMode(Qt::TextElideMode mode)
{
    elideMode_ = mode;
    update();
}

QString ElidedLabel::shownText() const
{
    return fontMetrics().elidedText(oneLine(text()), elideMode_, contentsRect().width());
}

QSize ElidedLabel::sizeHint() const
{
    const QMargins margins = contentsMargins();
    return fontMetrics().size(Qt::TextSingleLine, oneLine(text())).grownBy(margins);
}

QSize ElidedLabel::minimumSizeHint() const
{
    const QSize natural = sizeHint();
    return {qMin(natural.width(), fontMetrics().averageCharWidth() * leastCharacters), natural.height()};
}

bool ElidedLabel::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip || !toolTip().isEmpty())
        return QLabel::event(event);
    const bool isCut = shownText() != oneLine(text());
    const QString whole = QStringLiteral("<span>%1</span>").arg(text().toHtmlEscaped());
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), isCut ? whole : QString(), this);
    return true;
}

void ElidedLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(palette().color(isEnabled() ? QPalette::Normal : QPalette::Disabled, foregroundRole()));
    const auto placed = QStyle::visualAlignment(layoutDirection(), alignment());
    Paint::text(painter, contentsRect(), int(placed) | Qt::TextSingleLine, shownText());
}

} // namespace orvane
