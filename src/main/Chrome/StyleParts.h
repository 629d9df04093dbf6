#pragma once

#include <QRect>
#include <QStyle>

class QPainter;
class QStyleOption;
class QStyleOptionButton;
class QStyleOptionComboBox;
class QStyleOptionSlider;

namespace orvane {

/// The pictures that ChromeStyle puts together, one function for each part.
namespace StyleParts {

/// Whether the user got to the widget by keyboard, so that a focus ring helps.
bool showsFocusRing(const QStyleOption& option);

void field(QPainter& painter, const QStyleOption& option);
void plainButton(QPainter& painter, const QStyleOption& option);
void accentButton(QPainter& painter, const QStyleOption& option, bool isDanger);
void checkIndicator(QPainter& painter, const QStyleOption& option);
void radioIndicator(QPainter& painter, const QStyleOption& option);
void popUpFrame(QPainter& painter, const QStyleOption& option);
void header(QPainter& painter, const QStyleOption& option);
/// A line across the middle of the option's rectangle.
void separator(QPainter& painter, const QStyleOption& option);
/// The ground of a menu's row under the pointer.
void chosenRow(QPainter& painter, const QStyleOption& option);
/// One of the four PE_IndicatorArrow… elements.
void arrow(QPainter& painter, const QStyleOption& option, QStyle::PrimitiveElement element);
void comboBox(QPainter& painter, const QStyleOptionComboBox& option);
void scrollBar(QPainter& painter, const QStyleOptionSlider& option, const QRect& slider);

/// The rectangle of a scroll bar's part: no arrows, the whole length is groove.
QRect scrollBarPart(const QStyleOptionSlider& option, QStyle::SubControl part);

/// Where a button's label is drawn in: readable on the ground that `plainButton` or `accentButton` gave it.
QColor labelColour(const QStyleOption& option, bool isFilled);

} // namespace StyleParts
} // namespace orvane
