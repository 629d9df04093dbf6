#include "benchmarks/Report.h"
#include "demonstration/music/Song.h"
#include "mastering/Master.h"
#include "video/FrameSequence.h"
#include "video/VideoEngine.h"
#include "video/arithmetic/FrameGrid.h"

#include <QFile>
#include <QGuiApplication>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

using namespace orvane;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double seconds = 60.0;

void run(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(program, arguments);
    if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        std::fprintf(stderr, "%s failed\n", qUtf8Printable(program));
        std::exit(1);
    }
}

/// A minute of a recording, or where there is none of a song of our own, as a WAV file.
void writeTrack(const QString& path, double length)
{
    const QString recording = QStringLiteral(ORVANE_RECORDINGS "/vibe-ace.mp3");
    if (QFile::exists(recording)) {
        run(u"ffmpeg"_s,
            {u"-y"_s, u"-stream_loop"_s, u"-1"_s, u"-i"_s, recording, u"-t"_s, QString::number(length), path});
        return;
    }
    const Channels song = demo::compose({.bpm = 124, .tonic = 9, .minor = true, .seconds = length, .leadIn = 0.7});
    Master::write(song, demo::sampleRate, {.format = Master::Format::mp3}, path);
}

double renderSeconds(VideoEngine& engine, const QString& track, const QString& artwork, const QString& video)
{
    const double start = bench::seconds();
    engine.render(QUrl::fromLocalFile(track), QUrl::fromLocalFile(artwork), u"Night Drive"_s, u"synthwave"_s, {},
                  QUrl::fromLocalFile(video));
    return bench::seconds() - start;
}

/// The nearest thing that is made of ready parts: a still picture with a spectrum of bars on it, encoded alike.
double pipelineSeconds(const QString& track, const QString& still, const QString& video)
{
    const VideoSettings settings = VideoEngine::settingsOf({});
    const double start = bench::seconds();
    run(u"ffmpeg"_s,
        {u"-y"_s,
         u"-loop"_s,
         u"1"_s,
         u"-framerate"_s,
         u"30"_s,
         u"-i"_s,
         still,
         u"-i"_s,
         track,
         u"-filter_complex"_s,
         u"[1:a]showfreqs=s=908x308:rate=30:mode=bar:win_size=1024:ascale=log:fscale=log[f];[0:v][f]overlay=86:1382"_s,
         u"-map"_s,
         u"1:a"_s,
         u"-c:v"_s,
         u"libx264"_s,
         u"-preset"_s,
         QString::fromLatin1(settings.preset),
         u"-profile:v"_s,
         u"high"_s,
         u"-pix_fmt"_s,
         u"yuv420p"_s,
         u"-b:v"_s,
         QString::number(settings.bitRate),
         u"-g"_s,
         QString::number(settings.keyFrameInterval),
         u"-c:a"_s,
         u"aac"_s,
         u"-b:a"_s,
         u"192k"_s,
         u"-ar"_s,
         u"44100"_s,
         u"-ac"_s,
         u"2"_s,
         u"-shortest"_s,
         u"-movflags"_s,
         u"faststart"_s,
         video});
    return bench::seconds() - start;
}

/// Seconds that the spectra and the pictures of the track take, without encoding.
double paintingSeconds(const QString& track)
{
    const Video::MonoSamples mono = Video::monoSamples(QUrl::fromLocalFile(track));
    const Video::FrameGrid grid = Video::frameGrid(std::int64_t(mono.samples.size()), mono.rate, 30);
    Video::FramePainter painter(u"orvane.example"_s);
    const double start = bench::seconds();
    Video::FrameSequence frames(painter, {.artwork = {}, .title = u"Night Drive"_s, .artist = u"synthwave"_s}, {});
    Video::Analyser analyser(1024, 0.8F);
    for (std::int64_t frame = 0; frame < grid.frameCount; ++frame)
        frames.next(analyser.magnitudes(Video::samplesOf(frame, grid, mono.samples, 1024)));
    return bench::seconds() - start;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QTemporaryDir folder;
    const QString track = folder.filePath(u"track.mp3"_s);
    const QString video = folder.filePath(u"video.mp4"_s);
    const QString still = folder.filePath(u"still.png"_s);
    QImage picture(1080, 1920, QImage::Format_RGB32);
    {
        QPainter context(&picture);
        Video::FramePainter(u"orvane.example"_s)
            .drawStill(context, picture.size(), 3, {.artwork = {}, .title = u"Night Drive"_s, .artist = {}}, {});
    }
    picture.save(still);
    writeTrack(track, seconds);
    VideoEngine engine(u"orvane.example"_s);
    double ours = 1e9;
    double pipeline = 1e9;
    for (int round = 0; round < 2; ++round) {
        pipeline = std::min(pipeline, pipelineSeconds(track, still, video));
        ours = std::min(ours, renderSeconds(engine, track, still, video));
    }
    bench::report("render a portrait video of 60 s, times real time", seconds / ours, "x", "ffmpeg showfreqs",
                  seconds / pipeline);
    bench::report("of which spectra and pictures, alone", paintingSeconds(track), "s", "the whole render", ours);
    const QString longTrack = folder.filePath(u"long.mp3"_s);
    writeTrack(longTrack, 240.0);
    renderSeconds(engine, longTrack, still, video);
    bench::report("largest memory with a track of 4 min", bench::peakResidentMebibytes(), "MiB");
}
