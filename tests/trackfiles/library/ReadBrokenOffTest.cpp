#include "tests/support/SystemCalls.h"
#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>

/// The system's answers while a folder is read. The worker says what it found: "unreadable=0 tracks=2 bytes=10 dated=2
/// folders=1 children=3".

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class ReadBrokenOff : public testing::Test
{
protected:
    QStringList program() const { return {QStringLiteral(TRACK_FILES_WORKER), u"read"_s, folder.path()}; }

    QString found() const { return runProgram(program().first(), program().sliced(1)).said; }

    /// What is found when the system answers so at the `number`th call of that name in the reading.
    QString foundWhen(const QString& name, int number, const QString& fault, bool fromThenOn = true) const
    {
        const QString trace = notes.path(u"trace"_s);
        EXPECT_EQ(runTraced(program(), trace).exitCode, 0);
        QList<SystemCall> calls = callsBetweenMarks(QString::fromUtf8(notes.read(u"trace"_s)));
        calls.removeIf([&name](const SystemCall& call) { return call.name != name; });
        EXPECT_GE(calls.size(), number);
        const ProgramOutcome outcome = runBroken(program(), calls.value(number - 1), fault, fromThenOn);
        EXPECT_EQ(outcome.exitCode, 0);
        return outcome.said;
    }

    TestFolder notes;
    TestFolder folder;
};

TEST_F(ReadBrokenOff, theWholeFolderIsFoundWhereNothingBreaks)
{
    folder.write(u"a.mp3"_s, "12345");
    folder.write(u"b.mp3"_s, "12345");
    folder.write(u"inner/c.mp3"_s, "x");
    EXPECT_EQ(found(), u"unreadable=0 tracks=2 bytes=10 dated=2 folders=1 children=1\n"_s);
}

TEST_F(ReadBrokenOff, aFolderThatVanishesBeforeItIsListedIsAnEmptyOne)
{
    folder.write(u"a.mp3"_s, "12345");
    EXPECT_EQ(foundWhen(u"getdents64"_s, 1, u"error=ENOENT"_s),
              u"unreadable=0 tracks=0 bytes=0 dated=0 folders=0 children=0\n"_s);
}

TEST_F(ReadBrokenOff, aFolderThatVanishesWhileItIsReadHasTheTracksThatWereMet)
{
    folder.write(u"a.mp3"_s, "12345");
    folder.write(u"a.png"_s, "12345");
    folder.write(u"b.mp3"_s, "12345");
    // The first look is at the folder itself.
    EXPECT_EQ(foundWhen(u"newfstatat"_s, 3, u"error=ENOENT"_s),
              u"unreadable=0 tracks=2 bytes=5 dated=1 folders=0 children=0\n"_s);
    EXPECT_EQ(foundWhen(u"getdents64"_s, 2, u"error=ENOENT"_s),
              u"unreadable=0 tracks=2 bytes=15 dated=2 folders=0 children=0\n"_s);
}

TEST_F(ReadBrokenOff, aListingThatBreaksOffIsUnreadableAndHasNoEntries)
{
    folder.write(u"a.mp3"_s, "12345");
    for (const int call : {1, 2})
        EXPECT_EQ(foundWhen(u"getdents64"_s, call, u"error=EIO"_s),
                  u"unreadable=1 tracks=0 bytes=0 dated=0 folders=0 children=0\n"_s);
}

TEST_F(ReadBrokenOff, aFolderInItWhoseListingBreaksOffCountsNoChildren)
{
    folder.write(u"inner/c.mp3"_s, "x");
    for (const int call : {2, 3})
        EXPECT_EQ(foundWhen(u"getdents64"_s, call, u"error=EIO"_s, false),
                  u"unreadable=0 tracks=0 bytes=0 dated=0 folders=1 children=0\n"_s);
}

} // namespace
} // namespace orvane::test
