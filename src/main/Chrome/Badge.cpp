#include "main/Chrome/Badge.h"

#include "main/Chrome/Paint.h"
#include "main/Chrome/Theme.h"

#include <QPainter>

namespace orvane {
namespace {

constexpr int besides = Theme::Space::small;
constexpr int above = 3;

} // namespace

Badge::Badge(QWidget* parent)
    : QWidget(parent)
    , colour_(Theme::textSecond)
{
    QFont font = Theme::font(10, QFont::Bold);
    font.setLetterSpacing(QFont::PercentageSpacing, 108);
    setFont(font);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void Badge::setBadge(const QString& text, const QColor& colour)
{
    text_ = text;
    colour_ = colour;
    setAccessibleName(text);
    updateGeometry();
    update();
}

QSize Badge::sizeHint() const
{
    const QSize label = fontMetrics().size(Qt::TextSingleLine, text_);
    return {label.width() + 2 * besides, label.height() + 2 * above};
}

void Badge::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    Paint::box(painter, rect(), height() / 2.0, Paint::mixed(Theme::card, colour_, 0.08),
               Paint::mixed(Theme::card, colour_, 0.45));
    painter.setPen(colour_);
    Paint::text(painter, rect(), Qt::AlignCenter | Qt::TextSingleLine, text_);
}

} // namespace orvane
