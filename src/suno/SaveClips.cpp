#include "suno/SaveClips.h"

#include "platform/async/Clock.h"
#include "suno/TimeLeft.h"

#include <QElapsedTimer>
#include <QTimer>
#include <qcoro/qcorotimer.h>

#include <algorithm>
#include <cassert>

namespace orvane {

namespace {

/// Half a frame: what a run over files that are all there already may take of the main thread in one go.
constexpr qint64 longestTurnMs = 8;

TimeLeft timeLeftFor(const QList<PlannedTrack>& plan)
{
    const auto known = std::count_if(plan.begin(), plan.end(), [](const PlannedTrack& track) { return track.isKnown; });
    return {static_cast<int>(plan.size() - known), static_cast<int>(known)};
}

QCoro::Task<> oneTurnOfTheEventLoop()
{
    QTimer turn;
    turn.setSingleShot(true);
    turn.start(0);
    co_await turn;
}

} // namespace

QCoro::Task<SavedClips> saveClips(Engine& engine, Clock& clock, SaveOrder order, QList<Clip> clips,
                                  QList<PlannedTrack> plan, std::function<void(const ExportProgress&)> onProgress)
{
    assert(plan.size() == clips.size());
    const int count = static_cast<int>(plan.size());
    TimeLeft timeLeft = timeLeftFor(plan);
    SavedClips result;
    QElapsedTimer turn;
    turn.start();
    for (int index = 0; index < count; ++index) {
        result.stopped = engine.isStopping();
        if (result.stopped)
            co_return result;
        const auto began = clock.monotonic();
        const PlannedTrack& track = plan.at(index);
        onProgress({index, count, track.names.base, timeLeft.remaining(), track.names.safeTitle});

        const Clip& clip = clips.at(index);
        const ClipResult saved = co_await saveClip(engine, clip, order, track.names.base, track.names.safeTitle);
        result.problems += saved.problems;
        result.stopped = saved.stopped;
        if (result.stopped)
            co_return result;
        if (!saved.audioFailed)
            result.saved.append(index);
        timeLeft.done(track.isKnown ? TimeLeft::Work::skip : TimeLeft::Work::download, clock.monotonic() - began);
        if (turn.elapsed() >= longestTurnMs) {
            co_await oneTurnOfTheEventLoop();
            turn.restart();
        }
    }
    onProgress({count, count, {}, std::nullopt, {}});
    co_return result;
}

} // namespace orvane
