#include "platform/filesystem/FileError.h"
#include "tests/support/TestFolder.h"
#include "trackfiles/library/FolderOperations.h"
#include "trackfiles/namer/RenamePlan.h"
#include "trackfiles/tags/Tags.h"

#include <QFile>

#include <cerrno>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/un.h>
#include <unistd.h>

/// What lies in a folder of music and is no file that can be read, moved or tagged: one line each, and the rest goes
/// on.

namespace orvane {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::TestFolder;
using TrackNamer::Performed;
using TrackNamer::Rename;

constexpr const char* endless = "/dev/zero";

QByteArray nameOf(const QString& path)
{
    return QFile::encodeName(path);
}

void makePipe(const QString& path)
{
    ASSERT_EQ(::mkfifo(nameOf(path).constData(), 0600), 0);
}

void makeSocket(const QString& path)
{
    sockaddr_un address = {.sun_family = AF_UNIX, .sun_path = {}};
    const QByteArray name = nameOf(path);
    ASSERT_LT(name.size(), qsizetype(sizeof address.sun_path));
    std::memcpy(address.sun_path, name.constData(), static_cast<std::size_t>(name.size()));
    const int listener = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    ASSERT_EQ(::bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    ::close(listener);
}

/// A device that never ends; for a user who may make none a link to one.
void makeDevice(const QString& path)
{
    struct stat found = {};
    ASSERT_EQ(::stat(endless, &found), 0);
    if (::mknod(nameOf(path).constData(), S_IFCHR | 0600, found.st_rdev) != 0) {
        ASSERT_EQ(errno, EPERM);
        ASSERT_EQ(::symlink(endless, nameOf(path).constData()), 0);
    }
}

void makeDeviceLink(const QString& path)
{
    ASSERT_EQ(::symlink(endless, nameOf(path).constData()), 0);
}

mode_t kindAt(const QString& path)
{
    struct stat found = {};
    return ::lstat(nameOf(path).constData(), &found) == 0 ? found.st_mode & S_IFMT : 0;
}

struct Kind
{
    const char* name;
    void (*make)(const QString& path);
};

void PrintTo(const Kind& kind, std::ostream* stream)
{
    *stream << kind.name;
}

class NoFileNamedSongMp3 : public testing::TestWithParam<Kind>
{
protected:
    void SetUp() override { GetParam().make(song); }

    mode_t kindAtSong() const { return kindAt(song); }

    TestFolder folder;
    const QString song = folder.path(u"song.mp3"_s);
};

TEST_P(NoFileNamedSongMp3, isListedWithoutBytesAndNeverOpened)
{
    folder.write(u"real.mp3"_s, "12345");
    const Library::Contents contents = Library::read(folder.path());
    EXPECT_EQ(contents.tracks().size(), 2);
    EXPECT_EQ(contents.bytes(), 5);
}

TEST_P(NoFileNamedSongMp3, isNotTaggedAndStays)
{
    const mode_t before = kindAtSong();
    EXPECT_EQ(test::errorOf([this] { Tags::write({.title = u"t"_s}, song); }), EINVAL);
    EXPECT_EQ(kindAtSong(), before);
    EXPECT_EQ(folder.names(), QStringList{u"song.mp3"_s});
}

TEST_P(NoFileNamedSongMp3, isRenamedWithoutBeingOpened)
{
    const mode_t before = kindAtSong();
    const QList<Rename> plan = TrackNamer::plan(folder.path(), u"clean"_s, {}, {{u"song"_s, u"tune"_s}});
    EXPECT_EQ(TrackNamer::perform(plan), (Performed{.renamed = 1, .problems = {}}));
    EXPECT_EQ(folder.names(), QStringList{u"tune.mp3"_s});
    EXPECT_EQ(kindAt(folder.path(u"tune.mp3"_s)), before);
}

TEST_P(NoFileNamedSongMp3, isOneLineOfACopyUnlessItIsALinkAndTheRestIsCopied)
{
    const TestFolder to;
    const QString real = folder.write(u"real.mp3"_s, "12345");
    const Library::CopiedIn copied = Library::copyIn({song, real}, to.path());
    const bool isLink = kindAtSong() == S_IFLNK;
    EXPECT_EQ(copied.problems, isLink ? QStringList() : QStringList{u"song.mp3: Invalid argument"_s});
    EXPECT_EQ(to.names(), isLink ? (QStringList{u"real.mp3"_s, u"song.mp3"_s}) : QStringList{u"real.mp3"_s});
    EXPECT_EQ(to.read(u"real.mp3"_s), "12345");
}

TEST_P(NoFileNamedSongMp3, inPlaceOfTheLyricsCountsAsNone)
{
    GetParam().make(folder.path(u"song.txt"_s));
    const QList<Rename> plan = TrackNamer::plan(folder.path(), u"clean"_s);
    ASSERT_EQ(plan.size(), 1);
    EXPECT_EQ(plan.first().to, u"Track 1"_s);
}

INSTANTIATE_TEST_SUITE_P(Kinds, NoFileNamedSongMp3,
                         testing::Values(Kind{"pipe", makePipe}, Kind{"socket", makeSocket}, Kind{"device", makeDevice},
                                         Kind{"linkToADevice", makeDeviceLink}),
                         [](const auto& kind) { return std::string(kind.param.name); });

/// A folder beside a name that is no text: the rest of it is an ordinary track.
class NameThatIsNotUtf8 : public testing::Test
{
protected:
    void SetUp() override
    {
        folder.write(u"Sea.mp3"_s, "x");
        QFile file(folder.path(u"odd"_s));
        ASSERT_TRUE(file.open(QFile::WriteOnly));
        ASSERT_EQ(::rename(nameOf(file.fileName()).constData(), oddName.constData()), 0);
    }

    bool oddFileIsThere() const { return ::access(oddName.constData(), F_OK) == 0; }

    TestFolder folder;
    const QByteArray oddName = nameOf(folder.path()) + "/\xFF\xFE.mp3";
};

TEST_F(NameThatIsNotUtf8, isListedBesideTheOthers)
{
    EXPECT_EQ(Library::read(folder.path()).tracks().size(), 2);
    EXPECT_EQ(Library::read(folder.path()).bytes(), 1);
}

TEST_F(NameThatIsNotUtf8, isOneLineOfAPlanThatIsCarriedOutAndTheRestIsRenamed)
{
    const Performed performed = TrackNamer::perform(TrackNamer::plan(folder.path(), u"live"_s));
    EXPECT_EQ(performed, (Performed{.renamed = 1, .problems = {u"\uFFFD\uFFFD.mp3: No such file or directory"_s}}));
    EXPECT_TRUE(oddFileIsThere());
    EXPECT_EQ(folder.read(u"Sea (Live at Sunset).mp3"_s), "x");
}

TEST_F(NameThatIsNotUtf8, isOneLineOfANewFolderAndTheRestMoves)
{
    const Library::NewFolder made =
        Library::makeFolderWith(folder.path(), u"Box"_s, Library::read(folder.path()).tracks());
    EXPECT_EQ(made.problems, QStringList{u"\uFFFD\uFFFD.mp3: No such file or directory"_s});
    EXPECT_TRUE(oddFileIsThere());
    EXPECT_EQ(folder.read(u"Box/Sea.mp3"_s), "x");
}

/// A file, or its folder, that the user has no rights to. The work is done by a child that rights bind.
class Locked : public testing::Test
{
protected:
    void lockFile(const QString& name) const { setRights(name, 0); }

    void lockFolder(const QString& name) const { setRights(name, 0555); }

    void openToAll(const QString& name = {}) const { setRights(name, 0777); }

    template <typename Result>
    static bool unprivilegedly(const std::function<Result()>& work, const Result& expected)
    {
        return test::inChild([&] {
                   test::becomeUnprivileged();
                   return work() == expected ? 0 : 1;
               }) == 0;
    }

    void TearDown() override
    {
        if (QFile::exists(folder.path(u"locked"_s)))
            openToAll(u"locked"_s);
    }

    TestFolder folder;

private:
    void setRights(const QString& name, mode_t rights) const
    {
        ASSERT_EQ(::chmod(nameOf(folder.path(name)).constData(), rights), 0);
    }
};

TEST_F(Locked, aFileIsTheSystemsErrorOfATagAndStaysAsItWas)
{
    const QString path = folder.write(u"song.mp3"_s, "\xFF\xFB audio");
    openToAll();
    lockFile(u"song.mp3"_s);
    const auto tag = [&path] { return test::errorOf([&path] { Tags::write({.title = u"t"_s}, path); }); };
    EXPECT_TRUE(unprivilegedly<int>(tag, EACCES));
    openToAll(u"song.mp3"_s);
    EXPECT_EQ(folder.read(u"song.mp3"_s), "\xFF\xFB audio");
    EXPECT_EQ(folder.names(), QStringList{u"song.mp3"_s});
}

TEST_F(Locked, aFolderIsTheSystemsErrorOfATagAndTheFileStaysAsItWas)
{
    const QString path = folder.write(u"locked/song.mp3"_s, "\xFF\xFB audio");
    lockFolder(u"locked"_s);
    const auto tag = [&path] { return test::errorOf([&path] { Tags::write({.title = u"t"_s}, path); }); };
    EXPECT_TRUE(unprivilegedly<int>(tag, EACCES));
    EXPECT_EQ(folder.read(u"locked/song.mp3"_s), "\xFF\xFB audio");
}

TEST_F(Locked, aFileIsOneLineOfAPlanThatIsCarriedOutAndTheRestGoesOn)
{
    const QStringList files{folder.write(u"locked/a.mp3"_s, "x"), folder.write(u"open/a.png"_s, "y")};
    lockFolder(u"locked"_s);
    openToAll(u"open"_s);
    const QList<Rename> plan{{.from = u"a"_s, .to = u"b"_s, .files = files}};
    const Performed expected{.renamed = 1, .problems = {u"a.mp3: Permission denied"_s}};
    EXPECT_TRUE(unprivilegedly<Performed>([&plan] { return TrackNamer::perform(plan); }, expected));
    EXPECT_EQ(folder.read(u"locked/a.mp3"_s), "x");
    EXPECT_EQ(folder.read(u"open/b.png"_s), "y");
}

TEST_F(Locked, aLyricsFileCountsAsAbsent)
{
    folder.write(u"old.mp3"_s, "x");
    folder.write(u"old.txt"_s, "Title: New Name\n\nwords");
    lockFile(u"old.txt"_s);
    const auto newName = [this] { return TrackNamer::plan(folder.path(), u"clean"_s).first().to; };
    EXPECT_TRUE(unprivilegedly<QString>(newName, u"old"_s));
}

TEST_F(Locked, aFileIsOneLineOfACopyAndTheRestIsCopied)
{
    const TestFolder to;
    ASSERT_EQ(::chmod(nameOf(to.path()).constData(), 0777), 0);
    const QStringList items{folder.write(u"a.mp3"_s, "x"), folder.write(u"b.mp3"_s, "y")};
    lockFile(u"a.mp3"_s);
    const Library::CopiedIn expected{.items = 1, .problems = {u"a.mp3: Permission denied"_s}};
    EXPECT_TRUE(unprivilegedly<Library::CopiedIn>([&] { return Library::copyIn(items, to.path()); }, expected));
    EXPECT_EQ(to.names(), QStringList{u"b.mp3"_s});
}

TEST_F(Locked, aFileIsOneLineOfANewFolderAndTheRestMoves)
{
    const QStringList files{folder.write(u"locked/a.mp3"_s, "x"), folder.write(u"open/a.lrc"_s, "y")};
    lockFolder(u"locked"_s);
    openToAll(u"open"_s);
    openToAll();
    const QList<Library::Entry> selection{{.name = u"a"_s, .files = {{Library::Asset::audio, files}}}};
    const Library::NewFolder expected{
        .path = folder.path(u"Box"_s), .failure = {}, .problems = {u"a.mp3: Permission denied"_s}};
    const auto make = [&] { return Library::makeFolderWith(folder.path(), u"Box"_s, selection); };
    EXPECT_TRUE(unprivilegedly<Library::NewFolder>(make, expected));
    EXPECT_EQ(folder.read(u"Box/a.lrc"_s), "y");
    openToAll(u"Box"_s);
}

TEST_F(Locked, aFolderTakesNoFolderAndTheSystemsWordsSayWhy)
{
    folder.write(u"locked/a.mp3"_s, "x");
    lockFolder(u"locked"_s);
    const Library::NewFolder expected{.path = {}, .failure = u"Permission denied"_s, .problems = {}};
    const auto make = [this] { return Library::makeFolder(folder.path(u"locked"_s), u"Box"_s); };
    EXPECT_TRUE(unprivilegedly<Library::NewFolder>(make, expected));
}

TEST_F(Locked, aFolderWithoutPermissionIsUnreadableAndItsChildrenCountNothing)
{
    folder.write(u"locked/Song.mp3"_s, "x");
    lockFile(u"locked"_s);
    const auto inside = [this] { return Library::read(folder.path(u"locked"_s)); };
    EXPECT_TRUE(unprivilegedly<Library::Contents>(inside, {.entries = {}, .unreadable = true, .missing = {}}));
    const auto children = [this] { return Library::read(folder.path()).folders().first().childCount; };
    EXPECT_TRUE(unprivilegedly<qint64>(children, 0));
}

TEST(Links, thatLeadNowhereAreARowWithoutBytesAndADate)
{
    const TestFolder folder;
    ASSERT_EQ(::symlink("loop.mp3", nameOf(folder.path(u"loop.mp3"_s)).constData()), 0);
    ASSERT_EQ(::symlink("gone", nameOf(folder.path(u"none.mp3"_s)).constData()), 0);
    for (const Library::Entry& track : Library::read(folder.path()).tracks()) {
        EXPECT_EQ(track.bytes, 0);
        EXPECT_EQ(track.modified, Library::distantPast());
    }
    EXPECT_EQ(Library::read(folder.path()).tracks().size(), 2);
}

TEST(Links, toTheFolderItselfAreNotEntered)
{
    const TestFolder folder;
    ASSERT_EQ(::symlink(".", nameOf(folder.path(u"self"_s)).constData()), 0);
    EXPECT_EQ(Library::read(folder.path()).entries, QList<Library::Entry>{});
}

TEST(Links, thatTurnInACircleAreAnUnreadableFolder)
{
    const TestFolder folder;
    ASSERT_EQ(::symlink("circle", nameOf(folder.path(u"circle"_s)).constData()), 0);
    EXPECT_TRUE(Library::read(folder.path(u"circle"_s)).unreadable);
}

TEST(Links, toASongCountItsBytesAndAreRenamedThemselves)
{
    const TestFolder folder;
    folder.write(u"elsewhere/real"_s, "12345");
    ASSERT_EQ(::symlink("elsewhere/real", nameOf(folder.path(u"sea.mp3"_s)).constData()), 0);
    EXPECT_EQ(Library::read(folder.path()).bytes(), 5);
    EXPECT_EQ(TrackNamer::perform(TrackNamer::plan(folder.path(), u"numbered"_s)).renamed, 1);
    EXPECT_EQ(folder.read(u"01 - sea.mp3"_s), "12345");
    EXPECT_EQ(folder.read(u"elsewhere/real"_s), "12345");
}

} // namespace
} // namespace orvane
