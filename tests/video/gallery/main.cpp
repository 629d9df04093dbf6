#include "tests/video/Gallery.h"

#include <QGuiApplication>

#include <cstdio>

/// Writes the pictures of the gallery into the folder that is its argument.
int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    if (argc != 2) {
        std::fputs("Into which folder?\n", stderr);
        return 1;
    }
    for (const auto& picture : orvane::test::gallery()) {
        const QString path = QString::fromLocal8Bit(argv[1]) + u'/' + picture.name + QStringLiteral(".png");
        if (!picture.image.save(path)) {
            std::fprintf(stderr, "%s cannot be written\n", qUtf8Printable(path));
            return 1;
        }
    }
    return 0;
}
