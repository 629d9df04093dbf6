#include "main/Chrome/AccentButton.h"

#include "main/Chrome/Paint.h"
#include "main/Chrome/StyleParts.h"
#include "main/Chrome/Theme.h"

#include <QPainter>
#include <QStyleOptionButton>

namespace orvane {
namespace {

constexpr int leastHeight = 36;
constexpr int labelInset = Theme::Space::large;

} // namespace

AccentButton::AccentButton(const QString& text, QWidget* parent)
    : QPushButton(text, parent)
{
    setFont(Theme::font(13, QFont::DemiBold));
    setAttribute(Qt::WA_Hover);
    setCursor(Qt::PointingHandCursor);
}

void AccentButton::setDanger(bool isDanger)
{
    isDanger_ = isDanger;
    update();
}

QSize AccentButton::sizeHint() const
{
    const QSize label = fontMetrics().size(Qt::TextShowMnemonic, text());
    return {label.width() + 2 * labelInset, qMax(leastHeight, label.height() + 2 * Theme::Space::small)};
}

QSize AccentButton::minimumSizeHint() const
{
    return sizeHint();
}

void AccentButton::paintEvent(QPaintEvent*)
{
    QStyleOptionButton option;
    initStyleOption(&option);
    QPainter painter(this);
    StyleParts::accentButton(painter, option, isDanger_);
    const QRect label = rect().adjusted(Theme::Space::small, 0, -Theme::Space::small, 0);
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, label.width(), Qt::TextShowMnemonic);
    painter.setPen(StyleParts::labelColour(option, true));
    Paint::text(painter, label, Qt::AlignCenter | Qt::TextShowMnemonic, shown);
}

} // namespace orvane
