#include "platform/filesystem/FileError.h"
#include "tests/support/TraceMark.h"
#include "trackfiles/namer/RenamePlan.h"
#include "trackfiles/tags/Tags.h"

#include <algorithm>
#include <cstdio>
#include <string_view>

namespace {

using namespace Qt::Literals::StringLiterals;
using orvane::TrackNamer::Rename;

void tag(const QString& path, const QString& title)
{
    orvane::test::markTrace();
    orvane::Tags::write({.title = title}, path);
    orvane::test::markTrace();
}

Rename row(const QString& folder, const QString& from, const QString& to)
{
    QStringList files;
    for (const QString& ending : {u" lyrics.txt"_s, u".lrc"_s, u".mp3"_s})
        files.append(folder + u'/' + from + ending);
    return {.from = from, .to = to, .files = files};
}

void rename(const QString& folder)
{
    const QList<Rename> plan{row(folder, u"01 - Sea"_s, u"Sea"_s), row(folder, u"night"_s, u"Night"_s)};
    orvane::test::markTrace();
    const auto performed = orvane::TrackNamer::perform(plan);
    orvane::test::markTrace();
    for (const QString& problem : performed.problems)
        std::fprintf(stderr, "%s\n", qPrintable(problem));
}

/// How many of `entries` have a date.
qsizetype dated(const QList<orvane::Library::Entry>& entries)
{
    return std::ranges::count_if(entries,
                                 [](const auto& entry) { return entry.modified != orvane::Library::distantPast(); });
}

qint64 children(const QList<orvane::Library::Entry>& folders)
{
    qint64 sum = 0;
    for (const orvane::Library::Entry& folder : folders)
        sum += folder.childCount;
    return sum;
}

void read(const QString& folder)
{
    orvane::test::markTrace();
    const orvane::Library::Contents contents = orvane::Library::read(folder);
    orvane::test::markTrace();
    const QList<orvane::Library::Entry> tracks = contents.tracks();
    const QList<orvane::Library::Entry> folders = contents.folders();
    std::printf("unreadable=%d tracks=%lld bytes=%lld dated=%lld folders=%lld children=%lld\n",
                contents.unreadable ? 1 : 0, tracks.size(), contents.bytes(), dated(tracks), folders.size(),
                children(folders));
}

} // namespace

/// track_files_worker read FOLDER: says what it found there. track_files_worker tag PATH TITLE: tags the file.
/// track_files_worker rename FOLDER: takes the index off the three files of one track there and changes the case of
/// another's, saying a line for each that stays. Exits with 1 and a sentence where the system refuses the tag.
int main(int argc, char** argv)
{
    try {
        if (argc == 4 && argv[1] == std::string_view("tag"))
            tag(QString::fromLocal8Bit(argv[2]), QString::fromLocal8Bit(argv[3]));
        else if (argc == 3 && argv[1] == std::string_view("rename"))
            rename(QString::fromLocal8Bit(argv[2]));
        else if (argc == 3 && argv[1] == std::string_view("read"))
            read(QString::fromLocal8Bit(argv[2]));
        else
            return 2;
    } catch (const orvane::FileError& error) {
        std::fprintf(stderr, "%s\n", qPrintable(error.sentence()));
        return 1;
    }
    return 0;
}
