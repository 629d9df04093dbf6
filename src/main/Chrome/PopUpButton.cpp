#include "main/Chrome/PopUpButton.h"

#include "main/Chrome/Theme.h"

#include <QAbstractItemView>
#include <QScreen>
#include <QWheelEvent>

#include <algorithm>

namespace orvane {
namespace {

constexpr int leastCharacters = 8;
constexpr int rowsInSight = 14;

} // namespace

PopUpButton::PopUpButton(QWidget* parent)
    : QComboBox(parent)
{
    setFont(Theme::font(12));
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(leastCharacters);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setMaxVisibleItems(rowsInSight);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
}

void PopUpButton::addSeparator()
{
    insertSeparator(count());
}

bool PopUpButton::isSeparator(int row) const
{
    return itemData(row, Qt::AccessibleDescriptionRole).toString() == u"separator";
}

void PopUpButton::showPopup()
{
    const int widest = view()->sizeHintForColumn(modelColumn()) + 2 * Theme::Space::large;
    view()->setMinimumWidth(std::min(widest, screen()->availableGeometry().width()));
    QComboBox::showPopup();
}

void PopUpButton::wheelEvent(QWheelEvent* event)
{
    if (hasFocus())
        QComboBox::wheelEvent(event);
    else
        event->ignore();
}

} // namespace orvane
