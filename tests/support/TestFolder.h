#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>

namespace orvane::test {

/// A folder of its own for one test.
class TestFolder
{
public:
    TestFolder();
    /// Takes back what a test did to the folder's rights, so that it can be removed.
    ~TestFolder();

    /// The path of `name` in the folder.
    QString path(const QString& name = {}) const;
    /// Writes a file, with the folders above it; returns its path.
    QString write(const QString& name, const QByteArray& bytes) const;
    /// What the file holds; null where it is missing.
    QByteArray read(const QString& name) const;
    /// Everything in the folder, hidden files too, in the order of the names.
    QStringList names() const;

private:
    QTemporaryDir folder_;
};

/// The error number of the FileError that `work` throws; 0 where it throws none.
int errorOf(const std::function<void()>& work);

/// What `work` returns in a child process, which it cannot harm the test from; -1 where the child is killed.
int inChild(const std::function<int()>& work);

/// Makes this process one that mode bits hold for. For a child process.
void becomeUnprivileged();

} // namespace orvane::test
