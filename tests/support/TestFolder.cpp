#include "tests/support/TestFolder.h"

#include "platform/filesystem/FileError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orvane::test {

TestFolder::TestFolder()
{
    QFile::setPermissions(folder_.path(), QFile::Permissions(0x7755));
}

TestFolder::~TestFolder()
{
    QFile::setPermissions(folder_.path(), QFile::Permissions(0x7700));
}

QString TestFolder::path(const QString& name) const
{
    return name.isEmpty() ? folder_.path() : folder_.filePath(name);
}

QString TestFolder::write(const QString& name, const QByteArray& bytes) const
{
    QFile file(path(name));
    QDir(path()).mkpath(QFileInfo(name).path());
    if (!file.open(QFile::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("the test cannot write %s", qPrintable(file.fileName()));
    return file.fileName();
}

QByteArray TestFolder::read(const QString& name) const
{
    QFile file(path(name));
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList TestFolder::names() const
{
    return QDir(path()).entryList(QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
}

int errorOf(const std::function<void()>& work)
{
    try {
        work();
    } catch (const FileError& error) {
        return error.code();
    }
    return 0;
}

int inChild(const std::function<int()>& work)
{
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(work());
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void becomeUnprivileged()
{
    constexpr uid_t nobody = 65534;
    if (::geteuid() != 0)
        return;
    if (::setgroups(0, nullptr) != 0 || ::setgid(nobody) != 0 || ::setuid(nobody) != 0)
        qFatal("the test cannot give up its privileges");
}

} // namespace orvane::test
