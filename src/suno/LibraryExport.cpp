#include "suno/LibraryExport.h"

#include "main/App/L10n.h"
#include "main/App/Session.h"
#include "platform/async/FreedOnPool.h"
#include "platform/filesystem/DestinationTest.h"
#include "platform/filesystem/StagingLeftovers.h"
#include "platform/network/Redaction.h"
#include "suno/Engine.h"

#include <QtConcurrentRun>
#include <qcoro/qcorofuture.h>

#include <utility>

namespace orvane {

using namespace Qt::Literals::StringLiterals;
using Ending = ExportResult::Ending;

namespace {

/// Makes the folder ready; gives the sentence of the refusal, or nothing.
QString prepare(const QString& folder)
{
    try {
        destinationWriteTest(folder);
        removeStagingLeftovers(folder);
        return {};
    } catch (const FileError& refusal) {
        return refusal.sentence();
    }
}

QCoro::Task<QList<PlannedTrack>> planned(QList<Clip> clips, QString folder)
{
    auto planning = QtConcurrent::run(planExport, clips, folder);
    QList<PlannedTrack> plan = co_await planning;
    co_return plan;
}

QString filled(L10n::Key key, int number)
{
    return L10n::t(key, {QString::number(number)});
}

} // namespace

LibraryExport::LibraryExport(Session& session, Engine& engine, Clock& clock, QObject* parent)
    : QObject(parent)
    , session_(session)
    , engine_(engine)
    , clock_(clock)
{
}

LibraryExport::~LibraryExport()
{
    blockSignals(true);
    engine_.stop();
    engine_.onLog = nullptr;
    engine_.tokenProvider = nullptr;
}

void LibraryExport::toggle(const ExportOrder& order)
{
    if (running_)
        stop();
    else if (session_.token().isEmpty())
        log(L10n::t(L10n::Key::noSession), LogLevel::error);
    else if (session_.automationInProgress)
        log(L10n::t(L10n::Key::automaterBusy), LogLevel::error);
    else
        start(order);
}

void LibraryExport::stop()
{
    engine_.stop();
    log(L10n::t(L10n::Key::log41), LogLevel::error);
}

void LibraryExport::start(const ExportOrder& order)
{
    running_ = true;
    session_.downloadInProgress = true;
    Q_EMIT runningChanged(true);
    engine_.reset();
    scope_.add(run(order));
}

QCoro::Task<> LibraryExport::run(ExportOrder order)
{
    const Run current{.order = order, .folder = session_.destination().toLocalFile(), .token = session_.token()};
    connectEngine();
    ExportResult result;
    try {
        result = co_await exportLibrary(current);
    } catch (const LibraryError& error) {
        result = conclude(Ending::failed, error.sentence());
    } catch (const FileError& error) {
        result = conclude(Ending::failed, error.sentence());
    } catch (const std::exception& error) {
        result = conclude(Ending::failed, redacted(QString::fromLocal8Bit(error.what())));
    }
    result.folder = current.folder;
    result.wasStopped = engine_.isStopping();
    finish(result);
}

QCoro::Task<ExportResult> LibraryExport::exportLibrary(Run current)
{
    const QFuture<QString> prepared = QtConcurrent::run(prepare, current.folder);
    const QString refusal = co_await prepared;
    if (!refusal.isEmpty())
        co_return conclude(Ending::failed, refusal);

    QList<Clip> read = co_await engine_.fetchAllClips(current.order.workspace, current.token);
    const FreedOnPool<QList<Clip>> clips(std::move(read));
    const bool isWhole = engine_.lastFetchComplete();
    const int tracks = static_cast<int>(clips->size());
    log(filled(L10n::Key::log42, tracks), isWhole ? LogLevel::success : LogLevel::error);
    if (current.order.assets.isEmpty())
        co_return conclude(Ending::nothingTicked, L10n::t(L10n::Key::nothingTicked));
    if (clips->isEmpty() && isWhole)
        co_return conclude(Ending::noTracks, u"That workspace has no tracks."_s);
    // Nobody but the user kept the first page away.
    if (clips->isEmpty() && engine_.isStopping())
        co_return conclude(Ending::stopped, L10n::t(L10n::Key::log47));
    if (clips->isEmpty())
        co_return conclude(Ending::noTracks, L10n::t(L10n::Key::noTracksRead));

    QList<PlannedTrack> named = co_await planned(*clips, current.folder);
    const FreedOnPool<QList<PlannedTrack>> plan(std::move(named));
    const SaveOrder order{.assets = current.order.assets, .folder = current.folder, .token = current.token};
    const std::function<void(const ExportProgress&)> announce = [this](const ExportProgress& progress) {
        Q_EMIT progressed(progress);
    };
    const SavedClips saved = co_await saveClips(engine_, clock_, order, *clips, *plan, announce);
    co_return concludeSaving(saved, tracks, isWhole);
}

void LibraryExport::connectEngine()
{
    engine_.onLog = [this](const QString& message, LogLevel level) { log(message, level); };
    engine_.tokenProvider = [this] { return session_.token(); };
}

void LibraryExport::log(const QString& message, LogLevel level)
{
    Q_EMIT logged(message, level);
}

ExportResult LibraryExport::conclude(Ending ending, const QString& sentence, LogLevel level)
{
    log(sentence, level);
    return {.ending = ending, .tracks = 0, .problems = 0, .sentence = sentence, .folder = {}};
}

ExportResult LibraryExport::concludeSaving(const SavedClips& saved, int tracks, bool isWhole)
{
    ExportResult result;
    if (saved.stopped)
        result = conclude(Ending::stopped, L10n::t(L10n::Key::log47));
    else if (!isWhole)
        result = conclude(Ending::incomplete, L10n::t(L10n::Key::log48));
    else if (saved.problems == 0)
        result = conclude(Ending::done, filled(L10n::Key::log50, tracks), LogLevel::success);
    else
        result = conclude(Ending::withProblems, filled(L10n::Key::log49, saved.problems));
    result.tracks = tracks;
    result.problems = saved.problems;
    Q_EMIT session_.filesChanged();
    return result;
}

void LibraryExport::finish(const ExportResult& result)
{
    session_.downloadInProgress = false;
    running_ = false;
    Q_EMIT runningChanged(false);
    Q_EMIT ended(result);
}

} // namespace orvane
