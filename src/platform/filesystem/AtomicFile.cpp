#include "platform/filesystem/AtomicFile.h"

#include "platform/filesystem/StagingFile.h"

#include <QFileInfo>

#include <cstdio>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <tuple>
#include <unistd.h>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr mode_t everyRight = 0777;

/// The access rights of the file at `name`, if there is one.
std::optional<mode_t> rightsAt(const QByteArray& name)
{
    struct stat found = {};
    if (::lstat(name.constData(), &found) != 0 || !S_ISREG(found.st_mode))
        return {};
    return found.st_mode & everyRight;
}

bool isFolder(const QByteArray& name)
{
    struct stat found = {};
    return ::lstat(name.constData(), &found) == 0 && S_ISDIR(found.st_mode);
}

/// As a courtesy: a file system without access rights is no reason to fail.
void keepRights(const Descriptor& file, const QByteArray& replaced)
{
    if (const auto rights = rightsAt(replaced))
        std::ignore = ::fchmod(file.number(), *rights);
}

bool flush(const Descriptor& file)
{
    return retried([&] { return ::fsync(file.number()); }) == 0;
}

bool moveOver(const QByteArray& from, const QByteArray& to)
{
    return retried([&] { return std::rename(from.constData(), to.constData()); }) == 0;
}

bool flushAndMove(const QByteArray& staged, const QByteArray& final)
{
    Descriptor file(retried([&] { return ::open(staged.constData(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC); }));
    if (!file.isOpen())
        return false;
    keepRights(file, final);
    return flush(file) && file.close() && moveOver(staged, final);
}

} // namespace

AtomicFile::AtomicFile(QString finalPath, QString temporaryPath, FileAccess access)
    : finalPath_(std::move(finalPath))
    , finalName_(systemName(finalPath_))
    , temporaryName_(systemName(temporaryPath))
    , access_(access)
{
    if (isFolder(finalName_))
        throw FileError(finalPath_, EISDIR);
    descriptor_ = makeStagingFile(temporaryName_, access == FileAccess::OwnerOnly ? 0600 : 0666);
    if (!descriptor_.isOpen())
        throw FileError(finalPath_, errno);
    lock_ = Descriptor(::fcntl(descriptor_.number(), F_DUPFD_CLOEXEC, 0));
    require(lock_.isOpen());
}

AtomicFile::~AtomicFile()
{
    discard();
}

void AtomicFile::write(QByteArrayView bytes)
{
    while (!bytes.isEmpty()) {
        const ssize_t written =
            retried([&] { return ::write(descriptor_.number(), bytes.data(), std::size_t(bytes.size())); });
        require(written > 0);
        size_ += written;
        bytes = bytes.sliced(written);
    }
}

void AtomicFile::commit()
{
    if (access_ == FileAccess::Usual)
        keepRights(descriptor_, finalName_);
    require(flush(descriptor_));
    require(descriptor_.close());
    require(moveOver(temporaryName_, finalName_));
    temporaryName_.clear();
    lock_.close();
    require(flushFolderOf(finalName_));
}

void AtomicFile::discard() noexcept
{
    descriptor_.close();
    if (!temporaryName_.isEmpty())
        ::unlink(temporaryName_.constData());
    temporaryName_.clear();
    lock_.close();
}

void AtomicFile::require(bool done)
{
    if (done)
        return;
    const int code = errno;
    discard();
    throw FileError(finalPath_, code);
}

QString temporarySibling(const QString& finalPath)
{
    const qsizetype name = finalPath.lastIndexOf(u'/') + 1;
    return finalPath.first(name) + u'.' + finalPath.sliced(name) + u".new"_s;
}

void writeAtomically(const QString& finalPath, QByteArrayView bytes, FileAccess access)
{
    AtomicFile file(finalPath, temporarySibling(finalPath), access);
    file.write(bytes);
    file.commit();
}

void installStaged(const QString& stagedPath, const QString& finalPath)
{
    const QByteArray staged = systemName(stagedPath);
    const QByteArray final = systemName(finalPath);
    if (!flushAndMove(staged, final)) {
        const int code = errno;
        ::unlink(staged.constData());
        throw FileError(finalPath, code);
    }
    if (!flushFolderOf(final))
        throw FileError(finalPath, errno);
}

} // namespace orvane
