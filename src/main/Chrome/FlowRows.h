#pragma once

#include <QList>
#include <QRect>
#include <QSize>

namespace orvane {

/// Where boxes lie that flow in rows from the left, all in points. A mirrored layout mirrors the outcome.
struct FlowRows
{
    int columnSpacing = 8;
    int rowSpacing = 8;
    bool centresRows = false;

    struct Placement
    {
        /// Those of the views in their order, then those of the trailing ones.
        QList<QRect> rects;
        /// From the top of the first row to the bottom of the last; 0 without boxes.
        int height = 0;
    };

    /// A box starts a new row when it would pass `width`; one that is wider than a row is made as wide as the row. The
    /// trailing boxes end at the right edge of the last row, or of rows of their own where that has no room for them.
    /// Boxes of a row have their middles on one line.
    Placement place(const QList<QSize>& views, const QList<QSize>& trailing, int width) const;
};

} // namespace orvane
