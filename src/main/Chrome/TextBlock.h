#pragma once

#include <QFont>
#include <QRectF>
#include <QString>

class QPainter;
class QColor;

namespace orvane {

/// Plain text in as many lines as a width needs: measured and drawn by the same rules, so that what is measured fits.
/// Breaks between words, and inside a word that is wider than the line.
struct TextBlock
{
    QString text;
    QFont font;
    /// Of the layout around it; lines stand at its leading edge.
    Qt::LayoutDirection direction = Qt::LeftToRight;

    /// The same in at most so many lines of `width` points: what is left out ends as "…".
    TextBlock held(int width, int mostLines) const;

    /// Width of the widest line and height of all lines, in whole points, when no line may pass `width`.
    QSize size(int width) const;
    /// Size on one line.
    QSize natural() const;
    /// Draws from the top of `rect`, whose width is the one that was measured.
    void draw(QPainter& painter, const QRectF& rect, const QColor& colour) const;
};

} // namespace orvane
