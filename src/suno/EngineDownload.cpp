#include "main/App/L10n.h"
#include "platform/filesystem/AtomicFile.h"
#include "platform/filesystem/StagingFile.h"
#include "platform/network/Redaction.h"
#include "suno/Engine.h"
#include "suno/WaitText.h"

#include <QFile>
#include <QFileInfo>
#include <QtConcurrentRun>
#include <qcoro/qcorofuture.h>

#include <algorithm>
#include <cerrno>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

/// How one try of a download ended.
struct Engine::Attempt
{
    enum class Kind
    {
        downloaded,
        cancelled,
        /// An answer that brought no file.
        refused,
        /// No answer, or a file that could not be put in place.
        broken
    };
    enum class Note
    {
        none,
        reason,
        reasonAndWait
    };

    Kind kind = Kind::downloaded;
    QString reason = {};
    /// Before the next try; absent where that is of no use.
    std::optional<std::chrono::milliseconds> wait = {};
    Note note = Note::reason;
};

namespace {

/// The wait after a try that was not answered with a wish of the server's.
std::chrono::milliseconds backoff(int attempt)
{
    constexpr int furthestShift = 32;
    return std::chrono::milliseconds(800) * (qint64(1) << std::min(attempt, furthestShift));
}

bool isWebAddress(const QUrl& url)
{
    const bool isWeb = url.scheme() == u"http" || url.scheme() == u"https";
    return url.isValid() && isWeb && !url.host().isEmpty();
}

/// What needs no request: a file that is there, and an address that leads nowhere.
std::optional<DownloadOutcome> outcomeWithoutRequest(const QUrl& from, const QString& to)
{
    const QFileInfo there(to);
    if (there.isDir())
        return DownloadOutcome::failed(FileError(to, EISDIR).sentence());
    if (there.size() >= 1)
        return DownloadOutcome::alreadyExists();
    if (!isWebAddress(from))
        return DownloadOutcome::failed(u"bad URL"_s);
    return std::nullopt;
}

/// Held while the file is filled, the lock keeps a second program from filling it as well.
Descriptor lockedStagingFile(const QString& partial, const QString& to)
{
    constexpr mode_t ordinaryFile = 0666;
    Descriptor file = makeStagingFile(systemName(partial), ordinaryFile);
    if (!file.isOpen())
        throw FileError(to, errno);
    return file;
}

std::optional<FileError> refusalToInstall(const QString& partial, const QString& to)
{
    try {
        installStaged(partial, to);
    } catch (const FileError& error) {
        return error;
    }
    return std::nullopt;
}

/// Why a file that was answered with 200 is not whole; empty where nothing speaks against it.
QString defect(qint64 size, std::optional<qint64> expected)
{
    if (size < 1)
        return u"empty response body"_s;
    if (expected && *expected >= 1 && *expected != size)
        return u"truncated transfer (%1 of %2 bytes)"_s.arg(size).arg(*expected);
    return {};
}

} // namespace

QCoro::Task<DownloadOutcome> Engine::downloadFile(QString from, QString to, QString token, int maxAttempts)
{
    const QUrl url(from);
    if (const auto outcome = outcomeWithoutRequest(url, to))
        co_return *outcome;
    const HttpRequest request = requestFor(url, token);
    for (int attempt = 0; attempt < maxAttempts; ++attempt) {
        if (isStopping())
            co_return DownloadOutcome::stopped();
        const Attempt tried = co_await attemptDownload(request, to, attempt);
        if (tried.kind == Attempt::Kind::downloaded)
            co_return DownloadOutcome::downloaded();
        const bool broke = tried.kind == Attempt::Kind::broken;
        if (tried.kind == Attempt::Kind::cancelled || (broke && isStopping()))
            co_return DownloadOutcome::stopped();
        if (!tried.wait || attempt == maxAttempts - 1)
            co_return DownloadOutcome::failed(tried.reason);
        if (tried.note == Attempt::Note::reasonAndWait && !isStopping())
            log(L10n::t(L10n::Key::log30, {tried.reason, wholeSeconds(*tried.wait)}), LogLevel::info);
        if (tried.note == Attempt::Note::reason && !isStopping())
            log(L10n::t(L10n::Key::log31, {tried.reason}), LogLevel::info);
        co_await stoppableWait(*tried.wait);
    }
    co_return DownloadOutcome::failed(u"unknown error"_s);
}

QCoro::Task<Engine::Attempt> Engine::attemptDownload(HttpRequest request, QString to, int attempt)
{
    using Kind = Attempt::Kind;
    using Note = Attempt::Note;
    const QString partial = to + u".part"_s;
    try {
        const Descriptor lock = lockedStagingFile(partial, to);
        const HttpResponse response = co_await client_.download(request, partial, stopToken());
        if (response.status != 200) {
            QFile::remove(partial);
            co_return Attempt{.kind = Kind::refused,
                              .reason = u"HTTP %1"_s.arg(response.status),
                              .wait = retryDelay(attempt, &response),
                              .note = Note::reasonAndWait};
        }
        const qint64 size = QFileInfo(partial).size();
        if (const QString reason = defect(size, response.expectedContentLength); !reason.isEmpty()) {
            QFile::remove(partial);
            const Note note = size < 1 ? Note::none : Note::reason;
            co_return Attempt{.kind = Kind::refused, .reason = reason, .wait = backoff(attempt), .note = note};
        }
        auto installing = QtConcurrent::run(refusalToInstall, partial, to);
        const std::optional<FileError> refusal = co_await installing;
        if (refusal)
            throw FileError(*refusal);
        co_return Attempt{};
    } catch (const FileError& error) {
        co_return Attempt{.kind = Kind::broken, .reason = redacted(error.sentence()), .wait = backoff(attempt)};
    } catch (const HttpError& error) {
        const Kind kind = error.code() == HttpError::Code::Cancelled ? Kind::cancelled : Kind::broken;
        co_return Attempt{.kind = kind, .reason = redacted(error.sentence()), .wait = backoff(attempt)};
    }
}

} // namespace orvane
