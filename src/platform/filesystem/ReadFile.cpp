#include "platform/filesystem/ReadFile.h"

#include "platform/filesystem/StagingFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvane {
namespace {

void requireRegular(const QString& path, const struct stat& found)
{
    if (!S_ISREG(found.st_mode))
        throw FileError(path, S_ISDIR(found.st_mode) ? EISDIR : EINVAL);
}

} // namespace

RegularFile::RegularFile(const QString& path)
    : path_(path)
{
    const QByteArray name = systemName(path);
    struct stat found = {};
    if (::stat(name.constData(), &found) != 0)
        throw FileError(path, errno);
    requireRegular(path, found);
    file_ = Descriptor(retried([&] { return ::open(name.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK); }));
    if (!file_.isOpen() || ::fstat(file_.number(), &found) != 0)
        throw FileError(path, errno);
    requireRegular(path, found);
    size_ = found.st_size;
}

QByteArrayView RegularFile::read(qint64 offset, std::size_t most)
{
    block_.resize(most);
    std::size_t filled = 0;
    while (filled < most) {
        const off_t from = offset + static_cast<off_t>(filled);
        const ssize_t count =
            retried([&] { return ::pread(file_.number(), block_.data() + filled, most - filled, from); });
        if (count < 0)
            throw FileError(path_, errno);
        if (count == 0)
            break;
        filled += static_cast<std::size_t>(count);
    }
    return QByteArrayView(block_.data(), static_cast<qsizetype>(filled));
}

QByteArray readRegularFile(const QString& path, qint64 most)
{
    RegularFile file(path);
    if (file.size() > most)
        throw FileError(path, EFBIG);
    return file.read(0, static_cast<std::size_t>(file.size())).toByteArray();
}

} // namespace orvane
