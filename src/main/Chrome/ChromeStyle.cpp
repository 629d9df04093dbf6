#include "main/Chrome/ChromeStyle.h"

#include "main/Chrome/Paint.h"
#include "main/Chrome/StyleParts.h"
#include "main/Chrome/Theme.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPainter>
#include <QScrollBar>
#include <QStyleFactory>
#include <QStyleOption>

#include <algorithm>

namespace orvane {
namespace {

constexpr int indicatorSide = 16;
constexpr int scrollBarBreadth = 12;
constexpr int buttonHeight = 30;
constexpr int rowHeight = 26;
constexpr int separatorHeight = 9;
constexpr int comboTextInset = 9;
constexpr int comboMarkWidth = 28;
constexpr QMargins fieldPadding{6, 0, 6, 0};

bool isDefault(const QStyleOption* option)
{
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    return button && button->features.testFlag(QStyleOptionButton::DefaultButton);
}

bool isFlat(const QStyleOption* option)
{
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    return button && button->features.testFlag(QStyleOptionButton::Flat) &&
           !option->state.testFlag(QStyle::State_MouseOver) && !StyleParts::showsFocusRing(*option);
}

// The frame is filled as one rounded box, which a square ground of the viewport would cover.
bool hasRoundedFrame(const QWidget* widget)
{
    const auto* area = qobject_cast<const QAbstractScrollArea*>(widget);
    return area && area->frameShape() == QFrame::StyledPanel;
}

bool isSeparator(const QStyleOption* option)
{
    const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    return item && item->menuItemType == QStyleOptionMenuItem::Separator && item->text.isEmpty();
}

void drawBevel(QPainter& painter, const QStyleOption& option)
{
    if (isDefault(&option))
        StyleParts::accentButton(painter, option, false);
    else if (!isFlat(&option))
        StyleParts::plainButton(painter, option);
}

} // namespace

ChromeStyle::ChromeStyle()
    : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion")))
{
}

void ChromeStyle::polish(QWidget* widget)
{
    QProxyStyle::polish(widget);
    if (qobject_cast<QAbstractButton*>(widget) || qobject_cast<QComboBox*>(widget) || qobject_cast<QScrollBar*>(widget))
        widget->setAttribute(Qt::WA_Hover);
    if (const auto* area = qobject_cast<QAbstractScrollArea*>(widget); hasRoundedFrame(area))
        area->viewport()->setAutoFillBackground(false);
    if (auto* line = qobject_cast<QLineEdit*>(widget); line && line->hasFrame() && line->textMargins().isNull())
        line->setTextMargins(fieldPadding);
}

void ChromeStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                const QWidget* widget) const
{
    switch (element) {
    case PE_PanelLineEdit: {
        const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
        if (frame && frame->lineWidth > 0)
            StyleParts::field(*painter, *option);
        return;
    }
    case PE_FrameLineEdit:
        return;
    case PE_IndicatorCheckBox:
    case PE_IndicatorItemViewItemCheck:
        return StyleParts::checkIndicator(*painter, *option);
    case PE_IndicatorRadioButton:
        return StyleParts::radioIndicator(*painter, *option);
    case PE_PanelButtonCommand:
        return drawBevel(*painter, *option);
    case PE_PanelTipLabel:
        return Paint::box(*painter, option->rect, 0, Theme::raised, Theme::controlBorder);
    case PE_PanelMenu:
    case PE_FrameMenu:
        return StyleParts::popUpFrame(*painter, *option);
    case PE_IndicatorArrowUp:
    case PE_IndicatorArrowDown:
    case PE_IndicatorArrowLeft:
    case PE_IndicatorArrowRight:
        return StyleParts::arrow(*painter, *option, element);
    case PE_IndicatorToolBarSeparator:
        return StyleParts::separator(*painter, *option);
    case PE_FrameFocusRect:
        // A chosen row shows where the focus is by itself.
        if (StyleParts::showsFocusRing(*option) && !option->state.testFlag(State_Selected))
            Paint::box(*painter, option->rect, Theme::Radius::mark, {}, Theme::accent, 1.5);
        return;
    default:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void ChromeStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const
{
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option);
    const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (button && element == CE_PushButtonBevel)
        drawBevel(*painter, *option);
    else if (button && element == CE_PushButtonLabel)
        drawButtonLabel(*button, *painter, widget);
    else if (combo && element == CE_ComboBoxLabel)
        drawComboLabel(*combo, *painter, widget);
    else if (item && element == CE_MenuItem)
        drawMenuItem(*item, *painter, widget);
    else if (element == CE_HeaderSection || element == CE_HeaderEmptyArea)
        StyleParts::header(*painter, *option);
    else if (element == CE_ShapedFrame && hasRoundedFrame(widget))
        StyleParts::field(*painter, *option);
    else
        QProxyStyle::drawControl(element, option, painter, widget);
}

void ChromeStyle::drawButtonLabel(const QStyleOptionButton& option, QPainter& painter, const QWidget* widget) const
{
    QStyleOptionButton label = option;
    label.palette.setColor(QPalette::ButtonText, StyleParts::labelColour(label, isDefault(&option)));
    QProxyStyle::drawControl(CE_PushButtonLabel, &label, &painter, widget);
}

void ChromeStyle::drawComboLabel(const QStyleOptionComboBox& option, QPainter& painter, const QWidget* widget) const
{
    const QRect text = subControlRect(CC_ComboBox, &option, SC_ComboBoxEditField, widget);
    const QString elided = option.fontMetrics.elidedText(option.currentText, Qt::ElideRight, text.width());
    const Qt::Alignment leading = visualAlignment(option.direction, Qt::AlignLeft | Qt::AlignVCenter);
    drawItemText(&painter, text, int(leading), option.palette, option.state.testFlag(State_Enabled), elided,
                 QPalette::ButtonText);
}

void ChromeStyle::drawMenuItem(const QStyleOptionMenuItem& option, QPainter& painter, const QWidget* widget) const
{
    if (isSeparator(&option))
        return StyleParts::separator(painter, option);
    QStyleOptionMenuItem label = option;
    if (option.state.testFlag(State_Selected) && option.state.testFlag(State_Enabled))
        StyleParts::chosenRow(painter, option);
    label.state.setFlag(State_Selected, false);
    QProxyStyle::drawControl(CE_MenuItem, &label, &painter, widget);
}

void ChromeStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                     const QWidget* widget) const
{
    if (const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option);
        combo && control == CC_ComboBox && !combo->editable)
        return StyleParts::comboBox(*painter, *combo);
    if (const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option); bar && control == CC_ScrollBar)
        return StyleParts::scrollBar(*painter, *bar, subControlRect(control, option, SC_ScrollBarSlider, widget));
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

void ChromeStyle::drawItemText(QPainter* painter, const QRect& rect, int flags, const QPalette& palette, bool enabled,
                               const QString& text, QPalette::ColorRole role) const
{
    if (flags & (Qt::TextForceLeftToRight | Qt::TextForceRightToLeft))
        return QProxyStyle::drawItemText(painter, rect, flags, palette, enabled, text, role);
    const QPen pen = painter->pen();
    if (role != QPalette::NoRole)
        painter->setPen({palette.brush(role), pen.widthF()});
    Paint::text(*painter, rect, flags, text);
    painter->setPen(pen);
}

QRect ChromeStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                  const QWidget* widget) const
{
    if (const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option); bar && control == CC_ScrollBar)
        return StyleParts::scrollBarPart(*bar, part);
    const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option);
    if (combo && control == CC_ComboBox && part == SC_ComboBoxEditField && !combo->editable) {
        const QRect text = option->rect.adjusted(comboTextInset, 1, -comboMarkWidth, -1);
        return visualRect(option->direction, option->rect, text);
    }
    return QProxyStyle::subControlRect(control, option, part, widget);
}

QSize ChromeStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                                    const QWidget* widget) const
{
    QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
    switch (type) {
    case CT_PushButton:
        return {std::max(size.width(), contents.width() + 2 * Theme::Space::large),
                std::max(size.height(), buttonHeight)};
    case CT_ComboBox:
        return {contents.width() + comboTextInset + comboMarkWidth, std::max(contents.height() + 10, buttonHeight)};
    case CT_LineEdit:
        return {size.width(), std::max(size.height(), buttonHeight)};
    case CT_MenuItem:
        return isSeparator(option) ? QSize(size.width(), separatorHeight)
                                   : QSize(size.width() + Theme::Space::small, std::max(size.height(), rowHeight));
    case CT_ItemViewItem:
        return {size.width(), std::max(size.height(), rowHeight)};
    default:
        return size;
    }
}

int ChromeStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const
{
    switch (metric) {
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
        return indicatorSide;
    case PM_CheckBoxLabelSpacing:
    case PM_RadioButtonLabelSpacing:
        return Theme::Space::small;
    case PM_ScrollBarExtent:
        return scrollBarBreadth;
    case PM_FocusFrameHMargin:
        return 3;
    case PM_MenuHMargin:
    case PM_MenuVMargin:
        return Theme::Space::tight;
    case PM_ScrollView_ScrollBarSpacing:
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
        return 0;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int ChromeStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                           QStyleHintReturn* answer) const
{
    switch (hint) {
    case SH_ComboBox_Popup:
        return 0;
    case SH_DialogButtonLayout:
        return QDialogButtonBox::WinLayout;
    case SH_ToolTipLabel_Opacity:
        return 255;
    case SH_EtchDisabledText:
        return 0;
    default:
        return QProxyStyle::styleHint(hint, option, widget, answer);
    }
}

} // namespace orvane
