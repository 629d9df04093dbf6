#include "main/Chrome/RowKeys.h"

#include <QWidget>

#include <algorithm>

namespace orvane {

int indexForKey(int key, const QWidget& row, int current, int count)
{
    const int last = count - 1;
    const int forward = row.isRightToLeft() ? Qt::Key_Left : Qt::Key_Right;
    const int backward = row.isRightToLeft() ? Qt::Key_Right : Qt::Key_Left;
    if (key == forward)
        return std::min(last, current + 1);
    if (key == backward)
        return std::max(0, current - 1);
    if (key == Qt::Key_Home)
        return 0;
    return key == Qt::Key_End ? last : -1;
}

} // namespace orvane
