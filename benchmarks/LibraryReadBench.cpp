#include "benchmarks/Lateness.h"
#include "benchmarks/Report.h"
#include "benchmarks/ServedApart.h"
#include "main/App/Preferences.h"
#include "main/App/Session.h"
#include "platform/async/Clock.h"
#include "suno/Engine.h"
#include "suno/LibraryExport.h"
#include "suno/SaveClip.h"
#include "suno/TrackNames.h"
#include "trackfiles/keys/TrackKeys.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QSet>
#include <QTemporaryDir>

#include <cstdio>
#include <ctime>
#include <filesystem>
#include <memory>

namespace {

using namespace orvane;
using namespace orvane::bench;
using namespace Qt::Literals::StringLiterals;

/// Seconds that the processor has worked for this process, on all its threads.
double processorSeconds()
{
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

/// A reader on a service of its own.
struct Reader
{
    explicit Reader(const demo::LibraryOptions& options)
        : served(options)
        , engine(client, clock, served.endpoints())
    {
        engine.pagePauseMs = 0;
    }

    ServedApart served;
    SystemClock clock;
    HttpClient client;
    Engine engine;
};

int distinct(const QList<Clip>& clips)
{
    QSet<QString> ids;
    for (const Clip& clip : clips)
        ids.insert(clip.id);
    return static_cast<int>(ids.size());
}

constexpr int libraryTracks = 50'000;
const demo::LibraryOptions wholeLibrary{.tracks = libraryTracks, .lyricsBytes = 1500};

void measureReading()
{
    Reader reader(wholeLibrary);
    const double memory = residentMebibytes();
    const double processor = processorSeconds();
    const double start = seconds();
    const QList<Clip> clips = QCoro::waitFor(reader.engine.fetchAllClips({}, {}));
    report("library read, 50,000 clips: wall", seconds() - start, "s");
    report("library read, 50,000 clips: outside the network", processorSeconds() - processor, "s of processor");
    report("library read, 50,000 clips: memory growth", residentMebibytes() - memory, "MiB");
    report("library read, 50,000 clips: distinct clips", distinct(clips), "clips", "clips served", libraryTracks);
}

/// A run of its own: looking at the event loop every millisecond is work as well.
void measureTurnsOfReading()
{
    Reader reader(wholeLibrary);
    const Lateness lateness;
    QCoro::waitFor(reader.engine.fetchAllClips({}, {}));
    report("library read: lateness of the event loop, 99th percentile", lateness.percentile99(), "ms");
    report("library read: lateness of the event loop, worst", lateness.worst(), "ms");
    report("library read: longest turn of the event loop", lateness.longestTurn(), "ms of processor");
}

void measureDownloads()
{
    constexpr int tracks = 250;
    Reader reader({.tracks = tracks, .assetBytes = 500'000});
    const QTemporaryDir folder;
    const QList<Clip> clips = QCoro::waitFor(reader.engine.fetchAllClips({}, {}));
    const Lateness lateness;
    const double start = seconds();
    int problems = 0;
    const SaveOrder order{.assets = {Asset::audio, Asset::artwork}, .folder = folder.path(), .token = {}};
    for (int index = 0; index < clips.size(); ++index) {
        const ClipNames names = clipNames(clips[index], index, {});
        problems += QCoro::waitFor(saveClip(reader.engine, clips[index], order, names.base, names.safeTitle)).problems;
    }
    report("500 assets: wall", seconds() - start, "s");
    report("500 assets: problems", problems, "assets");
    report("500 assets: lateness of the event loop, 99th percentile", lateness.percentile99(), "ms");
    report("500 assets: lateness of the event loop, worst", lateness.worst(), "ms");
    report("500 assets: longest turn of the event loop", lateness.longestTurn(), "ms of processor");
}

void writeFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QFile::WriteOnly) || file.write("x") != 1)
        qFatal("The measurement cannot write its files.");
}

void fill(const QString& folder, int files)
{
    static const QString endings[] = {u".mp3"_s, u" lyrics.txt"_s, u".lrc"_s, u".jpg"_s};
    for (int index = 0; index < files; ++index) {
        const QString number = u"%1"_s.arg(index / 4 + 1, 3, 10, QChar(u'0'));
        writeFile(folder + u'/' + number + u" - A Song of Number "_s + number + endings[index % 4]);
    }
}

double bareWalk(const QString& folder)
{
    const double start = seconds();
    std::size_t bytes = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder.toStdString()))
        bytes += entry.path().filename().native().size();
    return bytes > 0 ? seconds() - start : 0;
}

void measureExistingFiles()
{
    const QTemporaryDir folder;
    fill(folder.path(), 20'000);
    ExistingFiles::byTitle(folder.path());
    const double walk = bareWalk(folder.path());
    const double start = seconds();
    const QHash<QString, QString> existing = ExistingFiles::byTitle(folder.path());
    report("existing files by title, 20,000 files", 1000 * (seconds() - start), "ms", "bare directory walk",
           1000 * walk);
    report("existing files by title: titles found", static_cast<double>(existing.size()), "titles", "titles there",
           5000);
}

/// Every file that an export of these clips leaves.
void writeExport(const QString& folder, const QList<Clip>& clips)
{
    for (int index = 0; index < clips.size(); ++index) {
        const QString base = folder + u'/' + clipNames(clips[index], index, {}).base;
        for (const QString& ending : {u".mp3"_s, u" lyrics.txt"_s, u".lrc"_s, u".jpg"_s, u".png"_s, u".webp"_s})
            writeFile(base + ending);
    }
}

/// Behind the read; the service is gone by then, so that each request would be a problem.
void measureSecondExport()
{
    constexpr int tracks = 5000;
    auto reader = std::make_unique<Reader>(demo::LibraryOptions{.tracks = tracks, .assetBytes = 2000});
    const QList<Clip> clips = QCoro::waitFor(reader->engine.fetchAllClips({}, {}));
    const QTemporaryDir folder;
    writeExport(folder.path(), clips);
    SystemClock clock;
    HttpClient client;
    Engine engine(client, clock, reader->served.endpoints());
    reader.reset();

    const double start = seconds();
    const QHash<QString, QString> existing = ExistingFiles::byTitle(folder.path());
    int problems = 0;
    const SaveOrder order{
        .assets = {Asset::audio, Asset::lyrics, Asset::lrc, Asset::artwork}, .folder = folder.path(), .token = {}};
    for (int index = 0; index < clips.size(); ++index) {
        const ClipNames names = clipNames(clips[index], index, existing);
        problems += QCoro::waitFor(saveClip(engine, clips[index], order, names.base, names.safeTitle)).problems;
    }
    report("second export of 5,000 tracks, behind the read", seconds() - start, "s");
    report("second export of 5,000 tracks: requests", problems, "requests");
}

/// A window's part in an export of a vast library that is on disk already: how long its thread is kept from a frame.
void measureVastSecondExport()
{
    constexpr int tracks = 50'000;
    const QTemporaryDir folder;
    const demo::LibraryOptions library{.tracks = tracks, .lyricsBytes = 1500};
    {
        const demo::Library made(library);
        for (int index = 0; index < tracks; ++index) {
            const Clip clip{.title = made.at(index).title};
            writeFile(folder.path() + u'/' + clipNames(clip, index, {}).base + u".lrc"_s);
        }
    }
    Reader reader(library);
    const QTemporaryDir home;
    Preferences preferences(home.filePath(u"preferences.json"_s));
    Session session(preferences);
    session.setToken(u"any"_s);
    session.setDestination(QUrl::fromLocalFile(folder.path()));
    LibraryExport exporter(session, reader.engine, reader.clock);
    QEventLoop loop;
    QObject::connect(&exporter, &LibraryExport::ended, &loop, &QEventLoop::quit, Qt::QueuedConnection);
    const Lateness lateness;
    exporter.toggle({.workspace = {}, .assets = {Asset::lrc}});
    loop.exec();
    report("second export of 50,000 tracks: lateness of the event loop, 99th percentile", lateness.percentile99(),
           "ms");
    report("second export of 50,000 tracks: lateness of the event loop, worst", lateness.worst(), "ms");
    report("second export of 50,000 tracks: longest turn of the event loop", lateness.longestTurn(), "ms of processor");
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    if (const auto served = ServedApart::serveIfAsked(argc, argv))
        return *served;
    measureReading();
    measureTurnsOfReading();
    measureDownloads();
    measureExistingFiles();
    measureSecondExport();
    measureVastSecondExport();
    return 0;
}
