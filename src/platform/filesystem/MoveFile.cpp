#include "platform/filesystem/MoveFile.h"

#include "platform/filesystem/AtomicFile.h"
#include "platform/filesystem/FlushedCopy.h"
#include "platform/filesystem/StagingFile.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace orvane {
namespace {

namespace fs = std::filesystem;

bool isSameFile(const QByteArray& one, const QByteArray& other)
{
    struct stat first = {};
    struct stat second = {};
    return ::lstat(one.constData(), &first) == 0 && ::lstat(other.constData(), &second) == 0 &&
           first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

bool exists(const QByteArray& name)
{
    struct stat found = {};
    return ::lstat(name.constData(), &found) == 0;
}

/// File systems that ignore case show the file itself under its new name.
bool differsInCaseOnly(const QString& from, const QString& to)
{
    return from != to && from.compare(to, Qt::CaseInsensitive) == 0;
}

bool renameOver(const QByteArray& from, const QByteArray& to)
{
    return retried([&] { return std::rename(from.constData(), to.constData()); }) == 0;
}

/// True when done; false with errno set.
bool renameWithoutReplacing(const QByteArray& from, const QByteArray& to)
{
    const auto call = [&] {
        return ::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE);
    };
    if (retried(call) == 0)
        return true;
    // Some file systems know no such flag.
    if (errno != EINVAL && errno != ENOSYS)
        return false;
    if (exists(to)) {
        errno = EEXIST;
        return false;
    }
    return renameOver(from, to);
}

bool liesWithin(const QString& path, const QString& folder)
{
    return path.startsWith(folder + u'/');
}

void removeAll(const QByteArray& name)
{
    std::error_code ignored;
    fs::remove_all(name.toStdString(), ignored);
}

bool stageCopy(const QByteArray& from, const QByteArray& staging)
{
    removeAll(staging);
    return copyAndFlush(from, staging);
}

} // namespace

void moveWithoutReplacing(const QString& from, const QString& to)
{
    const QByteArray oldName = systemName(from);
    const QByteArray newName = systemName(to);
    const bool renamesItself = differsInCaseOnly(from, to) && isSameFile(oldName, newName);
    // The system tells of a missing file before it tells of a taken name.
    if (!renamesItself && exists(newName))
        throw FileError(from, EEXIST);
    if (renamesItself ? renameOver(oldName, newName) : renameWithoutReplacing(oldName, newName))
        return;
    if (errno != EXDEV)
        throw FileError(from, errno);
    copyWithoutReplacing(from, to);
    std::error_code failure;
    fs::remove_all(oldName.toStdString(), failure);
    if (failure)
        throw FileError(from, failure.value());
}

void copyWithoutReplacing(const QString& from, const QString& to)
{
    const QByteArray target = systemName(to);
    if (exists(target))
        throw FileError(from, EEXIST);
    if (liesWithin(to, from))
        throw FileError(from, EINVAL);
    const QByteArray staging = systemName(temporarySibling(to));
    // The folder is flushed too: a move removes the original next, and a loss of power must not find neither of the
    // two.
    if (stageCopy(systemName(from), staging) && renameWithoutReplacing(staging, target) && flushFolderOf(target))
        return;
    const int code = errno;
    removeAll(staging);
    throw FileError(from, code);
}

} // namespace orvane
