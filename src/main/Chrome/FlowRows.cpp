#include "main/Chrome/FlowRows.h"

#include <algorithm>

namespace orvane {
namespace {

/// Boxes first … last - 1 side by side.
struct Row
{
    qsizetype first = 0;
    qsizetype last = 0;
    int width = 0;
    int height = 0;
};

QList<Row> brokenIntoRows(const QList<QSize>& boxes, int width, int spacing)
{
    QList<Row> rows;
    for (qsizetype index = 0; index < boxes.size(); ++index) {
        const QSize box = boxes.at(index);
        if (rows.isEmpty() || rows.last().width + spacing + box.width() > width)
            rows.append({.first = index, .last = index});
        Row& row = rows.last();
        row.width += (row.last > row.first ? spacing : 0) + box.width();
        row.height = std::max(row.height, box.height());
        row.last = index + 1;
    }
    return rows;
}

QList<QSize> heldTo(const QList<QSize>& boxes, int width)
{
    QList<QSize> held;
    for (const QSize& box : boxes)
        held.append({std::min(box.width(), width), box.height()});
    return held;
}

struct Line
{
    int left = 0;
    int top = 0;
    int height = 0;
};

void lay(QList<QRect>& rects, const QList<QSize>& boxes, const Row& row, const Line& line, int spacing)
{
    int left = line.left;
    for (qsizetype index = row.first; index < row.last; ++index) {
        const QSize box = boxes.at(index);
        rects.append({QPoint(left, line.top + (line.height - box.height()) / 2), box});
        left += box.width() + spacing;
    }
}

} // namespace

FlowRows::Placement FlowRows::place(const QList<QSize>& views, const QList<QSize>& trailing, int width) const
{
    const QList<QSize> leadingBoxes = heldTo(views, width);
    const QList<QSize> trailingBoxes = heldTo(trailing, width);
    const QList<Row> rows = brokenIntoRows(leadingBoxes, width, columnSpacing);
    const QList<Row> ends = brokenIntoRows(trailingBoxes, width, columnSpacing);
    const bool sharesLast =
        !rows.isEmpty() && ends.size() == 1 && rows.last().width + columnSpacing + ends.first().width <= width;
    Placement placement;
    int top = 0;
    const auto nextTop = [&top, this](int height) {
        const int here = top;
        top += height + rowSpacing;
        return here;
    };
    int sharedTop = 0;
    int sharedHeight = 0;
    for (qsizetype index = 0; index < rows.size(); ++index) {
        const Row& row = rows.at(index);
        const bool isShared = sharesLast && index == rows.size() - 1;
        sharedHeight = isShared ? std::max(row.height, ends.first().height) : row.height;
        sharedTop = nextTop(sharedHeight);
        const int room = isShared ? width - ends.first().width - columnSpacing : width;
        const int left = centresRows ? (room - row.width) / 2 : 0;
        lay(placement.rects, leadingBoxes, row, {left, sharedTop, sharedHeight}, columnSpacing);
    }
    for (const Row& row : ends) {
        const int height = sharesLast ? sharedHeight : row.height;
        const int here = sharesLast ? sharedTop : nextTop(height);
        lay(placement.rects, trailingBoxes, row, {width - row.width, here, height}, columnSpacing);
    }
    placement.height = std::max(0, top - rowSpacing);
    return placement;
}

} // namespace orvane
