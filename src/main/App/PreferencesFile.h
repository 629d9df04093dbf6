#pragma once

#include <QByteArray>
#include <QString>

#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>

namespace orvane {

/// The file that the preferences lie in, written atomically (0600 in a 0700 folder) on a thread of its own, since a
/// flush to the disk takes longer than a frame of the window may. Of the contents handed over while one is being
/// written only the latest follows it. Whatever was handed over has been written, or refused, when the destructor comes
/// back.
class PreferencesFile
{
public:
    explicit PreferencesFile(QString path);

    /// What the file holds; null where it is missing or cannot be read.
    QByteArray read() const;
    /// Moves a damaged file out of the way, to its path + ".damaged".
    void setAside() const;

    /// Hands over the whole contents; returns at once. For one thread.
    void write(QByteArray contents);
    /// Waits until the disk has the latest contents or refused them.
    void flush();

    /// The sentence of the last write that failed; empty after one that went through. Callable from any thread.
    QString lastError() const;

private:
    void writeUntil(const std::stop_token& stop);

    const QString path_;
    mutable std::mutex mutex_;
    std::condition_variable_any changed_;
    std::optional<QByteArray> next_;
    bool writing_ = false;
    QString lastError_;
    /// The last member: it ends before what it works on.
    std::jthread thread_;
};

} // namespace orvane
