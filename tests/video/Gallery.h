#pragma once

#include <QImage>
#include <QString>

#include <vector>

namespace orvane::test {

/// A frame that is looked at, at a quarter of its size.
struct GalleryPicture
{
    QString name;
    QImage image;
};

/// All aspects, with short and long titles in all scripts, with and without artwork and pill.
std::vector<GalleryPicture> gallery();

} // namespace orvane::test
