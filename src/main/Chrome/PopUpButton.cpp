#include "main/Chrome/PopUpButton.h"

#include "main/Chrome/StyleParts.h"
#include "main/Chrome/Theme.h"

#include <QAbstractItemView>
#include <QPainter>
#include <QScreen>
#include <QStyleOption>
#include <QStyledItemDelegate>
#include <QWheelEvent>

#include <algorithm>

namespace orvane {
namespace {

constexpr int leastCharacters = 8;
constexpr int rowsInSight = 14;
constexpr int separatorHeight = 9;

bool isSeparatorAt(const QModelIndex& index)
{
    return index.data(Qt::AccessibleDescriptionRole).toString() == u"separator";
}

/// Rows of the open list: a separator is a line with air above and below.
class RowDelegate final : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        if (isSeparatorAt(index))
            StyleParts::separator(*painter, option);
        else
            QStyledItemDelegate::paint(painter, option, index);
    }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        const QSize row = QStyledItemDelegate::sizeHint(option, index);
        return isSeparatorAt(index) ? QSize(1, separatorHeight) : row;
    }
};

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
    view()->setFont(font());
    setItemDelegate(new RowDelegate(this));
}

void PopUpButton::addSeparator()
{
    insertSeparator(count());
}

bool PopUpButton::isSeparator(int row) const
{
    return isSeparatorAt(model()->index(row, modelColumn()));
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
