#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace orvane::test {

/// What an outside program said.
struct Outcome
{
    int exitCode = -1;
    QByteArray output;
    QByteArray errors;
};

/// Runs `program` to its end; a program that is missing or crashes has the exit code -1.
Outcome run(const QString& program, const QStringList& arguments);

/// One value that ffprobe tells of the first stream of a file ("stream=codec_name") or of its container
/// ("format=format_name").
QString probed(const QString& path, const QString& entry);

} // namespace orvane::test
