#include "tests/video/Gallery.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>

using namespace orvane;
using namespace Qt::Literals::StringLiterals;

namespace {

/// How far two pictures of one size are apart.
struct Distance
{
    double mean = 0.0;
    int furthest = 0;
};

Distance distance(const QImage& one, const QImage& other)
{
    Distance distance;
    for (int row = 0; row < one.height(); ++row) {
        for (int column = 0; column < one.width(); ++column) {
            const QRgb a = one.pixel(column, row);
            const QRgb b = other.pixel(column, row);
            const int apart =
                std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b))});
            distance.mean += double(apart) / (one.width() * one.height());
            distance.furthest = std::max(distance.furthest, apart);
        }
    }
    return distance;
}

TEST(Gallery, everyPictureIsTheOneThatWasLookedAt)
{
    const QString folder = QStringLiteral(ORVANE_GALLERY);
    for (const test::GalleryPicture& picture : test::gallery()) {
        const QImage expected(folder + u'/' + picture.name + u".png"_s);
        ASSERT_EQ(expected.size(), picture.image.size()) << picture.name.toStdString();
        const Distance apart = distance(picture.image, expected);
        // Another release of the fonts may move an edge; a line of text that is elsewhere is much further.
        EXPECT_LT(apart.mean, 0.4) << picture.name.toStdString();
        EXPECT_LE(apart.furthest, 100) << picture.name.toStdString();
    }
}

} // namespace
