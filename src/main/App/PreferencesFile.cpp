#include "main/App/PreferencesFile.h"

#include "platform/filesystem/AtomicFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <utility>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Only the last folder is ours: one that is there already, and those above it, keep their rights.
void makePrivateFolder(const QString& folder)
{
    const QFileInfo info(folder);
    if (info.exists())
        return;
    QDir().mkpath(info.path());
    QDir().mkdir(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

/// The sentence of the failure; empty for none.
QString save(const QString& path, const QByteArray& contents)
{
    makePrivateFolder(QFileInfo(path).path());
    try {
        writeAtomically(path, contents, FileAccess::OwnerOnly);
        return {};
    } catch (const FileError& error) {
        return error.sentence();
    }
}

} // namespace

PreferencesFile::PreferencesFile(QString path)
    : path_(std::move(path))
{
}

QByteArray PreferencesFile::read() const
{
    QFile file(path_);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

void PreferencesFile::setAside() const
{
    if (!QFile::exists(path_))
        return;
    const QString damaged = path_ + u".damaged"_s;
    QFile::remove(damaged);
    QFile::rename(path_, damaged);
}

void PreferencesFile::write(QByteArray contents)
{
    {
        const std::lock_guard lock(mutex_);
        next_ = std::move(contents);
    }
    changed_.notify_all();
    if (!thread_.joinable())
        thread_ = std::jthread([this](const std::stop_token& stop) { writeUntil(stop); });
}

void PreferencesFile::flush()
{
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return !next_ && !writing_; });
}

QString PreferencesFile::lastError() const
{
    const std::lock_guard lock(mutex_);
    return lastError_;
}

void PreferencesFile::writeUntil(const std::stop_token& stop)
{
    std::unique_lock lock(mutex_);
    while (changed_.wait(lock, stop, [this] { return next_.has_value(); })) {
        const QByteArray contents = *std::exchange(next_, std::nullopt);
        writing_ = true;
        lock.unlock();
        const QString error = save(path_, contents);
        lock.lock();
        writing_ = false;
        lastError_ = error;
        changed_.notify_all();
    }
}

} // namespace orvane
