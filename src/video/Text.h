#pragma once

#include <QColor>
#include <QFont>
#include <QPainter>
#include <QString>

#include <vector>

namespace orvane::Video {

/// The sans-serif of the videos, with a family of the same hand for every script, at `pixels` on `device`.
QFont sansSerif(double pixels, QFont::Weight weight, const QPaintDevice& device);

/// `text` as one line: line ends, tabs and other controls are spaces. Nothing in it is markup.
QString oneLine(const QString& text);

/// Where each character of `text` ends, as a person sees characters.
std::vector<qsizetype> characterEnds(const QString& text);

/// How far `text` advances, in pixels of `device`.
double widthOf(const QString& text, const QFont& font, const QPaintDevice& device);

/// `text` shortened to at most `width`: its last 2 characters give way to one "…" again and again, as long as it is
/// wider and has at least 5 characters.
QString fitted(const QString& text, const QFont& font, double width, const QPaintDevice& device);

/// A line of text with its left end and its baseline at `place`, y downwards.
void drawLine(QPainter& context, const QString& text, const QFont& font, const QColor& colour, QPointF place);

/// A line of text, shortened to `width`, in the middle around `place.x()`.
void drawCentred(QPainter& context, const QString& text, const QFont& font, const QColor& colour, QPointF place,
                 double width);

} // namespace orvane::Video
