#include "main/Chrome/StatusPill.h"

#include "main/Chrome/Paint.h"
#include "main/Chrome/TextBlock.h"
#include "main/Chrome/Theme.h"

#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace orvane {
namespace {

constexpr int inset = 10;
constexpr int lampSide = 8;
constexpr int gap = Theme::Space::small;
constexpr int leastTextWidth = 64;
constexpr QChar lit(0x25CF);
constexpr QChar unlit(0x25CB);

bool hasLamp(const QString& text)
{
    return text.startsWith(lit) || text.startsWith(unlit);
}

TextBlock wordsOf(const StatusPill& pill)
{
    const QString words = hasLamp(pill.text()) ? pill.text().mid(1).trimmed() : pill.text();
    return {.text = words, .font = pill.font(), .direction = pill.layoutDirection()};
}

int besidesText(const StatusPill& pill)
{
    return 2 * inset + (hasLamp(pill.text()) ? lampSide + gap : 0);
}

int heightFor(const QSize& text)
{
    return text.height() + 2 * Theme::Space::small - 2;
}

void drawLamp(QPainter& painter, const QRect& rect, bool isLit, const QColor& colour)
{
    if (isLit) {
        Paint::box(painter, QRectF(rect).adjusted(-3, -3, 3, 3), lampSide, Paint::mixed(Theme::card, colour, 0.25));
        Paint::box(painter, rect, lampSide / 2.0, colour);
    } else {
        Paint::box(painter, rect, lampSide / 2.0, {}, colour, 1.5);
    }
}

} // namespace

StatusPill::StatusPill(QWidget* parent)
    : QWidget(parent)
    , colour_(Theme::textSecond)
{
    setFont(Theme::font(12));
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void StatusPill::setStatus(const QString& text, const QColor& colour)
{
    text_ = text;
    colour_ = colour;
    setAccessibleName(text);
    updateGeometry();
    update();
}

QSize StatusPill::sizeHint() const
{
    const QSize text = wordsOf(*this).natural();
    return {text.width() + besidesText(*this), heightFor(text)};
}

QSize StatusPill::minimumSizeHint() const
{
    const QSize natural = sizeHint();
    return {std::min(natural.width(), besidesText(*this) + leastTextWidth), natural.height()};
}

int StatusPill::heightForWidth(int width) const
{
    return heightFor(wordsOf(*this).size(width - besidesText(*this)));
}

void StatusPill::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QRect pill(0, 0, width(), std::min(height(), heightForWidth(width())));
    Paint::box(painter, pill, Theme::Radius::control, Theme::field, Theme::cardBorder);
    const QRect content = pill.adjusted(inset, Theme::Space::small - 1, -inset, 0);
    QRect words = content;
    if (hasLamp(text_)) {
        const int top = content.top() + (fontMetrics().height() - lampSide + 1) / 2;
        const QRect lamp(content.left(), top, lampSide, lampSide);
        drawLamp(painter, QStyle::visualRect(layoutDirection(), content, lamp), text_.startsWith(lit), colour_);
        words = QStyle::visualRect(layoutDirection(), content, content.adjusted(lampSide + gap, 0, 0, 0));
    }
    wordsOf(*this).draw(painter, words, colour_);
}

} // namespace orvane
