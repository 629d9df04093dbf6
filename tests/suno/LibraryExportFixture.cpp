#include "tests/suno/LibraryExportFixture.h"

#include <QDir>
#include <QSignalSpy>

namespace orvane {

void PrintTo(const LogLevel& level, std::ostream* out)
{
    *out << (level == LogLevel::info ? "info" : level == LogLevel::success ? "success" : "error");
}

} // namespace orvane

namespace orvane::test {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;
using demo::Fault;

namespace {

/// A library of `count` tracks on pages of five, with recordings of a few bytes.
demo::LibraryOptions smallLibrary(int count)
{
    return {.tracks = count, .pageSize = 5, .assetBytes = 2000};
}

} // namespace

const Line stopping = error(u"Stopping…"_s);
const Line stopped = error(u"Stopped. Anything already saved was kept — starting again resumes from here."_s);
const Line incomplete = error(u"Incomplete — Suno stopped returning pages, so this is only part of the library. Run it "
                              "again to pick up the rest."_s);
const Line nothingTicked = error(u"Nothing selected to download — tick at least one asset."_s);
const Line noTracksRead = error(u"No tracks read — Suno returned an error before any page came back."_s);

const AssetSet everything{Asset::audio, Asset::lyrics, Asset::lrc, Asset::artwork};

void PrintTo(const Line& line, std::ostream* out)
{
    *out << line.message.toStdString() << " @";
    PrintTo(line.level, out);
}

Line info(const QString& message)
{
    return {message, LogLevel::info};
}

Line success(const QString& message)
{
    return {message, LogLevel::success};
}

Line error(const QString& message)
{
    return {message, LogLevel::error};
}

QList<Line> readingOfSeven()
{
    return {info(u"Querying page 1…"_s), info(u"Page 1: 5 tracks (total 5)"_s),
            info(u"Querying page 2…"_s), info(u"Page 2: 2 tracks (total 7)"_s),
            info(u"Querying page 3…"_s), success(u"Found 7 tracks."_s)};
}

Fault answering(int status, const QString& where, int times)
{
    Fault fault;
    fault.where = where;
    fault.times = times;
    fault.status = status;
    return fault;
}

Fault silent(const QString& where, int times)
{
    Fault fault;
    fault.kind = Fault::Kind::silence;
    fault.where = where;
    fault.times = times;
    return fault;
}

LibraryExportFixture::LibraryExportFixture(int tracks)
    : service(smallLibrary(tracks))
{
    service.setTokenLifetime(1h);
    session.setDestination(QUrl::fromLocalFile(folder()));
    session.setToken(service.currentToken());
    listen();
}

void LibraryExportFixture::listen()
{
    QObject::connect(exporter.get(), &LibraryExport::logged, exporter.get(),
                     [this](const QString& message, LogLevel level) {
                         lines.append({message, level});
                         if (onLine)
                             onLine(lines.last());
                     });
    QObject::connect(exporter.get(), &LibraryExport::progressed, exporter.get(),
                     [this](const ExportProgress& progress) {
                         steps.append(progress);
                         if (onStep)
                             onStep(progress);
                     });
    QObject::connect(exporter.get(), &LibraryExport::ended, exporter.get(),
                     [this](const ExportResult& result) { results.append(result); });
}

QString LibraryExportFixture::folder() const
{
    return home.filePath(u"Export/deep"_s);
}

QStringList LibraryExportFixture::files() const
{
    return QDir(folder()).entryList(QDir::Files | QDir::Hidden);
}

QStringList LibraryExportFixture::recordings() const
{
    return QDir(folder()).entryList({u"*.mp3"_s}, QDir::Files);
}

bool LibraryExportFixture::waitForEnd(int runs)
{
    QSignalSpy ended(exporter.get(), &LibraryExport::ended);
    while (results.size() < runs && ended.wait(30'000)) {
    }
    return results.size() == runs;
}

void LibraryExportFixture::runToTheEnd(const AssetSet& assets, const QString& workspace)
{
    const auto runs = static_cast<int>(results.size());
    exporter->toggle({.workspace = workspace, .assets = assets});
    ASSERT_TRUE(waitForEnd(runs + 1));
}

void LibraryExportFixture::stopAtLine(const QString& message)
{
    onLine = [this, message](const Line& line) {
        if (line.message == message)
            exporter->toggle({});
    };
}

void LibraryExportFixture::stopAtTrack(int position)
{
    onStep = [this, position](const ExportProgress& progress) {
        if (progress.done == position)
            exporter->toggle({});
    };
}

QStringList LibraryExportFixture::assetRequests() const
{
    QStringList targets;
    for (const demo::SeenRequest& request : service.requests()) {
        const QString target = QString::fromUtf8(request.target);
        if (!target.startsWith(u"/api/"))
            targets.append(target);
    }
    return targets;
}

} // namespace orvane::test
