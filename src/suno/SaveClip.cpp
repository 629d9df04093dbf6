#include "suno/SaveClip.h"

#include "platform/filesystem/FileError.h"
#include "platform/network/Redaction.h"
#include "suno/TrackNames.h"

#include <QtConcurrentRun>
#include <qcoro/qcorofuture.h>

#include <cassert>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Why the file could not be written; empty where it stands.
QString refusalToWrite(const QString& path, const QString& contents)
{
    try {
        writeIfAbsent(path, contents);
    } catch (const FileError& error) {
        return redacted(error.sentence());
    }
    return {};
}

[[maybe_unused]] bool staysInItsFolder(const QString& base)
{
    return !base.isEmpty() && base != u"." && base != u".." && !base.contains(u'/') && !base.contains(QChar::Null);
}

/// Counts and logs what could not be saved.
class Problems
{
public:
    Problems(const Engine& engine, QString safeTitle)
        : engine_(engine)
        , safeTitle_(std::move(safeTitle))
    {
    }

    void add(L10n::Key message, const QString& reason)
    {
        ++count_;
        if (engine_.onLog)
            engine_.onLog(L10n::t(message, {safeTitle_, reason}), LogLevel::error);
    }

    void addIf(const QString& reason, L10n::Key message)
    {
        if (!reason.isEmpty())
            add(message, reason);
    }

    void addIf(const DownloadOutcome& outcome, L10n::Key message)
    {
        if (outcome.kind == DownloadOutcome::Kind::failed)
            add(message, outcome.reason);
    }

    ClipResult result(const DownloadOutcome& last, bool audioFailed) const
    {
        return {.problems = count_, .audioFailed = audioFailed, .stopped = last.kind == DownloadOutcome::Kind::stopped};
    }

private:
    const Engine& engine_;
    QString safeTitle_;
    int count_ = 0;
};

} // namespace

QCoro::Task<ClipResult> saveClip(Engine& engine, Clip clip, SaveOrder order, QString base, QString safeTitle)
{
    assert(staysInItsFolder(base));
    const QString stem = order.folder + u'/' + base;
    Problems problems(engine, safeTitle);
    DownloadOutcome outcome = DownloadOutcome::downloaded();
    bool audioFailed = false;
    if (order.assets.contains(Asset::audio)) {
        outcome = co_await engine.downloadFile(engine.audioAddress(clip), stem + u".mp3"_s, order.token);
        problems.addIf(outcome, order.texts.audio);
        audioFailed = outcome.kind == DownloadOutcome::Kind::failed;
        if (outcome.kind == DownloadOutcome::Kind::stopped)
            co_return problems.result(outcome, audioFailed);
    }
    if (order.assets.contains(Asset::lyrics) && !clip.lyrics.isEmpty()) {
        auto writing = QtConcurrent::run(refusalToWrite, stem + u" lyrics.txt"_s, lyricsText(clip));
        const QString reason = co_await writing;
        problems.addIf(reason, order.texts.lyrics);
    }
    if (order.assets.contains(Asset::lrc)) {
        const QString timed = lrc(clip.title, u"Suno AI"_s, clip.lyrics, clip.durationSeconds);
        auto writing = QtConcurrent::run(refusalToWrite, stem + u".lrc"_s, timed);
        const QString reason = co_await writing;
        problems.addIf(reason, order.texts.timed);
    }
    if (order.assets.contains(Asset::artwork) && clip.imageURL) {
        const QString to = stem + u'.' + artworkExtension(*clip.imageURL);
        outcome = co_await engine.downloadFile(*clip.imageURL, to, order.token);
        problems.addIf(outcome, order.texts.artwork);
    }
    co_return problems.result(outcome, audioFailed);
}

} // namespace orvane
