#include "tests/platform/sound/Program.h"

#include <QProcess>

namespace orvane::test {

using namespace Qt::Literals::StringLiterals;

Outcome run(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(120'000) || process.exitStatus() != QProcess::NormalExit)
        return {};
    return {.exitCode = process.exitCode(),
            .output = process.readAllStandardOutput(),
            .errors = process.readAllStandardError()};
}

QString probed(const QString& path, const QString& entry)
{
    const Outcome outcome = run(u"ffprobe"_s, {u"-v"_s, u"error"_s, u"-select_streams"_s, u"a:0"_s, u"-show_entries"_s,
                                               entry, u"-of"_s, u"default=nw=1:nk=1"_s, path});
    return QString::fromUtf8(outcome.output).trimmed();
}

} // namespace orvane::test
