#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <chrono>
#include <string>

namespace orvane::test {

/// Programs that are broken at one of their system calls, by the kernel's own door: killed there, or answered with an
/// error.

/// One call among all those of its name that a thread makes, counted from 1.
struct SystemCall
{
    QString name;
    int number = 0;

    bool operator==(const SystemCall&) const = default;
};

struct ProgramOutcome
{
    bool killed = false;
    int exitCode = 0;
    QString said;
};

/// Kills the program where it is not over after `patience`.
ProgramOutcome runProgram(const QString& program, const QStringList& arguments,
                          std::chrono::milliseconds patience = std::chrono::minutes(1));

/// Runs the program and writes all its system calls to the file `trace`.
ProgramOutcome runTraced(const QStringList& program, const QString& trace);

/// Runs the program with `fault` ("signal=KILL", "error=EIO") at `call`, in the first thread that comes to it; from
/// then on at every further call of that name where `fromThenOn` is set.
ProgramOutcome runBroken(const QStringList& program, const SystemCall& call, const QString& fault,
                         bool fromThenOn = false);

/// Runs the program with `fault` at every call of those names (with commas between them) that reaches for the file at
/// the absolute `path`.
ProgramOutcome runBrokenAt(const QStringList& program, const QString& path, const QString& calls, const QString& fault);

/// The calls between the program's two marks that reach for a file, in their order.
QList<SystemCall> callsBetweenMarks(const QString& trace);

/// For the trace of a test: "EIO fsync at call 2".
std::string placeOf(const SystemCall& call, const QString& fault);

} // namespace orvane::test
