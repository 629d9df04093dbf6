#pragma once

#include "automation/Automater.h"
#include "demonstration/service/StandInService.h"
#include "main/App/Preferences.h"
#include "main/App/Session.h"
#include "platform/desktop/Notifier.h"
#include "platform/desktop/SleepInhibitor.h"
#include "platform/network/HttpClient.h"
#include "tests/support/ManualTicker.h"
#include "tests/support/TestClock.h"

#include <QDBusConnection>
#include <QTemporaryDir>

#include <functional>
#include <gmock/gmock.h>
#include <memory>
#include <ostream>

namespace orvane {

void PrintTo(const LogLevel& level, std::ostream* out);
void PrintTo(const StageState& state, std::ostream* out);

} // namespace orvane

namespace orvane::test {

/// The library of the tests: plain tracks with recordings of one second.
demo::LibraryOptions shortTracks(int count);

/// The next `times` requests whose target holds `where` are answered with `status`.
demo::Fault answering(int status, const QString& where, int times = 1);

/// A run and a watcher on a stand-in library. Everything that a run says is written down as one line of text: a line of
/// the log as "level: message", a stage as "> name: kind, note".
class AutomationFixture : public testing::Test
{
protected:
    explicit AutomationFixture(int tracks = 2);

    /// Makes the automater anew, as at a launch of the program.
    void launch();
    /// Makes it anew with the desktop's services behind `bus`; without this nothing answers.
    void useDesktop(const QDBusConnection& bus);
    /// Starts a run and waits for its end.
    void runToTheEnd();
    /// Runs the event loop until `condition` holds; false after a minute.
    bool waitUntil(const std::function<bool()>& condition) const;

    AutomaterRun& run() { return automater->run(); }

    Watcher& watcher() { return automater->watcher(); }

    StageState outcome(Stage stage) { return run().outcomes().value(stage); }

    /// The lines without those of the engine's reading.
    QStringList told() const;
    /// The lines of the log among them.
    QStringList logged() const;

    QString folder() const { return home.filePath(QStringLiteral("Export")); }

    QString path(const QString& name) const { return folder() + u'/' + name; }

    /// Names of the files in the folder or in a folder of it, hidden ones too.
    QStringList files(const QString& below = {}) const;
    void write(const QString& name, const QByteArray& bytes) const;
    QByteArray read(const QString& name) const;
    /// An MP3 of one second.
    QByteArray recording() const;
    void select(const QString& name);

    demo::StandInService service;
    QTemporaryDir home;
    Preferences preferences{home.filePath(QStringLiteral("preferences.json"))};
    Session session{preferences};
    HttpClient client;
    TestClock clock;
    ManualTicker ticker;
    std::unique_ptr<Notifier> notifier;
    std::unique_ptr<SleepInhibitor> sleep;
    RunChoices choices{.source = RunSource::download, .rename = true, .tag = true, .master = true};
    AssetSet assets{Asset::audio, Asset::lyrics, Asset::lrc, Asset::artwork};
    QString workspace;
    std::unique_ptr<Automater> automater;

    QStringList lines;
    QList<RunProgress> progress;
    QList<RunSummary> summaries;
    /// Hears each line as it is written down.
    std::function<void(const QString& line)> onLine;
    std::function<void(const RunProgress&)> onProgress;
};

} // namespace orvane::test
