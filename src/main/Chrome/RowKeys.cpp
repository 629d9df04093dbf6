#include "main/Chrome/RowKeys.h"

#include <QKeyEvent>
#include <QWidget>

#include <algorithm>
#include <utility>

namespace orvane {

RowKeys::RowKeys(QWidget& row, std::function<Place()> place, std::function<void(int index)> go)
    : row_(row)
    , place_(std::move(place))
    , go_(std::move(go))
{
    row.installEventFilter(this);
}

void RowKeys::watch(QWidget& thing)
{
    thing.installEventFilter(this);
}

int RowKeys::indexFor(const QKeyEvent& key) const
{
    const Place place = place_();
    const int last = place.count - 1;
    const int forward = row_.isRightToLeft() ? Qt::Key_Left : Qt::Key_Right;
    const int backward = row_.isRightToLeft() ? Qt::Key_Right : Qt::Key_Left;
    if (last < 0 || (key.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier)
        return -1;
    if (key.key() == forward)
        return std::min(last, place.current + 1);
    if (key.key() == backward)
        return std::max(0, place.current - 1);
    if (key.key() == Qt::Key_Home)
        return 0;
    return key.key() == Qt::Key_End ? last : -1;
}

bool RowKeys::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return QObject::eventFilter(watched, event);
    const int index = indexFor(*static_cast<QKeyEvent*>(event));
    if (index < 0)
        return QObject::eventFilter(watched, event);
    go_(index);
    return true;
}

} // namespace orvane
