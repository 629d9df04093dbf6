#include "automation/AutomaterRun.h"
#include "automation/StageTime.h"
#include "automation/VideoWork.h"
#include "main/App/L10n.h"
#include "main/App/Preferences.h"
#include "main/App/Session.h"
#include "platform/async/Clock.h"
#include "video/VideoEngine.h"

#include <QtConcurrentRun>
#include <qcoro/qcorofuture.h>

#include <cmath>

namespace orvane {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;
using L10n::Key;

namespace {

QString videoLabel(const RunProgress& progress, const QString& name)
{
    const auto percent = static_cast<int>(std::floor(100.0 * progress.within));
    return u"video %1 of %2 — %3 — %4%"_s.arg(progress.done + 1).arg(progress.count).arg(name).arg(percent);
}

Video::Look chosenLook(const Preferences& preferences)
{
    const QString aspect = preferences.text(QString::fromLatin1(Video::aspectPreference)).value_or(QString());
    return {.aspect = Video::aspectNamed(aspect)};
}

} // namespace

QCoro::Task<> AutomaterRun::renderVideos(QList<SavedTrack> saved)
{
    if (!enters(Stage::video, choices_.video, saved, u"nothing downloaded to render"_s))
        co_return;
    const QString folder = services_.session.destination().toLocalFile();
    auto making = QtConcurrent::run(TrackWork::makeVideosFolder, folder);
    const QString refusal = co_await making;
    if (!refusal.isEmpty()) {
        failAloud(Stage::video, refusal);
        co_return;
    }
    const Video::Look look = co_await prepareRenderer();
    auto listing = QtConcurrent::run(VideoWork::renderedStems, folder);
    const QSet<QString> rendered = co_await listing;
    QList<SavedTrack> missing = saved;
    missing.removeIf([&](const SavedTrack& track) { return rendered.contains(VideoWork::stemFor(stemOf(track))); });
    if (missing.size() < saved.size())
        log(L10n::t(Key::log14, {saved.size() - missing.size()}), LogLevel::info);
    if (missing.isEmpty()) {
        setStage(Stage::video, StageState::done(u"all %1 already rendered"_s.arg(saved.size())));
        co_return;
    }
    logEstimate(missing);
    const Loop videos = co_await renderAll(missing, folder, look);
    if (videos.stopped)
        setStage(Stage::video,
                 StageState::failed(
                     u"stopped %1 of %2 — the rest were not reached"_s.arg(videos.reached).arg(missing.size())));
    else if (videos.failed > 0)
        setStage(Stage::video,
                 StageState::failed(u"%1 video(s) rendered, %2 failed"_s.arg(videos.done).arg(videos.failed)));
    else
        setStage(Stage::video, StageState::done(u"%1 video(s) rendered"_s.arg(videos.done)));
    Q_EMIT services_.session.filesChanged();
}

QCoro::Task<Video::Look> AutomaterRun::prepareRenderer()
{
    std::optional<Video::VisualizerStyle> fromPage;
    if (styleProvider)
        fromPage = co_await styleProvider();
    const Video::VisualizerStyle style = fromPage.value_or(Video::VisualizerStyle::remembered(services_.preferences));
    style.remember(services_.preferences);
    const Video::Look look = chosenLook(services_.preferences);
    if (choices_.renderer == VideoRenderer::own)
        log(L10n::t(Key::log12, {Video::rawValue(look.aspect)}), LogLevel::info);
    else
        log(L10n::t(Key::log13, {style.summary()}), LogLevel::info);
    co_return look;
}

void AutomaterRun::logEstimate(const QList<SavedTrack>& missing)
{
    const bool isOwn = choices_.renderer == VideoRenderer::own;
    const double seconds = VideoWork::playingTime(missing) / (isOwn ? VideoWork::ownEngineSpeed : 1.0);
    log(L10n::t(Key::log32, {missing.size(), VideoWork::humanTime(seconds)}), LogLevel::info);
    log(L10n::t(isOwn ? Key::log33 : Key::log34), LogLevel::info);
}

QCoro::Task<AutomaterRun::Loop> AutomaterRun::renderAll(QList<SavedTrack> missing, QString folder, Video::Look look)
{
    auto listing = QtConcurrent::run(FolderListing::of, folder);
    const FolderListing files = co_await listing;
    StageTime time(services_.clock, missing.size());
    Loop loop;
    for (int index = 0; index < static_cast<int>(missing.size()); ++index) {
        loop.stopped = engine_.isStopping();
        if (loop.stopped)
            co_return loop;
        const QString stem = stemOf(missing.at(index));
        const auto audio = files.audio(stem);
        if (!audio) {
            log(L10n::t(Key::log15, {stem}), LogLevel::info);
            ++loop.reached;
            continue;
        }
        RunProgress progress{.stage = Stage::video, .done = index, .count = static_cast<int>(missing.size())};
        progress.timeLeft = time.begin();
        const VideoWork::Order order{.audio = *audio,
                                     .artwork = files.artwork(stem),
                                     .title = stem,
                                     .subtitle = VideoWork::subtitleFor(missing.at(index).clip),
                                     .look = look,
                                     .output = VideoWork::outputFor(folder, stem)};
        const auto refusal = co_await renderVideo(order, progress);
        loop.stopped = !refusal;
        if (loop.stopped)
            co_return loop;
        if (refusal->isEmpty())
            log(L10n::t(Key::log16, {stem}), LogLevel::success);
        else
            log(L10n::t(Key::log19, {stem, *refusal}), LogLevel::error);
        ++(refusal->isEmpty() ? loop.done : loop.failed);
        ++loop.reached;
        time.end();
        loop.stopped = engine_.isStopping() && !refusal->isEmpty();
        if (loop.stopped)
            co_return loop;
    }
    co_return loop;
}

QCoro::Task<std::optional<QString>> AutomaterRun::renderVideo(VideoWork::Order order, RunProgress progress)
{
    showVideo(progress, order.title);
    if (choices_.renderer == VideoRenderer::website) {
        const auto refusal = co_await renderOnSite(order);
        co_return refusal;
    }
    videoEngine_->onProgress = [this, progress, name = order.title](double share) {
        RunProgress now = progress;
        now.within = share;
        QMetaObject::invokeMethod(
            this, [this, now, name] { showVideo(now, name); }, Qt::QueuedConnection);
    };
    VideoEngine* const engine = videoEngine_.get();
    auto rendering = QtConcurrent::run([engine, order] { return VideoWork::render(*engine, order); });
    const QString refusal = co_await rendering;
    co_return refusal;
}

QCoro::Task<std::optional<QString>> AutomaterRun::renderOnSite(VideoWork::Order order)
{
    if (!siteVisualizer)
        co_return u"The website's visualizer is not there."_s;
    for (;;) {
        try {
            co_await siteVisualizer->render(order);
            co_return QString();
        } catch (const SiteVisualizer::Hidden&) {
            setStage(Stage::video, StageState::running());
            log(L10n::t(Key::log17), LogLevel::error);
        } catch (const std::exception& error) {
            co_return QString::fromUtf8(error.what());
        }
        const bool isVisible = co_await waitUntilVisible();
        if (!isVisible)
            co_return std::nullopt;
        log(L10n::t(Key::log18), LogLevel::success);
    }
}

QCoro::Task<bool> AutomaterRun::waitUntilVisible()
{
    while (!siteVisualizer->canRender()) {
        if (engine_.isStopping())
            co_return false;
        co_await services_.clock.sleep(2s);
    }
    co_return true;
}

void AutomaterRun::showVideo(RunProgress progress, const QString& name)
{
    // What the engine says last may come when the run is over.
    if (!running_)
        return;
    progress.label = videoLabel(progress, name);
    report(progress);
}

} // namespace orvane
