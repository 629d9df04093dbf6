#include "trackfiles/library/FolderOperations.h"

#include "platform/filesystem/MoveFile.h"
#include "suno/TrackNames.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>

namespace orvane::Library {

using namespace Qt::Literals::StringLiterals;

namespace {

QString fileName(const QString& path)
{
    return path.sliced(path.lastIndexOf(u'/') + 1);
}

QString problemLine(const QString& path, const FileError& error, const QString& whenTaken)
{
    return error.code() == EEXIST ? fileName(path) + whenTaken : fileName(path) + u": "_s + error.reason();
}

/// Its failure is told by the folder's own attempt.
QString makePath(const QString& path)
{
    errno = 0;
    if (QDir().mkpath(path))
        return {};
    return FileError(path, errno != 0 ? errno : EIO).reason();
}

} // namespace

NewFolder makeFolder(const QString& parent, const QString& typed)
{
    const QString name = safeName(typed, {});
    if (name.isEmpty())
        return {};
    const QString path = QDir(parent).filePath(name);
    const QString failure = makePath(path);
    if (!failure.isEmpty())
        return {.path = {}, .failure = failure, .problems = {}};
    return {.path = path, .failure = {}, .problems = {}};
}

NewFolder makeFolderWith(const QString& parent, const QString& typed, const QList<Entry>& selection)
{
    QList<Entry> tracks = selection;
    tracks.removeIf([](const Entry& entry) { return entry.kind != Entry::Kind::track; });
    if (tracks.isEmpty())
        return {};
    NewFolder made = makeFolder(parent, typed);
    if (!made.path)
        return made;
    for (const QString& path : itemsOf(tracks)) {
        try {
            moveWithoutReplacing(path, *made.path + u'/' + fileName(path));
        } catch (const FileError& error) {
            made.problems.append(problemLine(path, error, u" is already in there"_s));
        }
    }
    return made;
}

QStringList itemsOf(const QList<Entry>& selection)
{
    QStringList items;
    for (const Entry& entry : selection)
        items += entry.kind == Entry::Kind::folder ? QStringList{entry.path} : entry.allFiles();
    return items;
}

Trashed moveToTrash(const QStringList& items)
{
    Trashed result;
    for (const QString& path : items) {
        QFile item(path);
        if (item.moveToTrash())
            ++result.items;
        else
            result.problems.append(fileName(path) + u": "_s + item.errorString());
    }
    return result;
}

bool isAccepted(const QString& item)
{
    return QFileInfo(item).isDir() || classify(fileName(item), {}).has_value();
}

CopiedIn copyIn(const QStringList& items, const QString& folder)
{
    CopiedIn result;
    for (const QString& item : items) {
        const QString path = QDir::cleanPath(item);
        const QString target = QDir(folder).filePath(fileName(path));
        if (!isAccepted(path) || path == target)
            continue;
        try {
            copyWithoutReplacing(path, target);
            ++result.items;
        } catch (const FileError& error) {
            result.problems.append(problemLine(path, error, u" is already here"_s));
        }
    }
    return result;
}

} // namespace orvane::Library
