#include "main/Chrome/Theme.h"
#include "tests/main/Chrome/Gallery.h"

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QWidget>

#include <cstdio>
#include <memory>

namespace {

QImage pictureOf(QWidget& widget, double scale)
{
    QImage picture(widget.size() * scale, QImage::Format_RGB32);
    picture.setDevicePixelRatio(scale);
    picture.fill(orvane::Theme::bg);
    widget.render(&picture);
    return picture;
}

bool paint(const QDir& folder, Qt::LayoutDirection direction, double scale)
{
    QApplication::setLayoutDirection(direction);
    const std::unique_ptr<QWidget> gallery(orvane::test::makeGallery());
    gallery->show();
    QApplication::processEvents();
    const QString side = direction == Qt::RightToLeft ? QStringLiteral("rtl") : QStringLiteral("ltr");
    const QString name = QStringLiteral("controls-%1-%2.png").arg(side).arg(scale, 0, 'f', 2);
    return pictureOf(*gallery, scale).save(folder.filePath(name));
}

} // namespace

// Usage: FOLDER. Paints the controls at several scales, in both directions, into FOLDER.
int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    orvane::Theme::apply(application);
    if (argc != 2) {
        std::fputs("usage: orvane_chrome_gallery FOLDER\n", stderr);
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    bool isDone = folder.mkpath(QStringLiteral("."));
    for (const auto direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        for (const double scale : {1.0, 1.25, 1.5, 2.0})
            isDone = isDone && paint(folder, direction, scale);
    }
    return isDone ? 0 : 1;
}
