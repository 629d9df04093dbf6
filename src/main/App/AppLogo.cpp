#include "main/App/AppLogo.h"

#include <QGuiApplication>
#include <QIcon>
#include <QPixmap>

namespace orvane::AppInfo {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int iconSide = 512;

std::optional<QImage> applicationIcon()
{
    const QIcon icon = QGuiApplication::windowIcon();
    const QImage image = icon.pixmap(iconSide).toImage();
    return image.isNull() ? std::nullopt : std::optional(image);
}

} // namespace

const std::optional<QImage>& logo()
{
    static const std::optional<QImage> image = logo(u":/logo.jpg"_s);
    return image;
}

std::optional<QImage> logo(const QString& path)
{
    const QImage image(path);
    return image.isNull() ? applicationIcon() : std::optional(image);
}

} // namespace orvane::AppInfo
