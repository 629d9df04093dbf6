#include "platform/filesystem/StagingFile.h"

#include "platform/filesystem/FileError.h"

#include <QFile>

#include <algorithm>
#include <fcntl.h>
#include <optional>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvane {
namespace {

/// File systems without locks count as free.
bool lockOrBusy(const Descriptor& file)
{
    if (retried([&] { return ::flock(file.number(), LOCK_EX | LOCK_NB); }) == 0 || errno != EWOULDBLOCK)
        return true;
    errno = EBUSY;
    return false;
}

/// Whether `file` is the one that lies at `name`; absent, with errno set, where the system does not say.
std::optional<bool> isAt(const Descriptor& file, const QByteArray& name)
{
    struct stat open = {};
    struct stat named = {};
    if (::fstat(file.number(), &open) != 0)
        return {};
    if (::lstat(name.constData(), &named) != 0)
        return errno == ENOENT ? std::optional(false) : std::nullopt;
    return open.st_dev == named.st_dev && open.st_ino == named.st_ino;
}

bool removeName(const QByteArray& name)
{
    return retried([&] { return ::unlink(name.constData()); }) == 0 || errno == ENOENT;
}

Descriptor openForLock(const QByteArray& name)
{
    return Descriptor(
        retried([&] { return ::open(name.constData(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC); }));
}

Descriptor create(const QByteArray& name, mode_t mode)
{
    constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    return Descriptor(retried([&] { return ::open(name.constData(), flags, mode); }));
}

} // namespace

QByteArray systemName(const QString& path)
{
    if (path.contains(QChar::Null))
        throw FileError(path, EINVAL);
    return QFile::encodeName(path);
}

Descriptor makeStagingFile(const QByteArray& name, mode_t mode)
{
    while (true) {
        Descriptor file = create(name, mode);
        if (!file.isOpen()) {
            if (errno != EEXIST || !removeStagingFile(name))
                return {};
            continue;
        }
        if (!lockOrBusy(file))
            return {};
        const std::optional<bool> ours = isAt(file, name);
        if (!ours)
            return {};
        // Between the two calls another program may have taken the new file for a leftover.
        if (*ours)
            return file;
    }
}

bool removeStagingFile(const QByteArray& name)
{
    const Descriptor leftover = openForLock(name);
    if (!leftover.isOpen())
        return removeName(name);
    if (!lockOrBusy(leftover))
        return false;
    const std::optional<bool> stillThere = isAt(leftover, name);
    return stillThere && (!*stillThere || removeName(name));
}

bool flushFolderOf(const QByteArray& name)
{
    const qsizetype slash = name.lastIndexOf('/');
    const QByteArray folder = slash < 0 ? QByteArray(".") : name.left(std::max<qsizetype>(slash, 1));
    const Descriptor open(retried([&] { return ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
    // A folder that may be written and not read cannot be opened for a flush.
    if (!open.isOpen())
        return errno == EACCES;
    return retried([&] { return ::fsync(open.number()); }) == 0 || errno == EINVAL;
}

} // namespace orvane
