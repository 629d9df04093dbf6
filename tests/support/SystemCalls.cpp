#include "tests/support/SystemCalls.h"

#include "tests/support/TraceMark.h"

#include <QMap>
#include <QProcess>
#include <QRegularExpression>

#include <utility>

namespace orvane::test {

using namespace Qt::Literals::StringLiterals;

ProgramOutcome runProgram(const QString& program, const QStringList& arguments, std::chrono::milliseconds patience)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // The search for leaks cannot run in a process that is traced.
    environment.insert(u"ASAN_OPTIONS"_s, u"detect_leaks=0"_s);
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    if (!process.waitForFinished(static_cast<int>(patience.count())))
        process.kill();
    return {.killed = process.exitStatus() == QProcess::CrashExit,
            .exitCode = process.exitCode(),
            .said = QString::fromLocal8Bit(process.readAll())};
}

ProgramOutcome runTraced(const QStringList& program, const QString& trace)
{
    return runProgram(u"strace"_s, QStringList{u"-f"_s, u"-o"_s, trace} + program);
}

ProgramOutcome runBroken(const QStringList& program, const SystemCall& call, const QString& fault, bool fromThenOn)
{
    const QString injection = u"inject=%1:%2:when=%3%4"_s.arg(call.name, fault, QString::number(call.number),
                                                              fromThenOn ? u"+"_s : QString());
    const QStringList options{u"-f"_s, u"-qq"_s, u"-o"_s, u"/dev/null"_s, u"-e"_s, u"trace="_s + call.name,
                              u"-e"_s, injection};
    return runProgram(u"strace"_s, options + program);
}

ProgramOutcome runBrokenAt(const QStringList& program, const QString& path, const QString& calls, const QString& fault)
{
    const QStringList options{u"-f"_s, u"-qq"_s,
                              u"-o"_s, u"/dev/null"_s,
                              u"-P"_s, path,
                              u"-e"_s, u"trace="_s + calls,
                              u"-e"_s, u"inject=%1:%2"_s.arg(calls, fault)};
    return runProgram(u"strace"_s, options + program);
}

QList<SystemCall> callsBetweenMarks(const QString& trace)
{
    static const QRegularExpression line(u"^(\\d+) +(\\w+)\\("_s);
    static const QStringList relevant = {u"openat"_s, u"open"_s,     u"newfstatat"_s, u"lstat"_s,  u"fstat"_s,
                                         u"flock"_s,  u"fcntl"_s,    u"fchmod"_s,     u"read"_s,   u"pread64"_s,
                                         u"write"_s,  u"fsync"_s,    u"close"_s,      u"rename"_s, u"renameat2"_s,
                                         u"unlink"_s, u"unlinkat"_s, u"getdents64"_s};
    const QString mark = QString::fromLatin1(traceMarkName);
    QList<SystemCall> calls;
    QMap<std::pair<QString, QString>, int> counted;
    bool between = false;
    for (const QString& text : trace.split(u'\n')) {
        const QRegularExpressionMatch match = line.match(text);
        const QString name = match.captured(2);
        const int number = ++counted[{match.captured(1), name}];
        if (text.contains(mark))
            between = !between;
        else if (between && relevant.contains(name))
            calls.append({.name = name, .number = number});
    }
    return calls;
}

std::string placeOf(const SystemCall& call, const QString& fault)
{
    return u"%1 %2 at call %3"_s.arg(fault, call.name, QString::number(call.number)).toStdString();
}

} // namespace orvane::test
