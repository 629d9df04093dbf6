#pragma once

#include "main/App/L10n.h"
#include "suno/Engine.h"
#include "tests/suno/ReadOutcome.h"
#include "tests/support/ScriptedServer.h"
#include "tests/support/TestClock.h"

#include <QStringList>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <ostream>
#include <vector>

namespace orvane {

inline void PrintTo(const DownloadOutcome& outcome, std::ostream* out)
{
    constexpr const char* kinds[] = {"failed", "downloaded", "alreadyExists", "stopped"};
    *out << kinds[static_cast<int>(outcome.kind)] << " " << qPrintable(outcome.reason);
}

} // namespace orvane

namespace orvane::test {

struct LogLine
{
    QString message;
    LogLevel level = LogLevel::info;

    bool operator==(const LogLine&) const = default;
};

inline void PrintTo(const LogLine& line, std::ostream* out)
{
    *out << qPrintable(line.message) << " (" << static_cast<int>(line.level) << ")";
}

inline LogLine info(const QString& message)
{
    return {.message = message, .level = LogLevel::info};
}

inline LogLine error(const QString& message)
{
    return {.message = message, .level = LogLevel::error};
}

/// The sleeps that these waits are cut into.
std::vector<std::chrono::milliseconds> slices(const std::vector<std::chrono::milliseconds>& waits);

/// An answer of the feed with these identifiers, in order.
Script feedPage(const QStringList& ids);
/// A 200 with this body.
Script json(const QByteArray& body);
/// An answer with this status and these header lines.
Script status(int code, const QByteArray& headerLines = {});
/// The connection breaks before any answer.
Script broken();

/// Value of a header in the head of a request; absent where it was not sent.
std::optional<QByteArray> headerIn(const QByteArray& head, const QByteArray& name);
/// Path and query of a request.
QByteArray targetOf(const QByteArray& head);

/// An engine before a scripted server, on a clock that does not wait.
class EngineTest : public testing::Test
{
protected:
    explicit EngineTest(HttpClient::Limits limits = HttpClient::Limits());

    ReadOutcome read(const QString& workspaceID, const QString& token);
    /// Identifiers of a read that throws nothing.
    QStringList fetch(const QString& workspaceID = {}, const QString& token = QStringLiteral("token"));
    /// The error that the read of the whole library ends with.
    std::optional<LibraryError> fetchError(const QString& token = QStringLiteral("token"));
    DownloadOutcome download(int maxAttempts = 3);
    DownloadOutcome download(const QString& from, const QString& to, int maxAttempts = 3);

    QString path(const QString& name) const { return folder.filePath(name); }

    QString target() const { return path(QStringLiteral("001 - Song.mp3")); }

    QByteArray contents(const QString& path) const;
    QStringList namesInFolder() const;
    /// The log without the lines that every read has.
    std::vector<LogLine> remarks() const;

    ScriptedServer server;
    HttpClient client;
    TestClock clock;
    Engine engine;
    QTemporaryDir folder;
    std::vector<LogLine> log;
};

} // namespace orvane::test
