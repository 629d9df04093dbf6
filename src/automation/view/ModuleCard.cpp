#include "automation/view/ModuleCard.h"

#include "automation/view/StageLook.h"
#include "main/Chrome/Paint.h"
#include "main/Chrome/StyleParts.h"
#include "main/Chrome/TextBlock.h"
#include "main/Chrome/Theme.h"
#include "main/Chrome/TickBox.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleOption>
#include <QToolTip>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int inset = 10;
constexpr int markSide = 20;
constexpr int mostLines = 2;
constexpr double radius = Theme::Radius::control;

QFont nameFont()
{
    return Theme::font(12, QFont::DemiBold);
}

int lineHeight(const QFont& font)
{
    return QFontMetrics(font).height();
}

} // namespace

ModuleCard::ModuleCard(const Module& module, QWidget* parent)
    : QAbstractButton(parent)
    , module_(module)
{
    setObjectName(module.title);
    setFocusPolicy(Qt::ClickFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(this, &QAbstractButton::clicked, this, [this] {
        if (onClick)
            onClick();
    });
    if (module_.isOptional)
        buildToggle();
    changed();
}

void ModuleCard::buildToggle()
{
    toggle_ = new TickBox({}, this);
    toggle_->setObjectName(u"toggle"_s);
    toggle_->setAccessibleName(module_.title);
    toggle_->setChecked(module_.isTicked);
    connect(toggle_, &TickBox::clicked, this, [this](bool isTicked) {
        setTicked(isTicked);
        if (onToggle)
            onToggle(isTicked);
    });
}

void ModuleCard::setState(const StageState& state)
{
    module_.state = state;
    changed();
}

void ModuleCard::setSummary(const QString& summary)
{
    module_.summary = summary;
    changed();
}

void ModuleCard::setTicked(bool isTicked)
{
    module_.isTicked = isTicked;
    if (toggle_)
        toggle_->setChecked(isTicked);
    changed();
}

void ModuleCard::setSelected(bool isSelected)
{
    isSelected_ = isSelected;
    setFocusPolicy(isSelected ? Qt::StrongFocus : Qt::ClickFocus);
    update();
}

QString ModuleCard::status() const
{
    return StageLook::noteOf(module_.state);
}

void ModuleCard::changed()
{
    setAccessibleName(u"%1. %2"_s.arg(indexOf(module_.stage) + 1).arg(module_.title));
    setAccessibleDescription(module_.summary + u" — "_s + status());
    update();
}

QSize ModuleCard::sizeHint() const
{
    const int line = lineHeight(nameFont());
    const int texts = mostLines * (line + lineHeight(Theme::small())) + lineHeight(Theme::small());
    return {9 * line, 2 * inset + markSide + texts + 2 * Theme::Space::tight + Theme::Space::small};
}

QRect ModuleCard::room() const
{
    return rect().adjusted(inset, inset, -inset, -inset);
}

bool ModuleCard::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QAbstractButton::event(event);
    const QString whole = u"%1\n%2\n%3"_s.arg(module_.title, module_.summary, status());
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), whole.toHtmlEscaped().replace(u'\n', u"<br>"_s),
                       this);
    return true;
}

void ModuleCard::resizeEvent(QResizeEvent* event)
{
    QAbstractButton::resizeEvent(event);
    placeToggle();
}

void ModuleCard::placeToggle()
{
    if (!toggle_)
        return;
    const QSize size = toggle_->sizeHint();
    const QRect corner(room().right() + 1 - size.width() + Theme::Space::small, inset + (markSide - size.height()) / 2,
                       size.width(), size.height());
    toggle_->setGeometry(QStyle::visualRect(layoutDirection(), rect(), corner));
}

void ModuleCard::keyPressEvent(QKeyEvent* event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn)
        click();
    else if (event->key() == Qt::Key_Space)
        QAbstractButton::keyPressEvent(event);
    else
        event->ignore();
}

void ModuleCard::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    drawGround(painter);
    const QRect mark(room().topLeft(), QSize(markSide, markSide));
    StageLook::drawMark(painter, QStyle::visualRect(layoutDirection(), rect(), mark), module_.state.kind,
                        QString::number(indexOf(module_.stage) + 1));
    drawTexts(painter);
    QStyleOption option;
    option.initFrom(this);
    if (StyleParts::showsFocusRing(option))
        Paint::focusRing(painter, rect(), radius, Theme::textPrimary);
}

void ModuleCard::drawGround(QPainter& painter) const
{
    const QColor rest = isSelected_ ? Theme::raised : Theme::field;
    const QColor stroke = isSelected_ ? Theme::accent : Theme::controlBorder;
    Paint::box(painter, rect(), radius, underMouse() ? Theme::raisedHover : rest, stroke, isSelected_ ? 1.5 : 1);
}

void ModuleCard::drawTexts(QPainter& painter) const
{
    QRectF rest = room().adjusted(0, markSide + Theme::Space::tight, 0, 0);
    const auto draw = [&](const QString& text, const QFont& font, const QColor& colour) {
        const TextBlock whole{.text = text, .font = font, .direction = layoutDirection()};
        const TextBlock block = whole.held(static_cast<int>(rest.width()), mostLines);
        block.draw(painter, rest, colour);
        rest.setTop(rest.top() + block.size(static_cast<int>(rest.width())).height() + Theme::Space::tight);
    };
    draw(module_.title, nameFont(), module_.isTicked ? Theme::textPrimary : Theme::textSecond);
    // No line ends in the middle of a figure or of a format's name.
    draw(QString(module_.summary).replace(u'-', QChar(0x2011)), Theme::small(), Theme::textSecond);

    const QFont small = Theme::small();
    const QRect line(room().left(), room().bottom() + 1 - lineHeight(small), room().width(), lineHeight(small));
    const TextBlock said{.text = status(), .font = small, .direction = layoutDirection()};
    said.held(line.width(), 1).draw(painter, line, StageLook::colourOf(module_.state.kind));
}

} // namespace orvane
