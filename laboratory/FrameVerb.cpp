#include "laboratory/Verb.h"
#include "laboratory/VideoArguments.h"
#include "main/App/AppInfo.h"
#include "platform/filesystem/AtomicFile.h"
#include "video/Artwork.h"
#include "video/FramePainter.h"
#include "video/MonoSamples.h"
#include "video/arithmetic/Analyser.h"
#include "video/arithmetic/FrameGrid.h"
#include "video/arithmetic/Spectrum.h"

#include <QBuffer>
#include <QJsonArray>
#include <QJsonObject>
#include <QUrl>

#include <algorithm>

namespace orvane::lab {

using namespace Qt::Literals::StringLiterals;

namespace {

struct Moment
{
    qint64 frame = 0;
    std::vector<float> spectrum;
};

/// The spectrum of the frame that is shown at `seconds`, smoothed from the track's start on.
Moment momentAt(const QString& path, const QString& seconds, int framesPerSecond)
{
    bool isNumber = false;
    const double time = seconds.toDouble(&isNumber);
    if (!isNumber || !(time >= 0.0) || time > 1e6)
        throw UsageError(u"%1 is not a time in seconds."_s.arg(seconds));
    const Video::MonoSamples track = Video::monoSamples(QUrl::fromLocalFile(path));
    const Video::FrameGrid grid = Video::frameGrid(std::int64_t(track.samples.size()), track.rate, framesPerSecond);
    Video::Analyser analyser(1024, 0.8F);
    Moment moment{.frame = std::min(qint64(time * framesPerSecond), qint64(grid.frameCount) - 1)};
    for (qint64 frame = 0; frame <= moment.frame; ++frame) {
        const auto shown = analyser.magnitudes(Video::samplesOf(frame, grid, track.samples, analyser.fftSize()));
        moment.spectrum.assign(shown.begin(), shown.end());
    }
    return moment;
}

QJsonArray toJson(const std::vector<float>& values)
{
    QJsonArray array;
    for (const float value : values)
        array.append(double(value));
    return array;
}

void writePng(const QImage& image, const QString& path)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG");
    writeAtomically(path, bytes);
}

} // namespace

QJsonValue frame(const QStringList& arguments)
{
    const Arguments given(arguments, lookOptions(), lookFlags());
    const QStringList words = given.alone(3, 3);
    const Video::Look look = lookOf(given);
    const Moment moment = momentAt(absolute(words[0]), words[1], look.fps);
    const Video::Scene scene{.artwork = Video::readArtwork(artworkOf(given)),
                             .title = given.text(u"title"_s).value_or(QString()),
                             .artist = given.text(u"artist"_s).value_or(QString())};
    const QSize size = Video::size(look.aspect);
    QImage image(size, QImage::Format_RGB32);
    {
        QPainter context(&image);
        Video::FramePainter(AppInfo::siteName()).drawFrame(context, size, moment.spectrum, scene, look);
    }
    writePng(image, absolute(words[2]));
    return QJsonObject{{u"frame"_s, moment.frame},
                       {u"width"_s, size.width()},
                       {u"height"_s, size.height()},
                       {u"level"_s, Video::FramePainter::levelOf(moment.spectrum)}};
}

QJsonValue spectrum(const QStringList& arguments)
{
    const Arguments given(arguments, lookOptions(), lookFlags());
    const QStringList words = given.alone(2, 2);
    const Video::Look look = lookOf(given);
    const Moment moment = momentAt(absolute(words[0]), words[1], look.fps);
    std::vector<float> bars(std::size_t(look.bars));
    Video::valuesOfBars(moment.spectrum, bars);
    return QJsonObject{{u"frame"_s, moment.frame},
                       {u"energy"_s, double(Video::energy(moment.spectrum))},
                       {u"bars"_s, toJson(bars)},
                       {u"spectrum"_s, toJson(moment.spectrum)}};
}

} // namespace orvane::lab
