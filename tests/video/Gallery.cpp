#include "tests/video/Gallery.h"

#include "tests/video/PlainPainter.h"
#include "video/FramePainter.h"

namespace orvane::test {

using namespace Qt::Literals::StringLiterals;
using Aspect = Video::Look::Aspect;

namespace {

QImage painted(const Video::Scene& scene, const Video::Look& look, int frame)
{
    const QSize size = Video::size(look.aspect);
    QImage image(size, QImage::Format_RGB32);
    QPainter context(&image);
    Video::FramePainter(u"orvane.example"_s).drawFrame(context, size, movingSpectrum(frame), scene, look);
    context.end();
    return image.scaled(size / 4, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

Video::Scene sceneOf(const QString& title, const QString& artist)
{
    return {.artwork = sunset(900), .title = title, .artist = artist};
}

} // namespace

std::vector<GalleryPicture> gallery()
{
    const QString longTitle = u"The Night We Drove Along the Endless Coast Road Without a Map"_s;
    const QString longArtist = u"synthwave · melancholic · neon nights over the long grey sea, with gated drums"_s;
    return {
        {u"portrait"_s, painted(sceneOf(u"Night Drive"_s, u"synthwave · neon · 1984"_s), {}, 7)},
        {u"portrait-long"_s, painted(sceneOf(longTitle, longArtist), {}, 12)},
        {u"portrait-han"_s, painted(sceneOf(u"夜に駆ける 深夜驾驶 한밤"_s, u"シンセウェーブ · 电子 · 네온"_s), {}, 3)},
        {u"portrait-arabic"_s, painted(sceneOf(u"ليلة على الطريق!"_s, u"موسيقى · بحر · نجوم"_s), {}, 20)},
        {u"portrait-devanagari"_s, painted(sceneOf(u"सपनों की रात"_s, u"संगीत · समुद्र · तारे"_s), {}, 25)},
        {u"portrait-emoji"_s,
         painted(sceneOf(u"🌌 Ночь 🎵 Νύχτα"_s, u"🎹 · 🥁 · 👩‍🚀 · 🏳️‍🌈"_s), {}, 9)},
        {u"portrait-bare"_s,
         painted({.artwork = {}, .title = u"Night Drive"_s, .artist = {}}, {.showWatermark = false}, 0)},
        {u"square"_s, painted(sceneOf(u"Night Drive"_s, u"synthwave · neon"_s), {.aspect = Aspect::square}, 7)},
        {u"square-no-artwork"_s,
         painted(sceneOf(longTitle, longArtist), {.aspect = Aspect::square, .showArtwork = false}, 12)},
        {u"landscape"_s, painted(sceneOf(u"Night Drive"_s, u"synthwave · neon"_s), {.aspect = Aspect::landscape}, 7)},
        {u"landscape-bars"_s,
         painted(sceneOf(u"夜に駆ける"_s, u"夜明け"_s), {.aspect = Aspect::landscape, .bars = 96}, 14)},
    };
}

} // namespace orvane::test
