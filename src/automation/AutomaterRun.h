#pragma once

#include "automation/AutomationServices.h"
#include "automation/PipelineConfig.h"
#include "automation/Prerequisite.h"
#include "automation/RunChoices.h"
#include "automation/RunPlan.h"
#include "automation/RunSummary.h"
#include "automation/SiteVisualizer.h"
#include "automation/Stage.h"
#include "automation/TrackFolder.h"
#include "automation/TrackWork.h"
#include "platform/async/TaskScope.h"
#include "suno/Engine.h"
#include "suno/LogLevel.h"
#include "suno/SaveClips.h"
#include "video/VisualizerStyle.h"

#include <QHash>
#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>
#include <qcoro/qcorotask.h>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace orvane {
class VideoEngine;

/// How far a stage has come.
struct RunProgress
{
    Stage stage = Stage::read;
    /// Tracks that are done, which is also the zero-based position of the one at hand.
    int done = 0;
    int count = 0;
    /// For the label; empty when all are done.
    QString label;
    /// Of this stage; absent while too little has been measured.
    std::optional<std::chrono::milliseconds> timeLeft;
    /// How far the track at hand is, from 0 to 1, where that is known.
    double within = 0.0;

    bool operator==(const RunProgress&) const = default;

    /// From 0 to 1.
    double fraction() const { return count > 0 ? (done + within) / count : 0.0; }
};

/// One press that does every job of the chain: it reads, downloads, renames, tags, masters and films a library, a
/// folder or one track. Records in, states, lines and progress out, no window.
///
/// One run goes at a time. Everything happens on the main thread but work on files and sound, which is awaited. What is
/// on disk is the only record: a run that was stopped anywhere is started again without harm. Destroying it stops a run
/// and waits for its end; a watcher that awaits `runNewTracks` goes first.
class AutomaterRun : public QObject
{
    Q_OBJECT

public:
    explicit AutomaterRun(const AutomationServices& services, QObject* parent = nullptr);
    ~AutomaterRun() override;

    /// What the Downloader is set to; without it, or with none from it, no run starts.
    std::function<std::optional<PipelineConfig>()> configProvider;
    /// What the user has set for a run; the defaults without it.
    std::function<RunChoices()> choicesProvider;
    /// The identifier of the pattern that the Namer is set to. Asked when the rename begins.
    std::function<QCoro::Task<std::optional<QString>>()> namingProvider;
    /// What the Mastering tab is set to. Asked when the mastering begins.
    std::function<std::optional<MasteringTarget>()> masteringProvider;
    /// How the site's visualizer is set now; nothing where its page is not open. Asked when the rendering begins.
    std::function<QCoro::Task<std::optional<Video::VisualizerStyle>>()> styleProvider;
    /// Renders where the choices say so; without it no video is made that way. Outlives the run.
    SiteVisualizer* siteVisualizer = nullptr;
    /// Whether the user is looking, so that no notification is needed; false without it.
    std::function<bool()> isWatched;
    /// Shows a folder to the user.
    std::function<void(const QUrl& folder)> onOpenFolder;
    /// What must be true before a run may start; see `makePrerequisites`.
    QList<Prerequisite> prerequisites;

    bool isRunning() const { return running_; }

    /// Stops a running run; else starts one, unless a prerequisite is not met or the Downloader is at work, which is
    /// said in the log and changes nothing.
    void toggle();
    /// Ends the run that goes, at the next track or within 150 ms of a wait; a master under way is finished, a video
    /// under way is given up, and a wait for the visualizer's page ends within 2 s.
    void stop();

    /// Takes new clips from the download on through the chain; `isRunning` for as long. Gives the identifiers of those
    /// that came through: none without a configuration, during another run or an export, and after a stop in the
    /// download.
    QCoro::Task<QStringList> runNewTracks(QList<Clip> clips);

    /// Those of `prerequisites` that count for the present choices.
    QList<Prerequisite> livePrerequisites() const;

    /// What a run would do if it started now, as plain text. Reads the folder for a source that lies there.
    QCoro::Task<QString> plan();

    /// What each stage of the latest run has come to; a stage that it has not reached is absent.
    const QMap<Stage, StageState>& outcomes() const { return outcomes_; }

    /// By the stem that a track's files had, the stem that the latest run gave them.
    const QHash<QString, QString>& renamedStems() const { return renamedStems_; }

Q_SIGNALS:
    void logged(const QString& message, orvane::LogLevel level);
    void stageChanged(orvane::Stage stage, const orvane::StageState& state);
    void progressed(const orvane::RunProgress& progress);
    /// At a start the outcomes are empty again.
    void runningChanged(bool running);
    /// After `runningChanged(false)` and the last line.
    void finished(const orvane::RunSummary& summary);

private:
    /// How a stage's loop over the tracks went.
    struct Loop
    {
        /// Files for the rename, tracks for the others.
        int done = 0;
        int failed = 0;
        /// Tracks that the loop came to.
        int reached = 0;
        bool stopped = false;
    };

    RunChoices choices() const;
    std::optional<PipelineConfig> config() const;
    void start(const PipelineConfig& config);
    void begin(const PipelineConfig& config);
    QCoro::Task<> run(PipelineConfig config);
    QCoro::Task<> runLibrary(PipelineConfig config);
    QCoro::Task<> runFolder(PipelineConfig config);
    QCoro::Task<QList<SavedTrack>> tracksForSource(QString folder, RunSource source);
    QCoro::Task<QStringList> process(QList<Clip> clips, PipelineConfig config);
    QCoro::Task<> runRemaining(QList<SavedTrack> saved, PipelineConfig config);

    QCoro::Task<> renameTracks(QList<SavedTrack> saved, PipelineConfig config);
    QCoro::Task<QString> chosenPattern(RunChoices current);
    QCoro::Task<Loop> rename(QList<SavedTrack> saved, QStringList names, QString folder);
    QCoro::Task<> tagTracks(QList<SavedTrack> saved, PipelineConfig config);
    QCoro::Task<Loop> tagAll(QList<SavedTrack> saved, QString folder);
    QCoro::Task<> masterTracks(QList<SavedTrack> saved, PipelineConfig config);
    MasteringTarget chosenTarget(const RunChoices& current) const;
    TrackWork::MasterOrder masterOrder(const MasteringTarget& target) const;
    QCoro::Task<Loop> masterAll(QList<SavedTrack> saved, QString folder, TrackWork::MasterOrder order);
    QCoro::Task<> renderVideos(QList<SavedTrack> saved);
    QCoro::Task<Video::Look> prepareRenderer();
    void logEstimate(const QList<SavedTrack>& missing);
    QCoro::Task<Loop> renderAll(QList<SavedTrack> missing, QString folder, Video::Look look);
    /// Gives the refusal, empty where the video stands; absent where the run was stopped before.
    QCoro::Task<std::optional<QString>> renderVideo(VideoWork::Order order, RunProgress progress);
    QCoro::Task<std::optional<QString>> renderOnSite(VideoWork::Order order);
    /// False after a stop.
    QCoro::Task<bool> waitUntilVisible();
    void showVideo(RunProgress progress, const QString& name);

    /// Whether the stage has something to do; else says why it has not, with `otherwise` for a ticked one. Nothing is
    /// said after a stop.
    bool enters(Stage stage, bool isTicked, const QList<SavedTrack>& saved, const QString& otherwise);
    QString stemOf(const SavedTrack& track) const;
    void setStage(Stage stage, const StageState& state);
    void failAloud(Stage stage, const QString& reason);
    void breakOff(const QString& reason);
    void report(const RunProgress& progress);
    void log(const QString& message, LogLevel level);
    void logNotRenamed(const TrackWork::NotRenamed& problem);
    void logWatermark(const Master::Watermark& watermark);
    void logMastered(const QString& stem, const Master::Result& result);
    RunSummary finish();
    void notify(const RunSummary& summary);

    const AutomationServices services_;
    Engine engine_;
    const std::unique_ptr<VideoEngine> videoEngine_;
    bool running_ = false;
    RunChoices choices_;
    /// Where the latest run works; a change of the session's folder is for the next.
    QString folder_;
    QMap<Stage, StageState> outcomes_;
    QHash<QString, QString> renamedStems_;
    /// Destroyed first: its tasks use all of the above.
    TaskScope scope_;
};

} // namespace orvane
