#include "platform/filesystem/FlushedCopy.h"

#include "platform/filesystem/Descriptor.h"

#include <QList>

#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <sys/stat.h>
#include <tuple>
#include <unistd.h>
#include <vector>

namespace orvane {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t blockBytes = 1 << 18;
constexpr mode_t everyRight = 0777;

Descriptor openFor(const QByteArray& name, int flags, mode_t mode = 0)
{
    return Descriptor(retried([&] { return ::open(name.constData(), flags | O_NOFOLLOW | O_CLOEXEC, mode); }));
}

/// As a courtesy: a file system without access rights is no reason to fail.
void giveRights(const Descriptor& file, mode_t rights)
{
    std::ignore = ::fchmod(file.number(), rights);
}

bool flush(const Descriptor& file)
{
    return retried([&] { return ::fsync(file.number()); }) == 0 || errno == EINVAL;
}

bool writeAll(const Descriptor& file, const char* bytes, std::size_t count)
{
    while (count > 0) {
        const ssize_t written = retried([&] { return ::write(file.number(), bytes, count); });
        if (written <= 0)
            return false;
        bytes += written;
        count -= static_cast<std::size_t>(written);
    }
    return true;
}

bool copyBytes(const Descriptor& from, const Descriptor& to)
{
    std::vector<char> block(blockBytes);
    while (true) {
        const ssize_t count = retried([&] { return ::read(from.number(), block.data(), block.size()); });
        if (count <= 0)
            return count == 0;
        if (!writeAll(to, block.data(), static_cast<std::size_t>(count)))
            return false;
    }
}

bool copyFile(const QByteArray& from, const QByteArray& to, mode_t rights)
{
    const Descriptor source = openFor(from, O_RDONLY | O_NONBLOCK);
    if (!source.isOpen())
        return false;
    Descriptor target = openFor(to, O_WRONLY | O_CREAT | O_EXCL, S_IRUSR | S_IWUSR);
    if (!target.isOpen() || !copyBytes(source, target))
        return false;
    giveRights(target, rights);
    return flush(target) && target.close();
}

bool copyLink(const QByteArray& from, const QByteArray& to)
{
    std::error_code refusal;
    fs::copy_symlink(from.constData(), to.constData(), refusal);
    errno = refusal.value();
    return !refusal;
}

/// The names in a folder; absent with errno set where it cannot be read.
std::optional<QList<QByteArray>> namesIn(const QByteArray& folder)
{
    QList<QByteArray> names;
    std::error_code refusal;
    for (fs::directory_iterator entry(folder.constData(), refusal), end; !refusal && entry != end;
         entry.increment(refusal))
        names.append(QByteArray::fromStdString(entry->path().filename().native()));
    errno = refusal.value();
    return refusal ? std::nullopt : std::optional(names);
}

bool copyFolder(const QByteArray& from, const QByteArray& to, mode_t rights)
{
    const std::optional<QList<QByteArray>> names = namesIn(from);
    if (!names || ::mkdir(to.constData(), S_IRWXU) != 0)
        return false;
    for (const QByteArray& name : *names) {
        if (!copyAndFlush(from + '/' + name, to + '/' + name))
            return false;
    }
    // The rights come last: they may forbid to write into the folder.
    const Descriptor folder = openFor(to, O_RDONLY | O_DIRECTORY);
    if (!folder.isOpen())
        return false;
    giveRights(folder, rights);
    return flush(folder);
}

} // namespace

bool copyAndFlush(const QByteArray& from, const QByteArray& to)
{
    struct stat found = {};
    if (::lstat(from.constData(), &found) != 0)
        return false;
    if (S_ISDIR(found.st_mode))
        return copyFolder(from, to, found.st_mode & everyRight);
    if (S_ISREG(found.st_mode))
        return copyFile(from, to, found.st_mode & everyRight);
    if (S_ISLNK(found.st_mode))
        return copyLink(from, to);
    errno = EINVAL;
    return false;
}

} // namespace orvane
