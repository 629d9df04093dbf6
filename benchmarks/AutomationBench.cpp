#include "automation/view/AutomaterTab.h"
#include "benchmarks/Lateness.h"
#include "benchmarks/Report.h"
#include "demonstration/service/StandInService.h"
#include "main/App/Preferences.h"
#include "main/App/Session.h"
#include "main/Chrome/Dialogs.h"
#include "main/Chrome/Theme.h"
#include "mastering/Master.h"
#include "platform/async/Clock.h"
#include "platform/async/Ticker.h"
#include "platform/desktop/Notifier.h"
#include "platform/desktop/SleepInhibitor.h"
#include "platform/network/HttpClient.h"
#include "trackfiles/tags/Tags.h"

#include <QApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <ctime>
#include <fcntl.h>
#include <functional>
#include <limits>
#include <unistd.h>

namespace {

using namespace orvane;
using namespace Qt::Literals::StringLiterals;

constexpr int smallTracks = 1000;
constexpr int longTracks = 4;
constexpr double smallSeconds = 5;
constexpr double longSeconds = 90;
constexpr int rounds = 2;

void require(bool done)
{
    if (!done)
        qFatal("The measurement cannot read or write its files.");
}

void write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    require(file.open(QFile::WriteOnly) && file.write(bytes) == bytes.size());
}

QByteArray read(const QString& path)
{
    QFile file(path);
    require(file.open(QFile::ReadOnly));
    return file.readAll();
}

double processorSeconds()
{
    timespec used = {};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
    return static_cast<double>(used.tv_sec) + static_cast<double>(used.tv_nsec) / 1e9;
}

struct Cost
{
    double seconds = 0.0;
    /// Seconds of processor, on all threads together.
    double used = 0.0;
};

class Watch
{
public:
    Cost cost() const { return {.seconds = bench::seconds() - start_, .used = processorSeconds() - usedBefore_}; }

private:
    double start_ = bench::seconds();
    double usedBefore_ = processorSeconds();
};

Cost least(const Cost& one, const Cost& other)
{
    return {.seconds = std::min(one.seconds, other.seconds), .used = std::min(one.used, other.used)};
}

constexpr Cost unbounded{.seconds = std::numeric_limits<double>::infinity(),
                         .used = std::numeric_limits<double>::infinity()};

/// A recording, a cover and lyrics, of which every track is made.
struct Material
{
    explicit Material(double seconds)
    {
        const demo::StandInService service(
            {.tracks = 1, .plainOnly = true, .shortestSeconds = seconds, .longestSeconds = seconds});
        const demo::Track track = service.tracks().first();
        recording = service.audioOf(track.id);
        cover = service.artworkOf(track.id);
        lyrics = "Title: \nTags: slow\n\n" + service.lyricsOf(0).toUtf8();
    }

    QByteArray recording;
    QByteArray cover;
    QByteArray lyrics;
};

QString stemOf(int index)
{
    return u"%1 - Song %2"_s.arg(index + 1, 4, 10, QChar(u'0')).arg(index + 1, 4, 10, QChar(u'0'));
}

QString freshFolder(const QTemporaryDir& home, const Material& material, int tracks)
{
    QString folder = home.filePath(u"library"_s);
    QDir(folder).removeRecursively();
    require(QDir().mkpath(folder));
    for (int index = 0; index < tracks; ++index) {
        const QString stem = folder + u'/' + stemOf(index);
        write(stem + u".mp3"_s, material.recording);
        write(stem + u".jpg"_s, material.cover);
        write(stem + u".lrc"_s, material.lyrics);
        write(stem + u" lyrics.txt"_s, material.lyrics);
    }
    ::sync();
    return folder;
}

/// The Automater in a window, and all that it works with.
class Tool
{
public:
    explicit Tool(const QTemporaryDir& home)
        : preferences_(home.filePath(u"preferences.json"_s))
    {
        tab_.resize(tab_.minimumWidth(), 900);
        tab_.show();
        tab_.automater().run().configProvider = [this] {
            return PipelineConfig{.destination = session_.destination()};
        };
    }

    /// What a run over the folder takes.
    Cost run(const QString& folder, const RunChoices& choices)
    {
        session_.setDestination(QUrl::fromLocalFile(folder));
        AutomaterRun& run = tab_.automater().run();
        run.choicesProvider = [&choices] { return choices; };
        QEventLoop loop;
        bool isRight = false;
        const auto link = QObject::connect(&run, &AutomaterRun::finished, &loop, [&](const RunSummary& summary) {
            isRight = summary.isSuccess();
            loop.quit();
        });
        const Watch watch;
        run.toggle();
        loop.exec();
        const Cost cost = watch.cost();
        QObject::disconnect(link);
        require(isRight);
        return cost;
    }

private:
    Preferences preferences_;
    Session session_{preferences_};
    HttpClient client_;
    SystemClock clock_;
    SystemTicker ticker_;
    SystemDialogs dialogs_;
    Notifier notifier_{QDBusConnection(u"none"_s)};
    SleepInhibitor sleep_{QDBusConnection(u"none"_s), QDBusConnection(u"none"_s)};
    AutomaterTab tab_{{.session = session_,
                       .preferences = preferences_,
                       .client = client_,
                       .clock = clock_,
                       .ticker = ticker_,
                       .notifier = notifier_,
                       .sleep = sleep_,
                       .endpoints = {}},
                      dialogs_};
};

void flush(const QByteArray& path)
{
    const int file = ::open(path.constData(), O_RDONLY | O_CLOEXEC);
    require(file >= 0 && ::fsync(file) == 0);
    ::close(file);
}

/// What the file system takes for the same moves and the same bytes, with nothing in between.
Cost plainCost(const QString& folder, int tracks)
{
    const Watch watch;
    for (int index = 0; index < tracks; ++index) {
        for (const QString& ending : {u".jpg"_s, u".lrc"_s, u" lyrics.txt"_s, u".mp3"_s})
            require(QFile::rename(folder + u'/' + stemOf(index) + ending,
                                  folder + u"/Song %1"_s.arg(index + 1, 4, 10, QChar(u'0')) + ending));
    }
    for (int index = 0; index < tracks; ++index) {
        const QString stem = folder + u"/Song %1"_s.arg(index + 1, 4, 10, QChar(u'0'));
        const QByteArray cover = read(stem + u".jpg"_s);
        const QByteArray recording = read(stem + u".mp3"_s);
        const QByteArray staging = QFile::encodeName(stem + u".tagging"_s);
        write(QFile::decodeName(staging), cover + recording);
        flush(staging);
        require(::rename(staging.constData(), QFile::encodeName(stem + u".mp3"_s).constData()) == 0);
        flush(QFile::encodeName(folder));
    }
    return watch.cost();
}

void benchSmallTracks(Tool& tool, const QTemporaryDir& home)
{
    const Material material(smallSeconds);
    const RunChoices choices{.source = RunSource::folder, .rename = true, .tag = true};
    Cost ours = unbounded;
    Cost plain = unbounded;
    for (int round = 0; round < rounds; ++round) {
        ours = least(ours, tool.run(freshFolder(home, material, smallTracks), choices));
        plain = least(plain, plainCost(freshFolder(home, material, smallTracks), smallTracks));
    }
    const auto aTrack = [](double seconds) { return seconds * 1e3 / smallTracks; };
    bench::report("rename and tag 1,000 tracks", aTrack(ours.seconds), "ms a track", "the file system's own time",
                  aTrack(plain.seconds));
    bench::report("rename and tag 1,000 tracks, the chain's own cost", aTrack(ours.seconds - plain.seconds),
                  "ms a track");
    bench::report("rename and tag 1,000 tracks, of processor", aTrack(ours.used), "ms a track", "the file system's own",
                  aTrack(plain.used));
}

/// The same masters, one after the other, without a chain around them.
Cost masterAlone(const QString& folder)
{
    const MasteringTarget target = targetOf({});
    const Master::Output as{.format = target.format};
    require(QDir(folder).mkpath(u"Mastered"_s));
    const Watch watch;
    for (int index = 0; index < longTracks; ++index)
        Master::master(folder + u'/' + stemOf(index) + u".mp3"_s, folder + u"/Mastered/"_s + stemOf(index) + u".wav"_s,
                       target.platform.target, target.platform.ceiling, as);
    return watch.cost();
}

void benchMastering(Tool& tool, const QTemporaryDir& home)
{
    const Material material(longSeconds);
    const RunChoices choices{.source = RunSource::folder, .rename = true, .tag = true, .master = true};
    Cost ours = unbounded;
    Cost alone = unbounded;
    double processors = 0.0;
    for (int round = 0; round < rounds; ++round) {
        ours = least(ours, tool.run(freshFolder(home, material, longTracks), choices));
        const Cost mastered = masterAlone(freshFolder(home, material, longTracks));
        alone = least(alone, mastered);
        processors = std::max(processors, mastered.used / mastered.seconds);
    }
    bench::report("rename, tag and master 4 tracks of 90 s", ours.seconds, "s", "Master alone", alone.seconds);
    bench::report("of a run with mastering, inside Master", 100.0 * alone.seconds / ours.seconds, "%");
    bench::report("processors busy within a master", processors, "processors");
}

/// How late the window's event loop is while runs go.
void benchLateness(Tool& tool, const QTemporaryDir& home)
{
    const Material small(smallSeconds);
    const Material large(longSeconds);
    const QString folder = freshFolder(home, small, smallTracks);
    for (int index = 0; index < longTracks; ++index)
        write(folder + u'/' + stemOf(smallTracks + index) + u".mp3"_s, large.recording);
    {
        const bench::Lateness lateness;
        tool.run(folder, {.source = RunSource::folder, .rename = true, .tag = true});
        bench::report("lateness of the window while 1,004 tracks are renamed and tagged, 99 of 100",
                      lateness.percentile99(), "ms");
        bench::report("lateness of the window while 1,004 tracks are renamed and tagged, worst", lateness.worst(),
                      "ms");
        bench::report("its longest turn, of processor", lateness.longestTurn(), "ms");
    }
    const QString few = freshFolder(home, large, longTracks);
    const bench::Lateness lateness;
    tool.run(few, {.source = RunSource::folder, .rename = true, .tag = true, .master = true});
    bench::report("lateness of the window while 4 tracks are mastered, 99 of 100", lateness.percentile99(), "ms");
    bench::report("lateness of the window while 4 tracks are mastered, worst", lateness.worst(), "ms");
    bench::report("its longest turn, of processor", lateness.longestTurn(), "ms");
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    Theme::apply(application);
    const QTemporaryDir home;
    Tool tool(home);
    benchMastering(tool, home);
    benchSmallTracks(tool, home);
    benchLateness(tool, home);
}
