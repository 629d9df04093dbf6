#include "tests/main/Chrome/Gallery.h"

#include "main/Chrome/Theme.h"
#include "tests/main/Chrome/Picture.h"

#include <QApplication>
#include <QWidget>

#include <gtest/gtest.h>
#include <memory>

namespace orvane::test {
namespace {

class GalleryTest : public testing::TestWithParam<Qt::LayoutDirection>
{
protected:
    GalleryTest()
    {
        QApplication::setLayoutDirection(GetParam());
        gallery.reset(makeGallery());
        gallery->show();
        QApplication::processEvents();
    }

    ~GalleryTest() override
    {
        gallery.reset();
        QApplication::setLayoutDirection(Qt::LeftToRight);
    }

    std::unique_ptr<QWidget> gallery;
};

TEST_P(GalleryTest, everyControlGetsTheRoomThatItsTextNeeds)
{
    int controls = 0;
    for (const QWidget* view : gallery->findChildren<QWidget*>()) {
        if (!view->isVisible() || !view->metaObject()->inherits(&QWidget::staticMetaObject))
            continue;
        const QSize least = view->minimumSizeHint();
        EXPECT_GE(view->width(), least.width()) << view->metaObject()->className();
        if (view->hasHeightForWidth() && view->sizePolicy().hasHeightForWidth()) {
            EXPECT_GE(view->height(), view->heightForWidth(view->width())) << view->metaObject()->className();
        }
        ++controls;
    }
    EXPECT_GT(controls, 60);
}

TEST_P(GalleryTest, everyScaleShowsTheSamePictureOnlyFiner)
{
    const QImage plain = pictureOf(*gallery);
    const double ground = double(countOf(plain, Theme::bg, 0)) / (plain.width() * plain.height());
    const double accent = double(countOf(plain, Theme::accent, 12)) / (plain.width() * plain.height());
    EXPECT_GT(accent, 0.002);
    for (const double scale : {1.25, 1.5, 2.0}) {
        const QImage fine = pictureOf(*gallery, scale);
        const double area = double(fine.width()) * fine.height();
        EXPECT_NEAR(countOf(fine, Theme::bg, 0) / area, ground, 0.01) << scale;
        EXPECT_NEAR(countOf(fine, Theme::accent, 12) / area, accent, 0.004) << scale;
    }
}

TEST_P(GalleryTest, theAccentIsUsedSparingly)
{
    const QImage picture = pictureOf(*gallery);
    const double area = double(picture.width()) * picture.height();
    EXPECT_LT(countOf(picture, Theme::accent, 40) / area, 0.06);
}

INSTANTIATE_TEST_SUITE_P(Chrome, GalleryTest, testing::Values(Qt::LeftToRight, Qt::RightToLeft),
                         [](const auto& run) { return run.param == Qt::RightToLeft ? "mirrored" : "plain"; });

} // namespace
} // namespace orvane::test
