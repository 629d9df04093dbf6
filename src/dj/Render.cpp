#include "dj/Render.h"

#include "dj/CueSheet.h"
#include "dj/Failure.h"
#include "dj/MixTag.h"
#include "dj/SetTempo.h"
#include "dj/TrackPlan.h"
#include "dj/Writer.h"
#include "dj/arithmetic/MixRate.h"
#include "mastering/Read.h"
#include "platform/filesystem/AtomicFile.h"
#include "platform/filesystem/StagingFile.h"

#include <QFile>

#include <cerrno>
#include <filesystem>
#include <functional>
#include <future>
#include <stop_token>
#include <system_error>

namespace orvane::DJ {

using namespace Qt::Literals::StringLiterals;

namespace {

void makeFolder(const QString& folder)
{
    std::error_code refusal;
    std::filesystem::create_directories(systemName(folder).constData(), refusal);
    if (refusal)
        throw FileError(folder, refusal.value());
}

/// A name with a slash would lie in another folder, and one with a NUL be another name.
QString pathIn(const QString& folder, const QString& name, const QString& extension)
{
    const QString path = folder + u'/' + name + u'.' + extension;
    if (name.contains(u'/') || name.contains(QChar::Null))
        throw FileError(path, EINVAL);
    return path;
}

/// A track as it goes into the mix; without channels where there is nothing to hear, or after a stop.
struct Prepared
{
    TrackPlan plan;
    Channels channels;
};

Prepared prepare(const Analysis& track, const TrackPlan& plan, const std::stop_token& stop)
{
    Master::Sound sound = Master::read(track.url.toLocalFile());
    if (stop.stop_requested())
        return {};
    return {.plan = plan, .channels = conform(std::move(sound.channels), sound.sampleRate, plan.conforming)};
}

/// Prepares tracks on a thread of its own, one at a time.
class Ahead
{
public:
    Ahead() = default;
    Ahead(const Ahead&) = delete;
    Ahead& operator=(const Ahead&) = delete;

    /// What still runs is waited for, as short as it gets.
    ~Ahead() { stop_.request_stop(); }

    void begin(const Analysis& track, const TrackPlan& plan)
    {
        // Where the system has no thread to give, the track is prepared when it is asked for.
        constexpr auto anyWay = std::launch::async | std::launch::deferred;
        next_ = std::async(anyWay, prepare, std::cref(track), plan, stop_.get_token());
    }

    /// The track that was begun; throws what reading it threw.
    Prepared finish() { return next_.get(); }

private:
    std::stop_source stop_;
    std::future<Prepared> next_;
};

class Rendering
{
public:
    Rendering(const Set& set, const MixSettings& settings, const QString& path, const QString& name)
        : set_(set)
        , settings_(settings)
        , median_(medianBPM(set))
        , cuts_(cutsFor(settings.crossfade, median_, settings.beatMatch))
        , writer_(path, {.sampleRate = mixRate,
                         .output = {.format = settings.format, .mp3Rate = settings.mp3Rate},
                         .expectedFrames = mostFrames()})
        , tag_(MixTag::prepared(set, settings, name))
        , splice_({.cuts = cuts_,
                   .bass = settings.filterSweep ? Bass::Swapped : Bass::AsItIs,
                   .fadesEdges = settings.fadeEdges},
                  [this](const Piece& piece) { take(piece); })
    {
    }

    /// Mixes all tracks; throws Failure (Cancelled) on a stop.
    void run(const ShouldStop& shouldStop, const Progress& progress)
    {
        for (qsizetype index = 0; index < set_.size(); ++index) {
            if (shouldStop && shouldStop()) {
                writer_.abandon();
                throw Failure::cancelled();
            }
            if (progress)
                progress(set_[index].title, double(index) / double(set_.size()));
            add(index);
        }
        splice_.finish();
        writer_.finish();
        writer_.requireWhole();
    }

    QString cueSheet() const { return DJ::cueSheet(set_, moves_, median_, unmatched_, shifted_); }

    Mix mix(const QString& path, const QString& cuePath) const
    {
        return {.url = QUrl::fromLocalFile(path),
                .cue = QUrl::fromLocalFile(cuePath),
                .moves = moves_,
                .duration = seconds(),
                .bpm = median_};
    }

private:
    double seconds() const { return double(splice_.written()) / mixRate; }

    TrackPlan planOf(const Analysis& track) const { return planFor(track, previous_, median_, cuts_, settings_); }

    /// No mix is longer than its tracks one after the other.
    qint64 mostFrames() const
    {
        constexpr double oneMore = 1.0;
        double most = 0.0;
        for (const Analysis& track : set_)
            most += track.duration / planOf(track).conforming.ratio + oneMore;
        return wholeFrames(most * mixRate);
    }

    /// Puts the next track in while the one behind it is already prepared.
    void add(qsizetype index)
    {
        const Analysis& track = set_[index];
        if (index == 0)
            ahead_.begin(track, planOf(track));
        Prepared prepared = ahead_.finish();
        const Analysis* const previous = previous_;
        const bool isHeard = !prepared.channels.empty();
        if (isHeard)
            previous_ = &track;
        if (index + 1 < set_.size())
            ahead_.begin(set_[index + 1], planOf(set_[index + 1]));
        if (!isHeard)
            return;
        note(track, prepared.plan);
        if (previous)
            moves_.append(moveBetween(*previous, track, seconds()));
        splice_.add(std::move(prepared.channels));
    }

    void note(const Analysis& track, const TrackPlan& plan)
    {
        if (!plan.reachesTempo)
            unmatched_.insert(track.title);
        if (plan.conforming.semitones != 0)
            shifted_.insert(track.title, plan.conforming.semitones);
    }

    void take(const Piece& piece)
    {
        tag_.stamp(piece);
        writer_.write(piece.channels, piece.first, piece.end);
    }

    const Set& set_;
    const MixSettings& settings_;
    double median_;
    Cuts cuts_;
    /// The track that went in last.
    const Analysis* previous_ = nullptr;
    Writer writer_;
    MixTag tag_;
    Splice splice_;
    QList<Move> moves_;
    QSet<QString> unmatched_;
    QHash<QString, int> shifted_;
    Ahead ahead_;
};

} // namespace

QString usualMixName()
{
    return u"Orvane DJ Mix"_s;
}

Mix render(const Set& set, const MixSettings& settings, const QString& folder, const QString& name,
           const ShouldStop& shouldStop, const Progress& progress)
{
    if (set.isEmpty())
        throw Failure::empty();
    makeFolder(folder);
    const QString path = pathIn(folder, name, extension(settings.format));
    const QString cuePath = pathIn(folder, name, u"txt"_s);
    QFile::remove(path);
    Rendering rendering(set, settings, path, name);
    rendering.run(shouldStop, progress);
    if (progress)
        progress({}, 1.0);
    writeAtomically(cuePath, rendering.cueSheet().toUtf8());
    return rendering.mix(path, cuePath);
}

} // namespace orvane::DJ
