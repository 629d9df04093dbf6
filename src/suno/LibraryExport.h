#pragma once

#include "platform/async/TaskScope.h"
#include "suno/Asset.h"
#include "suno/LogLevel.h"
#include "suno/SaveClips.h"

#include <QObject>
#include <QString>
#include <qcoro/qcorotask.h>

namespace orvane {

class Clock;
class Engine;
class Session;

/// What to read, and what to save of it.
struct ExportOrder
{
    /// A project's identifier, or empty for the whole library.
    QString workspace;
    AssetSet assets;

    bool operator==(const ExportOrder&) const = default;
};

/// How an export ended.
struct ExportResult
{
    enum class Ending
    {
        failed,
        nothingTicked,
        noTracks,
        stopped,
        incomplete,
        withProblems,
        done
    };

    Ending ending = Ending::failed;
    /// Tracks to save; 0 where the export ended before it came to saving.
    int tracks = 0;
    /// Assets that could not be saved.
    int problems = 0;
    /// The sentence that the log closed with.
    QString sentence;
    /// The absolute path that it saved to.
    QString folder;
    /// The user asked for the end, whatever the sentence is.
    bool wasStopped = false;

    bool operator==(const ExportResult&) const = default;
};

/// The batch export of a library into the session's destination: records in, lines and progress out, no window.
///
/// One export runs at a time. Everything happens on the main thread but the file work, which is awaited. The session,
/// the engine and the clock outlive it; the engine is used by nobody else for a run. Destroying it stops a run and
/// waits for its end.
class LibraryExport : public QObject
{
    Q_OBJECT

public:
    LibraryExport(Session& session, Engine& engine, Clock& clock, QObject* parent = nullptr);
    ~LibraryExport() override;

    bool isRunning() const { return running_; }

    /// Stops a running export; else starts one, unless there is no token or the Automater is at work, which is said in
    /// the log and changes nothing.
    void toggle(const ExportOrder& order);

Q_SIGNALS:
    void logged(const QString& message, orvane::LogLevel level);
    void progressed(const orvane::ExportProgress& progress);
    void runningChanged(bool running);
    /// After `runningChanged(false)`.
    void ended(const orvane::ExportResult& result);

private:
    /// What a run was started with; a change of the session's folder is for the next.
    struct Run
    {
        ExportOrder order;
        QString folder;
        QString token;
    };

    void start(const ExportOrder& order);
    void stop();
    QCoro::Task<> run(ExportOrder order);
    QCoro::Task<ExportResult> exportLibrary(Run current);
    void connectEngine();
    void log(const QString& message, LogLevel level);
    ExportResult conclude(ExportResult::Ending ending, const QString& sentence, LogLevel level = LogLevel::error);
    ExportResult concludeSaving(const SavedClips& saved, int tracks, bool isWhole);
    void finish(const ExportResult& result);

    Session& session_;
    Engine& engine_;
    Clock& clock_;
    bool running_ = false;
    TaskScope scope_;
};

} // namespace orvane
