#include "tests/main/Chrome/Picture.h"

#include "main/Chrome/Theme.h"

#include <QTest>
#include <QWidget>

#include <cstdlib>

namespace orvane::test {

QImage pictureOf(QWidget& widget, double scale)
{
    QImage picture((QSizeF(widget.size()) * scale).toSize(), QImage::Format_RGB32);
    picture.setDevicePixelRatio(scale);
    picture.fill(Theme::bg);
    widget.render(&picture, QPoint(), QRegion(), QWidget::DrawChildren);
    return picture;
}

bool isNear(const QColor& one, const QColor& other, int tolerance)
{
    return std::abs(one.red() - other.red()) <= tolerance && std::abs(one.green() - other.green()) <= tolerance &&
           std::abs(one.blue() - other.blue()) <= tolerance;
}

int countOf(const QImage& picture, const QColor& colour, int tolerance)
{
    int count = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            count += isNear(picture.pixelColor(x, y), colour, tolerance) ? 1 : 0;
    }
    return count;
}

qint64 brightnessOf(const QImage& picture)
{
    qint64 sum = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb pixel = picture.pixel(x, y);
            sum += qRed(pixel) + qGreen(pixel) + qBlue(pixel);
        }
    }
    return sum;
}

bool hasSameEdge(const QImage& one, const QImage& other, int breadth)
{
    const QRect inner = one.rect().adjusted(breadth, breadth, -breadth, -breadth);
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            if (!inner.contains(x, y) && one.pixel(x, y) != other.pixel(x, y))
                return false;
        }
    }
    return one.size() == other.size();
}

bool showActive(QWidget& widget)
{
    widget.show();
    widget.activateWindow();
    return QTest::qWaitForWindowActive(&widget);
}

} // namespace orvane::test
