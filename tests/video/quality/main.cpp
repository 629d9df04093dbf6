#include "platform/video/VideoFile.h"
#include "tests/mastering/arithmetic/Signals.h"
#include "tests/video/PlainPainter.h"
#include "video/FrameSequence.h"
#include "video/VideoEngine.h"
#include "video/arithmetic/FrameGrid.h"

#include <QFile>
#include <QGuiApplication>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <numeric>
#include <sys/resource.h>

using namespace orvane;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double seconds = 20.0;
constexpr int rate = 44100;

/// A way to set the encoder.
struct Way
{
    const char* preset;
    const char* parameters;
    /// Left to choose its quantizers by itself, as ffmpeg uses it.
    bool isByItself = false;
};

constexpr Way ways[] = {{"ultrafast", "", true},
                        {"superfast", "", true},
                        {"veryfast", "", true},
                        {"ultrafast", ""},
                        {"superfast", "weightp=0:subme=0:no-deblock=1"},
                        {"superfast", "weightp=0:subme=0"},
                        {"superfast", "weightp=0"},
                        {"veryfast", "weightp=0"},
                        {"faster", "weightp=0"}};

/// The mean and the worst likeness of the frames, from 0 to 1.
struct Likeness
{
    double mean = 0.0;
    double worst = 0.0;
};

/// Of this program and of those that it ran.
double processorSeconds()
{
    const auto of = [](const timeval& time) { return double(time.tv_sec) + double(time.tv_usec) / 1e6; };
    double sum = 0.0;
    for (const auto who : {RUSAGE_SELF, RUSAGE_CHILDREN}) {
        rusage usage{};
        ::getrusage(who, &usage);
        sum += of(usage.ru_utime) + of(usage.ru_stime);
    }
    return sum;
}

/// The frames of the track, one after the other.
void forFrames(const std::vector<float>& track,
               const std::function<void(VideoPicture&, const VideoPicture::Area& changed)>& use)
{
    Video::FramePainter painter(u"orvane.example"_s);
    const Video::Scene scene{
        .artwork = test::sunset(1024), .title = u"Night Drive"_s, .artist = u"synthwave · neon · 1984"_s};
    Video::FrameSequence frames(painter, scene, {});
    Video::Analyser analyser(1024, 0.8F);
    const Video::FrameGrid grid = Video::frameGrid(std::int64_t(track.size()), rate, 30);
    for (std::int64_t frame = 0; frame < grid.frameCount; ++frame) {
        VideoPicture& picture = frames.next(analyser.magnitudes(Video::samplesOf(frame, grid, track, 1024)));
        use(picture, frames.changed());
    }
}

void writePlanes(VideoPicture& picture, QProcess& process)
{
    process.write("FRAME\n");
    const auto planes = picture.planes();
    for (std::size_t index = 0; index < planes.size(); ++index) {
        const int part = index == 0 ? 1 : 2;
        for (int row = 0; row < picture.height() / part; ++row)
            process.write(reinterpret_cast<const char*>(planes[index].bytes) +
                              std::ptrdiff_t(row) * planes[index].stride,
                          picture.width() / part);
    }
    while (process.bytesToWrite() > 0 && process.waitForBytesWritten(-1))
        ;
}

/// Hands all frames to ffmpeg, as its standard input.
void pipeFrames(const QStringList& arguments, const std::vector<float>& track, const QString& folder)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(u"ffmpeg"_s, QStringList{u"-v"_s, u"error"_s, u"-y"_s} + arguments);
    process.write("YUV4MPEG2 W1080 H1920 F30:1 Ip A1:1 C420jpeg\n");
    forFrames(track, [&](VideoPicture& picture, const VideoPicture::Area&) { writePlanes(picture, process); });
    process.closeWriteChannel();
    process.waitForFinished(-1);
}

void writeByItself(const VideoSettings& settings, const std::vector<float>& track, const QString& path,
                   const QString& folder)
{
    pipeFrames({u"-f"_s, u"yuv4mpegpipe"_s, u"-i"_s, u"-"_s, u"-c:v"_s, u"libx264"_s, u"-preset"_s,
                QString::fromLatin1(settings.preset), u"-profile:v"_s, u"high"_s, u"-b:v"_s,
                QString::number(settings.bitRate), u"-g"_s, QString::number(settings.keyFrameInterval), path},
               track, folder);
}

void writeAsWe(const VideoSettings& settings, const std::vector<float>& track, const QString& path)
{
    VideoFile file(path, path + u".new"_s, settings);
    file.markAsFinished(VideoFile::Track::Sound);
    forFrames(track, [&](VideoPicture& picture, const VideoPicture::Area& changed) { file.append(picture, changed); });
    file.markAsFinished(VideoFile::Track::Picture);
    file.finish();
}

Likeness likenessOf(const QString& path, const std::vector<float>& track, const QString& folder)
{
    pipeFrames({u"-i"_s, path, u"-f"_s, u"yuv4mpegpipe"_s, u"-i"_s, u"-"_s, u"-lavfi"_s,
                u"[0:v][1:v]ssim=stats_file=likeness.txt"_s, u"-an"_s, u"-f"_s, u"null"_s, u"-"_s},
               track, folder);
    QFile stats(folder + u"/likeness.txt"_s);
    std::vector<double> all;
    if (stats.open(QFile::ReadOnly)) {
        for (const QByteArray& line : stats.readAll().split('\n')) {
            const qsizetype start = line.indexOf("All:");
            if (start >= 0)
                all.push_back(line.mid(start + 4).split(' ').first().toDouble());
        }
    }
    if (all.size() != std::size_t(seconds * 30.0))
        throw std::runtime_error("The frames could not be compared.");
    return {.mean = std::accumulate(all.begin(), all.end(), 0.0) / double(all.size()),
            .worst = *std::min_element(all.begin(), all.end())};
}

QString rowOf(const Way& way, const std::vector<float>& track, const QString& folder)
{
    const QString path = folder + u"/video.mp4"_s;
    const VideoSettings chosen = VideoEngine::settingsOf({});
    VideoSettings settings = chosen;
    settings.preset = way.preset;
    settings.parameters = way.parameters;
    const double start = processorSeconds();
    if (way.isByItself)
        writeByItself(settings, track, path, folder);
    else
        writeAsWe(settings, track, path);
    const double taken = processorSeconds() - start;
    const Likeness likeness = likenessOf(path, track, folder);
    const bool isOurs = !way.isByItself && chosen.preset == way.preset && chosen.parameters == way.parameters;
    return u"| %1%2 | %3 | %4 | "_s.arg(QLatin1StringView(way.preset), isOurs ? u" (ours)"_s : QString(),
                                        *way.parameters ? QString::fromLatin1(way.parameters) : u"—"_s,
                                        way.isByItself ? u"the encoder, in ffmpeg"_s : u"we"_s) +
           u"%1 | %2 | %3 | %4 |\n"_s.arg(likeness.mean, 0, 'f', 4)
               .arg(likeness.worst, 0, 'f', 4)
               .arg(2.0 * seconds / taken, 0, 'f', 1)
               .arg(double(QFile(path).size()) * 8.0 / 1000.0 / seconds, 0, 'f', 0);
}

constexpr char beforeTable[] =
    R"(# What the encoder's settings cost and give

`orvane-video-quality FILE` wrote this page: 20 s of made music as a portrait video at 228096 bit/s, 600 frames, once for
each way to set the encoder. Likeness is the structural similarity of the decoded frames to the frames as painted, over
luma and chroma: the mean, and the worst frame. Times real time is what two processors would give, from the processor time
of painting and encoding; for ffmpeg the way through a pipe is in it. Work beside it slows that too, so that rows compare
and machines do not. The last column is the whole file, which has no sound here.

| Preset | Besides | Quantizers chosen by | Mean likeness | Worst frame | Times real time | kbit/s |
|---|---|---|---|---|---|---|
)";

constexpr char belowTable[] = R"(
Left to itself the encoder looks at every picture twice, once at half its size, to learn what it will cost, and moves
bits about within it. Of pictures that hardly move nothing is learnt that way. Our own rule gives all of a picture one
quantizer, and a key picture, which most of what follows shows unchanged, half of theirs; what pictures cost it learns
from those before. The worst frames, in which the glow changes its level, are ten times nearer to what was painted, in
less than half the time.

Ours is superfast without weighted prediction and without a search between pixels: nothing moves by parts of a pixel.
Without the deblocking filter (no-deblock) a tenth of the time is saved, and some likeness lost that gradients live from.
veryfast comes half a thousandth nearer and takes a third longer.
)";

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QTemporaryDir folder;
    const test::Samples music = test::music(seconds, rate).front();
    const std::vector<float> track(music.begin(), music.end());
    QString page = QString::fromUtf8(beforeTable);
    for (const Way& way : ways) {
        page += rowOf(way, track, folder.path());
        std::fputs(qUtf8Printable(page.section(u'\n', -2)), stderr);
    }
    page += QString::fromUtf8(belowTable);
    QFile file(QGuiApplication::arguments().value(1));
    if (!file.open(QFile::WriteOnly) || file.write(page.toUtf8()) < 0) {
        std::fputs("The page cannot be written.\n", stderr);
        return 1;
    }
    return 0;
}
