#include "main/Chrome/ChromeStyle.h"

#include "main/Chrome/Paint.h"
#include "main/Chrome/StyleParts.h"
#include "main/Chrome/Theme.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QComboBox>
#include <QDialogButtonBox>
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
constexpr int comboTextInset = 10;
constexpr int comboMarkWidth = 28;

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
    case PE_FrameFocusRect:
        if (StyleParts::showsFocusRing(*option))
            Paint::box(*painter, option->rect, Theme::Radius::mark, {}, Theme::accent, 1.5);
        return;
    default:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void ChromeStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const
{
    if (const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option)) {
        if (element == CE_PushButtonBevel)
            return drawBevel(*painter, *option);
        if (element == CE_PushButtonLabel) {
            QStyleOptionButton label = *button;
            label.palette.setColor(QPalette::ButtonText, StyleParts::labelColour(label, isDefault(option)));
            return QProxyStyle::drawControl(element, &label, painter, widget);
        }
    }
    if (const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option);
        combo && element == CE_ComboBoxLabel) {
        const QRect text = subControlRect(CC_ComboBox, combo, SC_ComboBoxEditField, widget);
        const QString elided = combo->fontMetrics.elidedText(combo->currentText, Qt::ElideRight, text.width());
        return drawItemText(painter, text, int(visualAlignment(combo->direction, Qt::AlignLeft | Qt::AlignVCenter)),
                            combo->palette, combo->state.testFlag(State_Enabled), elided, QPalette::ButtonText);
    }
    if (const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option); item && element == CE_MenuItem) {
        QStyleOptionMenuItem calm = *item;
        calm.palette.setColor(QPalette::Highlight, Theme::raisedHover);
        return QProxyStyle::drawControl(element, &calm, painter, widget);
    }
    if (element == CE_ShapedFrame && hasRoundedFrame(widget))
        return StyleParts::field(*painter, *option);
    QProxyStyle::drawControl(element, option, painter, widget);
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
