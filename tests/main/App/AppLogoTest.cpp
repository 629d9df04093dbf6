#include "main/App/AppLogo.h"

#include <QGuiApplication>
#include <QIcon>
#include <QPixmap>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class AppLogo : public testing::Test
{
protected:
    AppLogo() { QGuiApplication::setWindowIcon({}); }

    ~AppLogo() override { QGuiApplication::setWindowIcon({}); }

    static QImage filled(Qt::GlobalColor colour)
    {
        QImage image(32, 32, QImage::Format_RGB32);
        image.fill(colour);
        return image;
    }

    static void giveTheApplicationAnIcon() { QGuiApplication::setWindowIcon(QPixmap::fromImage(filled(Qt::green))); }

    QTemporaryDir folder;
    QString picture = folder.filePath(u"logo.jpg"_s);
};

TEST_F(AppLogo, isThePictureOfTheResources)
{
    giveTheApplicationAnIcon();
    filled(Qt::red).save(picture);
    const std::optional<QImage> logo = AppInfo::logo(picture);
    ASSERT_TRUE(logo);
    EXPECT_GT(qRed(logo->pixel(16, 16)), 200);
    EXPECT_LT(qGreen(logo->pixel(16, 16)), 50);
}

TEST_F(AppLogo, isTheApplicationsIconWhereThePictureIsMissingOrBroken)
{
    giveTheApplicationAnIcon();
    QFile broken(folder.filePath(u"broken.jpg"_s));
    ASSERT_TRUE(broken.open(QFile::WriteOnly) && broken.write("no picture") > 0);
    broken.close();
    for (const QString& path : {picture, broken.fileName()}) {
        const std::optional<QImage> logo = AppInfo::logo(path);
        ASSERT_TRUE(logo) << qPrintable(path);
        EXPECT_EQ(logo->pixelColor(logo->rect().center()), QColor(Qt::green)) << qPrintable(path);
    }
}

TEST_F(AppLogo, isAbsentWhereThereIsNeither)
{
    EXPECT_FALSE(AppInfo::logo(picture));
}

} // namespace
} // namespace orvane::test
