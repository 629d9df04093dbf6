#pragma once

#include "demonstration/service/StandInService.h"
#include "tests/support/SystemCalls.h"
#include "tests/support/TestFolder.h"

#include <QMap>
#include <QString>
#include <QStringList>

namespace orvane::test {

/// A stand-in library and a folder that another program runs it into, through the whole chain.
class LibraryFolder
{
public:
    explicit LibraryFolder(const demo::LibraryOptions& library);

    /// Runs the library through the chain, in a program that is told `more`.
    ProgramOutcome run(const QStringList& more = {}) const;

    /// The same, broken at one of its system calls.
    ProgramOutcome runBroken(const SystemCall& call, const QString& fault) const;

    /// The same, with that fault at every such call for the file of the folder.
    ProgramOutcome runBrokenAt(const QString& file, const QString& calls, const QString& fault) const;

    void empty() const;

    /// By its name everything in the folder and among its masters, hidden files too.
    QMap<QString, QByteArray> contents() const;
    /// One sentence for each file that is neither whole nor expected: recordings and covers hold what the service has,
    /// under the old or the new name, and nothing is left over. With `isFinal` nothing may be missing either.
    QStringList faults(bool isFinal) const;

    demo::StandInService service;
    TestFolder folder;

private:
    QStringList program() const;
};

/// The sound of an MP3, without its tag.
QByteArray soundOf(const QByteArray& mp3);

} // namespace orvane::test
