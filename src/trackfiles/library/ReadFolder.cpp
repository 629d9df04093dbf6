#include "trackfiles/library/Library.h"

#include <QFile>
#include <QHash>

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unordered_map>

namespace orvane::Library {
namespace {

struct CloseFolder
{
    void operator()(DIR* folder) const { ::closedir(folder); }
};

using Folder = std::unique_ptr<DIR, CloseFolder>;

/// Names the visible children of an open folder, one after the other; nothing at the end, and on an error with errno
/// set.
const dirent* nextVisible(DIR* folder)
{
    errno = 0;
    const dirent* child = ::readdir(folder);
    while (child && child->d_name[0] == '.')
        child = ::readdir(folder);
    return child;
}

qint64 countChildren(int parent, const char* name)
{
    const int descriptor = ::openat(parent, name, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return 0;
    const Folder folder(::fdopendir(descriptor));
    qint64 count = 0;
    while (folder && nextVisible(folder.get()))
        ++count;
    return errno == 0 ? count : 0;
}

qint64 milliseconds(const timespec& time)
{
    return time.tv_sec * 1000LL + time.tv_nsec / 1'000'000;
}

/// The tracks of a folder, gathered file by file.
class Tracks
{
public:
    Tracks(QString folderPath, QString folderName)
        : path_(std::move(folderPath))
        , name_(std::move(folderName))
    {
    }

    void add(int parent, const char* fileName)
    {
        const QString path = path_ + QFile::decodeName(fileName);
        const QStringView name = QStringView(path).sliced(path_.size());
        const auto asset = classify(name, name_);
        if (!asset)
            return;
        Track& track = at(trackKeyIn(name), path);
        track.entry.files[*asset].append(path);
        struct stat found = {};
        if (::fstatat(parent, fileName, &found, 0) != 0)
            return;
        track.entry.bytes += S_ISREG(found.st_mode) ? found.st_size : 0;
        track.newest = std::max(track.newest.value_or(milliseconds(found.st_mtim)), milliseconds(found.st_mtim));
    }

    QList<Entry> take()
    {
        QList<Entry> entries;
        entries.reserve(tracks_.size());
        for (Track& track : tracks_) {
            track.entry.modified = track.newest ? QDateTime::fromMSecsSinceEpoch(*track.newest) : distantPast();
            entries.append(std::move(track.entry));
        }
        return entries;
    }

private:
    struct Track
    {
        Entry entry;
        std::optional<qint64> newest;
    };

    Track& at(QStringView key, const QString& filePath)
    {
        const auto known = places_.find(key);
        if (known != places_.end())
            return tracks_[known->second];
        const QString name = key.toString();
        tracks_.append({.entry = {.kind = Entry::Kind::track, .name = name, .path = filePath}, .newest = {}});
        places_.emplace(tracks_.last().entry.name, tracks_.size() - 1);
        return tracks_.last();
    }

    struct Hash
    {
        std::size_t operator()(QStringView key) const { return qHash(key); }
    };

    QString path_;
    QString name_;
    QList<Track> tracks_;
    /// By the text that the entry's name holds, so that a file of a known track needs no text of its own.
    std::unordered_map<QStringView, qsizetype, Hash> places_;
};

/// A link to a folder is a file, as it is for the file viewers.
bool isFolder(int parent, const dirent& child)
{
    if (child.d_type != DT_UNKNOWN)
        return child.d_type == DT_DIR;
    struct stat found = {};
    return ::fstatat(parent, child.d_name, &found, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(found.st_mode);
}

Entry folderEntry(int parent, const QString& parentPath, const char* childName)
{
    const QString name = QFile::decodeName(childName);
    struct stat found = {};
    const bool dated = ::fstatat(parent, childName, &found, AT_SYMLINK_NOFOLLOW) == 0;
    return {.kind = Entry::Kind::folder,
            .name = name,
            .path = parentPath + name,
            .files = {},
            .bytes = 0,
            .modified = dated ? QDateTime::fromMSecsSinceEpoch(milliseconds(found.st_mtim)) : distantPast(),
            .childCount = countChildren(parent, childName),
            .duration = {}};
}

QList<Asset> missingAssets(const QList<Entry>& tracks)
{
    QList<Asset> missing;
    for (const Asset asset : {Asset::audio, Asset::artwork}) {
        const auto hasIt = [asset](const Entry& track) { return track.files.contains(asset); };
        if (!tracks.isEmpty() && std::ranges::none_of(tracks, hasIt))
            missing.append(asset);
    }
    return missing;
}

bool somethingExistsAt(const QByteArray& name)
{
    struct stat found = {};
    return ::lstat(name.constData(), &found) == 0;
}

Contents unlisted(const QByteArray& name)
{
    return {.entries = {}, .unreadable = somethingExistsAt(name), .missing = {}};
}

QString withoutTrailingSlashes(QString path)
{
    while (path.size() > 1 && path.endsWith(u'/'))
        path.chop(1);
    return path;
}

} // namespace

Contents read(const QString& folder)
{
    const QString path = withoutTrailingSlashes(folder);
    const QByteArray name = QFile::encodeName(path);
    const Folder open(::opendir(name.constData()));
    if (!open)
        return unlisted(name);

    const QString prefix = path.endsWith(u'/') ? path : path + u'/';
    const int parent = ::dirfd(open.get());
    QList<Entry> entries;
    Tracks files(prefix, path.sliced(path.lastIndexOf(u'/') + 1));
    while (const dirent* child = nextVisible(open.get())) {
        if (isFolder(parent, *child))
            entries.append(folderEntry(parent, prefix, child->d_name));
        else
            files.add(parent, child->d_name);
    }
    if (errno != 0)
        return unlisted(name);
    QList<Entry> tracks = files.take();
    const QList<Asset> missing = missingAssets(tracks);
    sortNaturally(entries);
    sortNaturally(tracks);
    entries.append(std::move(tracks));
    return {.entries = entries, .unreadable = false, .missing = missing};
}

} // namespace orvane::Library
