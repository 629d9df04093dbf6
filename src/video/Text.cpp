#include "video/Text.h"

#include <QFontMetricsF>
#include <QTextBoundaryFinder>

#include <algorithm>
#include <vector>

namespace orvane::Video {

using namespace Qt::Literals::StringLiterals;

QFont sansSerif(double pixels, QFont::Weight weight, const QPaintDevice& device)
{
    QFont font;
    font.setFamilies({u"Noto Sans"_s, u"Noto Sans CJK JP"_s, u"Noto Sans Arabic"_s, u"Noto Sans Devanagari"_s,
                      u"Noto Color Emoji"_s, u"DejaVu Sans"_s, u"sans-serif"_s});
    font.setStyleHint(QFont::SansSerif, QFont::NoSubpixelAntialias);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setWeight(weight);
    // Whole pixels are too coarse: sizes are fractions of the frame.
    font.setPointSizeF(pixels * 72.0 / device.logicalDpiY());
    return font;
}

QString oneLine(const QString& text)
{
    QString line = text;
    line.replace(u"\r\n"_s, u" "_s);
    for (QChar& character : line) {
        const QChar::Category category = character.category();
        if (category == QChar::Other_Control || category == QChar::Separator_Line ||
            category == QChar::Separator_Paragraph)
            character = u' ';
    }
    return line;
}

std::vector<qsizetype> characterEnds(const QString& text)
{
    std::vector<qsizetype> ends;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    while (finder.toNextBoundary() > 0)
        ends.push_back(finder.position());
    return ends;
}

double widthOf(const QString& text, const QFont& font, const QPaintDevice& device)
{
    return QFontMetricsF(font, &device).horizontalAdvance(text);
}

QString fitted(const QString& text, const QFont& font, double width, const QPaintDevice& device)
{
    const std::vector<qsizetype> ends = characterEnds(text);
    constexpr std::size_t fewest = 5;
    if (ends.size() < fewest || widthOf(text, font, device) <= width)
        return text;
    const auto shortened = [&](std::size_t kept) { return text.first(ends[kept - 1]) + u'…'; };
    const auto fits = [&](std::size_t kept) { return widthOf(shortened(kept), font, device) <= width; };
    const std::size_t most = ends.size() - 2;
    std::size_t kept = fewest - 2;
    for (std::size_t step = std::size_t(1) << 48U; step > 0; step /= 2) {
        if (kept + step <= most && fits(kept + step))
            kept += step;
    }
    // Where letters join, one more may be narrower than one less.
    constexpr std::size_t joined = 16;
    for (std::size_t more = std::min(most, kept + joined); more > kept; --more) {
        if (fits(more))
            return shortened(more);
    }
    return shortened(kept);
}

void drawLine(QPainter& context, const QString& text, const QFont& font, const QColor& colour, QPointF place)
{
    context.setFont(font);
    context.setPen(colour);
    context.setLayoutDirection(Qt::LayoutDirectionAuto);
    context.drawText(place, text);
}

void drawCentred(QPainter& context, const QString& text, const QFont& font, const QColor& colour, QPointF place,
                 double width)
{
    const QPaintDevice& device = *context.device();
    const QString line = fitted(oneLine(text), font, width, device);
    drawLine(context, line, font, colour, {place.x() - widthOf(line, font, device) / 2.0, place.y()});
}

} // namespace orvane::Video
