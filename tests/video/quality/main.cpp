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

constexpr double seconds = 10.0;
constexpr int rate = 44100;

struct Way
{
    const char* preset;
    const char* tuning;
    const char* parameters;
};

constexpr char still[] = "bframes=0:weightp=0:scenecut=0";
constexpr char whole[] = "bframes=0:weightp=0:scenecut=0:subme=0";
constexpr char wholeEven[] = "bframes=0:weightp=0:scenecut=0:subme=0:aq-strength=0.5";
constexpr char wholeFlat[] = "bframes=0:weightp=0:scenecut=0:subme=0:aq-mode=0";

constexpr Way ways[] = {{"ultrafast", "", ""},           {"superfast", "", ""},        {"superfast", "", still},
                        {"superfast", "", whole},        {"superfast", "", wholeEven}, {"superfast", "", wholeFlat},
                        {"superfast", "stillimage", ""}, {"veryfast", "", ""}};

/// The mean and the worst likeness of the frames, from 0 to 1.
struct Likeness
{
    double mean = 0.0;
    double worst = 0.0;
};

double processorSeconds()
{
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    const auto of = [](const timeval& time) { return double(time.tv_sec) + double(time.tv_usec) / 1e6; };
    return of(usage.ru_utime) + of(usage.ru_stime);
}

/// The frames of the track, one after the other.
void forFrames(const std::vector<float>& track, const std::function<void(VideoPicture&)>& use)
{
    Video::FramePainter painter(u"orvane.example"_s);
    const Video::Scene scene{
        .artwork = test::sunset(1024), .title = u"Night Drive"_s, .artist = u"synthwave · neon · 1984"_s};
    Video::FrameSequence frames(painter, scene, {});
    Video::Analyser analyser(1024, 0.8F);
    const Video::FrameGrid grid = Video::frameGrid(std::int64_t(track.size()), rate, 30);
    for (std::int64_t frame = 0; frame < grid.frameCount; ++frame)
        use(frames.next(analyser.magnitudes(Video::samplesOf(frame, grid, track, 1024))));
}

void writeVideo(const Way& way, const std::vector<float>& track, const QString& path)
{
    VideoSettings settings = VideoEngine::settingsOf({});
    settings.channelCount = 1;
    settings.preset = way.preset;
    settings.tuning = way.tuning;
    settings.parameters = way.parameters;
    VideoFile file(path, path + u".new"_s, settings);
    file.append(SoundPlanes{track});
    file.markAsFinished(VideoFile::Track::Sound);
    forFrames(track, [&](VideoPicture& picture) { file.append(picture); });
    file.markAsFinished(VideoFile::Track::Picture);
    file.finish();
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

Likeness likenessOf(const QString& path, const std::vector<float>& track, const QString& folder)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(u"ffmpeg"_s,
                  {u"-v"_s, u"error"_s, u"-y"_s, u"-i"_s, path, u"-f"_s, u"yuv4mpegpipe"_s, u"-i"_s, u"-"_s,
                   u"-lavfi"_s, u"[0:v][1:v]ssim=stats_file=likeness.txt"_s, u"-an"_s, u"-f"_s, u"null"_s, u"-"_s});
    process.write("YUV4MPEG2 W1080 H1920 F30:1 Ip A1:1 C420jpeg\n");
    forFrames(track, [&](VideoPicture& picture) { writePlanes(picture, process); });
    process.closeWriteChannel();
    process.waitForFinished(-1);
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
    const double start = processorSeconds();
    writeVideo(way, track, path);
    const double taken = processorSeconds() - start;
    const Likeness likeness = likenessOf(path, track, folder);
    const VideoSettings chosen;
    const bool isOurs =
        chosen.preset == way.preset && chosen.tuning == way.tuning && chosen.parameters == way.parameters;
    const auto orNone = [](const char* text) { return *text ? QString::fromLatin1(text) : u"—"_s; };
    return u"| %1%2 | %3 | %4 | "_s.arg(QLatin1StringView(way.preset), isOurs ? u" (ours)"_s : QString(),
                                        orNone(way.tuning), orNone(way.parameters)) +
           u"%1 | %2 | %3 | %4 |\n"_s.arg(likeness.mean, 0, 'f', 4)
               .arg(likeness.worst, 0, 'f', 4)
               .arg(2.0 * seconds / taken, 0, 'f', 1)
               .arg(double(QFile(path).size()) * 8.0 / 1000.0 / seconds, 0, 'f', 0);
}

constexpr char beforeTable[] =
    R"(# What the encoder's settings cost and give

`orvane-video-quality FILE` wrote this page: 10 s of made music as a portrait video at 228096 bit/s, 300 frames, once for
each way to set the encoder. Likeness is the structural similarity of the decoded frames to the frames as painted, over
luma and chroma: the mean, and the worst frame. Times real time is what two processors would give, from the processor time
of painting and encoding; work beside it slows that too, so that rows compare and machines do not. The last column is the
whole file with its sound.

| Preset | Tuning | Besides | Mean likeness | Worst frame | Times real time | kbit/s |
|---|---|---|---|---|---|---|
)";

constexpr char belowTable[] = R"(
Ours is superfast, told what the picture is. No frames predicted from both sides, no weighted prediction, no search for
cuts, no search between pixels: nothing here moves by parts of a pixel, and nothing is cut. Half the strength with which
bits are moved to flat areas: more of them stay at the edges of text and artwork. Mean and worst frame, which is one where
the glow changes its level, are no less like than those of superfast as it comes. Where no bits are moved at all
(aq-mode=0), and with ultrafast, the worst frame is the less like for it; veryfast brings it two thousandths nearer and
takes nearly twice as long.
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
