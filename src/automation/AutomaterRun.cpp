#include "automation/AutomaterRun.h"

#include "main/App/AppInfo.h"
#include "main/App/L10n.h"
#include "main/App/Session.h"
#include "platform/desktop/Notifier.h"
#include "platform/desktop/SleepInhibitor.h"
#include "platform/network/Redaction.h"
#include "video/VideoEngine.h"

#include <QtConcurrentRun>
#include <qcoro/qcorofuture.h>

#include <algorithm>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// What a source that lies on disk has to work on.
struct OnDisk
{
    int tracks = 0;
    int taggable = 0;
};

OnDisk countedOnDisk(const QList<SavedTrack>& tracks, const QString& folder)
{
    const FolderListing listing = FolderListing::of(folder);
    const auto isTaggable = [&listing](const SavedTrack& track) {
        return listing.audio(track.base).value_or(QString()).endsWith(u".mp3", Qt::CaseInsensitive);
    };
    return {.tracks = static_cast<int>(tracks.size()),
            .taggable = static_cast<int>(std::ranges::count_if(tracks, isTaggable))};
}

QString nothingOnDisk(RunSource source, const PipelineConfig& config)
{
    if (source == RunSource::selection)
        return u"no track is selected in Files"_s;
    return u"no tracks in "_s + Prerequisites::folderDetail(config.destination.toLocalFile());
}

QList<SavedTrack> savedOf(const QList<Clip>& clips, const QList<PlannedTrack>& plan, const SavedClips& result)
{
    QList<SavedTrack> saved;
    for (const int index : result.saved)
        saved.append({.clip = clips.at(index), .base = plan.at(index).names.base});
    return saved;
}

QStringList identifiersOf(const QList<SavedTrack>& saved)
{
    QStringList identifiers;
    for (const SavedTrack& track : saved)
        identifiers.append(track.clip.id);
    return identifiers;
}

QString savedNote(qsizetype saved, qsizetype count, int problems)
{
    if (problems == 0)
        return u"%1 tracks"_s.arg(count);
    return u"%1 of %2 tracks, %3 problem(s)"_s.arg(saved).arg(count).arg(problems);
}

} // namespace

AutomaterRun::AutomaterRun(const AutomationServices& services, QObject* parent)
    : QObject(parent)
    , services_(services)
    , engine_(services.client, services.clock, services.endpoints)
    , videoEngine_(std::make_unique<VideoEngine>(AppInfo::siteName()))
{
    engine_.onLog = [this](const QString& message, LogLevel level) { log(message, level); };
    engine_.tokenProvider = [this] { return services_.session.token(); };
}

AutomaterRun::~AutomaterRun()
{
    blockSignals(true);
    onOpenFolder = nullptr;
    isWatched = nullptr;
    engine_.stop();
    videoEngine_->stop();
}

RunChoices AutomaterRun::choices() const
{
    return choicesProvider ? choicesProvider() : RunChoices();
}

std::optional<PipelineConfig> AutomaterRun::config() const
{
    return configProvider ? configProvider() : std::nullopt;
}

QList<Prerequisite> AutomaterRun::livePrerequisites() const
{
    return orvane::livePrerequisites(prerequisites, choices().source);
}

void AutomaterRun::toggle()
{
    if (running_)
        return stop();
    const auto current = config();
    if (!current)
        return;
    const auto isMet = [](const Prerequisite& prerequisite) { return prerequisite.isMet(); };
    if (!std::ranges::all_of(livePrerequisites(), isMet))
        log(L10n::t(L10n::Key::log2), LogLevel::error);
    else if (services_.session.downloadInProgress)
        log(L10n::t(L10n::Key::log3), LogLevel::error);
    else
        start(*current);
}

void AutomaterRun::stop()
{
    if (!running_ || engine_.isStopping())
        return;
    engine_.stop();
    videoEngine_->stop();
    log(L10n::t(L10n::Key::log1), LogLevel::error);
}

void AutomaterRun::start(const PipelineConfig& config)
{
    begin(config);
    scope_.add(run(config));
}

void AutomaterRun::begin(const PipelineConfig& config)
{
    choices_ = choices();
    folder_ = config.destination.toLocalFile();
    services_.session.automationInProgress = true;
    running_ = true;
    engine_.reset();
    videoEngine_->reset();
    renamedStems_.clear();
    outcomes_.clear();
    services_.sleep.hold(u"Running the Automater"_s);
    Q_EMIT runningChanged(true);
}

QCoro::Task<> AutomaterRun::run(PipelineConfig config)
{
    try {
        if (choices_.source == RunSource::download)
            co_await runLibrary(config);
        else
            co_await runFolder(config);
    } catch (const std::exception& error) {
        breakOff(redacted(QString::fromLocal8Bit(error.what())));
    }
    notify(finish());
}

QCoro::Task<> AutomaterRun::runLibrary(PipelineConfig config)
{
    setStage(Stage::read, StageState::running());
    QList<Clip> clips;
    QString refusal;
    try {
        clips = co_await engine_.fetchAllClips(config.workspace, config.token);
    } catch (const LibraryError& error) {
        refusal = error.sentence();
    }
    if (!refusal.isEmpty()) {
        failAloud(Stage::read, refusal);
    } else if (!engine_.lastFetchComplete()) {
        setStage(Stage::read,
                 StageState::failed(u"only %1 tracks read before Suno stopped responding"_s.arg(clips.size())));
        log(L10n::t(L10n::Key::log4), LogLevel::error);
    } else if (clips.isEmpty()) {
        setStage(Stage::read, StageState::failed(u"that workspace has no tracks"_s));
    } else {
        setStage(Stage::read, StageState::done(u"%1 tracks"_s.arg(clips.size())));
        co_await process(clips, config);
    }
}

QCoro::Task<> AutomaterRun::runFolder(PipelineConfig config)
{
    const QString folder = config.destination.toLocalFile();
    auto cleaning = QtConcurrent::run(TrackWork::removeLeftovers, folder);
    co_await cleaning;
    const QList<SavedTrack> tracks = co_await tracksForSource(folder, choices_.source);
    setStage(Stage::read, StageState::skipped(u"using files already here"_s));
    if (tracks.isEmpty()) {
        setStage(Stage::download, StageState::failed(nothingOnDisk(choices_.source, config)));
        co_return;
    }
    setStage(Stage::download, StageState::skipped(u"%1 already here"_s.arg(tracks.size())));
    co_await runRemaining(tracks, config);
}

QCoro::Task<QList<SavedTrack>> AutomaterRun::tracksForSource(QString folder, RunSource source)
{
    if (source != RunSource::selection) {
        auto reading = QtConcurrent::run(tracksOnDisk, folder);
        const QList<SavedTrack> tracks = co_await reading;
        co_return tracks;
    }
    const TrackRef selection = services_.session.selection().value_or(TrackRef());
    if (!selection.isUsable())
        co_return QList<SavedTrack>();
    auto reading = QtConcurrent::run(selectedTrackOnDisk, folder, selection.audio->toLocalFile());
    const QList<SavedTrack> tracks = co_await reading;
    co_return tracks;
}

QCoro::Task<QStringList> AutomaterRun::runNewTracks(QList<Clip> clips)
{
    const auto current = config();
    if (!current || running_ || services_.session.downloadInProgress)
        co_return QStringList();
    begin(*current);
    setStage(Stage::read, StageState::done(u"%1 new"_s.arg(clips.size())));
    QStringList through;
    try {
        through = co_await process(clips, *current);
    } catch (const std::exception& error) {
        breakOff(redacted(QString::fromLocal8Bit(error.what())));
    }
    finish();
    co_return through;
}

QCoro::Task<QStringList> AutomaterRun::process(QList<Clip> clips, PipelineConfig config)
{
    setStage(Stage::download, StageState::running());
    const QString folder = config.destination.toLocalFile();
    auto making = QtConcurrent::run(TrackWork::makeFolder, folder);
    const QString refusal = co_await making;
    if (!refusal.isEmpty()) {
        setStage(Stage::download, StageState::failed(refusal));
        co_return QStringList();
    }
    auto cleaning = QtConcurrent::run(TrackWork::removeLeftovers, folder);
    co_await cleaning;
    auto planning = QtConcurrent::run(planExport, clips, folder);
    const QList<PlannedTrack> planned = co_await planning;
    const SaveOrder order{.assets = config.assets,
                          .folder = folder,
                          .token = config.token,
                          .texts = {.audio = L10n::Key::log5, .artwork = L10n::Key::log6}};
    const std::function<void(const ExportProgress&)> announce = [this](const ExportProgress& progress) {
        const QString label = u"%1 of %2 tracks — %3"_s.arg(progress.done + 1).arg(progress.count).arg(progress.title);
        report({Stage::download, progress.done, progress.count, progress.title.isEmpty() ? QString() : label,
                progress.timeLeft});
    };
    const SavedClips result = co_await saveClips(engine_, services_.clock, order, clips, planned, announce);
    const QList<SavedTrack> saved = savedOf(clips, planned, result);
    Q_EMIT services_.session.filesChanged();
    if (result.stopped) {
        setStage(Stage::download, StageState::failed(u"stopped %1 of %2"_s.arg(saved.size()).arg(clips.size())));
        co_return QStringList();
    }
    setStage(Stage::download, StageState::done(savedNote(saved.size(), clips.size(), result.problems)));
    co_await runRemaining(saved, config);
    co_return identifiersOf(saved);
}

QCoro::Task<QString> AutomaterRun::plan()
{
    const auto current = config();
    if (!current)
        co_return QString();
    PlanFacts facts{.choices = choices(), .config = *current, .pattern = {}, .target = {}};
    facts.pattern = co_await chosenPattern(facts.choices);
    facts.target = chosenTarget(facts.choices);
    if (facts.choices.source != RunSource::download) {
        const QString folder = facts.config.destination.toLocalFile();
        const QList<SavedTrack> tracks = co_await tracksForSource(folder, facts.choices.source);
        auto counting = QtConcurrent::run(countedOnDisk, tracks, folder);
        const OnDisk counted = co_await counting;
        facts.tracks = counted.tracks;
        facts.taggable = counted.taggable;
    }
    co_return planText(facts);
}

void AutomaterRun::setStage(Stage stage, const StageState& state)
{
    outcomes_.insert(stage, state);
    Q_EMIT stageChanged(stage, state);
}

void AutomaterRun::failAloud(Stage stage, const QString& reason)
{
    setStage(stage, StageState::failed(reason));
    log(reason, LogLevel::error);
}

void AutomaterRun::breakOff(const QString& reason)
{
    for (const Stage stage : stageOrder) {
        if (outcomes_.value(stage).kind == StageState::Kind::running)
            return failAloud(stage, reason);
    }
    log(reason, LogLevel::error);
}

void AutomaterRun::report(const RunProgress& progress)
{
    Q_EMIT progressed(progress);
}

void AutomaterRun::log(const QString& message, LogLevel level)
{
    Q_EMIT logged(message, level);
}

RunSummary AutomaterRun::finish()
{
    running_ = false;
    services_.session.automationInProgress = false;
    services_.sleep.release();
    RunSummary summary = summaryOf(outcomes_);
    summary.wasStopped = engine_.isStopping();
    Q_EMIT runningChanged(false);
    log(summary.sentence(), summary.isSuccess() ? LogLevel::success : LogLevel::error);
    Q_EMIT finished(summary);
    if (choices_.openWhenDone && summary.done > 0 && onOpenFolder)
        onOpenFolder(services_.session.destination());
    return summary;
}

void AutomaterRun::notify(const RunSummary& summary)
{
    const bool isSeen = isWatched && isWatched();
    if (!summary.wasStopped && !isSeen)
        services_.notifier.show({.title = u"Orvane"_s, .text = summary.sentence(), .folder = folder_});
}

} // namespace orvane
