#include "benchmarks/Report.h"
#include "trackfiles/library/Library.h"
#include "trackfiles/namer/RenamePlan.h"
#include "trackfiles/tags/Tags.h"

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <attachedpictureframe.h>
#include <dirent.h>
#include <fcntl.h>
#include <functional>
#include <id3v2tag.h>
#include <memory>
#include <mpegfile.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using namespace orvane;
using namespace orvane::bench;
using namespace Qt::Literals::StringLiterals;

constexpr qsizetype songBytes = 6'000'000;
constexpr qsizetype coverBytes = 200'000;

void require(bool done)
{
    if (!done)
        qFatal("The measurement cannot read or write its files.");
}

void write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    require(file.open(QFile::WriteOnly) && file.write(bytes) == bytes.size());
}

/// Tracks of four files each; the lyrics of `lyricsBytes` name none of them.
void fill(const QString& folder, int files, qsizetype lyricsBytes = 1)
{
    static const std::array endings{u".mp3"_s, u" lyrics.txt"_s, u".lrc"_s, u".jpg"_s};
    const QByteArray lyrics =
        "Title: \nTags: slow\n\n" + QByteArray("a line that is sung\n").repeated(lyricsBytes / 20);
    for (int index = 0; index < files; ++index) {
        const QString stem = u"/%1 - Untitled"_s.arg(index / 4 + 1, 6, 10, QChar(u'0'));
        write(folder + stem + endings.at(std::size_t(index) % 4), index % 4 == 1 ? lyrics : "x");
    }
}

double median(
    const std::function<void()>& work, const std::function<void()>& before = [] {})
{
    std::array<double, 7> times{};
    for (double& time : times) {
        before();
        const double start = seconds();
        work();
        time = seconds() - start;
    }
    std::ranges::sort(times);
    return times[times.size() / 2];
}

struct CloseFolder
{
    void operator()(DIR* folder) const { ::closedir(folder); }
};

/// A walk that knows nothing of tracks: each name, and a look at each file.
void walk(const QString& path)
{
    const std::unique_ptr<DIR, CloseFolder> folder(::opendir(QFile::encodeName(path).constData()));
    require(folder != nullptr);
    qint64 bytes = 0;
    struct stat found = {};
    while (const dirent* entry = ::readdir(folder.get())) {
        require(::fstatat(::dirfd(folder.get()), entry->d_name, &found, 0) == 0);
        bytes += found.st_size;
    }
    require(bytes > 0);
}

void measureRead(int files)
{
    const QTemporaryDir folder;
    fill(folder.path(), files);
    require(Library::read(folder.path()).entries.size() == files / 4);
    const double bare = median([&] { walk(folder.path()); });
    const double ours = median([&] { Library::read(folder.path()); });
    const std::string name = "library folder read, " + std::to_string(files) + " files";
    report(name, 1000 * ours, "ms", "bare walk with stat", 1000 * bare);
    report(name + ": for each file", 1e6 * ours / files, "µs");
}

void measurePlan()
{
    const QTemporaryDir folder;
    fill(folder.path(), 20'000, 1500);
    require(TrackNamer::plan(folder.path(), u"numbered"_s).size() == 5000);
    const double read = median([&] { Library::read(folder.path()); });
    const double ours = median([&] { TrackNamer::plan(folder.path(), u"numbered"_s); });
    report("plan of names, 5,000 tracks with lyrics", ours, "s", "the folder's read in it", read);
}

/// Frames of 128 kbit/s at 44.1 kHz, 417 bytes each: a reader that looks for frames finds one behind the other.
QByteArray framesOfSilence(qsizetype bytes)
{
    constexpr qsizetype frameBytes = 417;
    const QByteArray header("\xFF\xFB\x90\x00", 4);
    const QByteArray frame = header + QByteArray(frameBytes - header.size(), '\0');
    return frame.repeated(bytes / frameBytes);
}

void copyWithFlush(const QString& from, const QString& to)
{
    QFile source(from);
    QFile target(to);
    require(source.open(QFile::ReadOnly) && target.open(QFile::WriteOnly | QFile::Unbuffered));
    while (!source.atEnd()) {
        const QByteArray block = source.read(1024 * 1024);
        require(target.write(block) == block.size());
    }
    require(::fsync(target.handle()) == 0);
}

void rewriteWithTagLib(const QString& path, const QByteArray& cover)
{
    TagLib::MPEG::File file(QFile::encodeName(path).constData(), false);
    TagLib::ID3v2::Tag* tag = file.ID3v2Tag(true);
    tag->setTitle("Song");
    tag->setArtist("Suno AI");
    auto picture = std::make_unique<TagLib::ID3v2::AttachedPictureFrame>();
    picture->setMimeType("image/jpeg");
    picture->setPicture(TagLib::ByteVector(cover.constData(), static_cast<unsigned>(cover.size())));
    tag->addFrame(picture.release());
    require(file.save());
}

void flush(const QString& path)
{
    QFile file(path);
    require(file.open(QFile::ReadOnly) && ::fsync(file.handle()) == 0);
}

void measureTags()
{
    const QTemporaryDir folder;
    const QString song = folder.filePath(u"song.mp3"_s);
    const QByteArray audio = framesOfSilence(songBytes);
    const QByteArray cover(coverBytes, 'c');
    const Tags::Metadata metadata{.title = u"Song"_s, .artwork = cover};
    const auto anew = [&] { write(song, audio); };
    const double ours = median([&] { Tags::write(metadata, song); }, anew);
    const double copy = median([&] { copyWithFlush(song, folder.filePath(u"copy.mp3"_s)); }, anew);
    const double tagLib = median([&] { rewriteWithTagLib(song, cover); }, anew);
    const auto rewriteAndFlush = [&] {
        rewriteWithTagLib(song, cover);
        flush(song);
    };
    const double flushed = median(rewriteAndFlush, anew);
    report("tag of a 6 MB file with a 200 kB cover", 1000 * ours, "ms", "copy with an fsync", 1000 * copy);
    report("tag of a 6 MB file with a 200 kB cover", 1000 * ours, "ms", "TagLib in place, unflushed", 1000 * tagLib);
    report("tag of a 6 MB file with a 200 kB cover", 1000 * ours, "ms", "TagLib in place with an fsync",
           1000 * flushed);
}

} // namespace

int main()
{
    for (const int files : {1000, 10'000, 20'000, 100'000})
        measureRead(files);
    measurePlan();
    measureTags();
    return 0;
}
