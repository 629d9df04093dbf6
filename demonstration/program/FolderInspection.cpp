#include "demonstration/program/FolderInspection.h"

#include <QDir>
#include <QFile>

namespace orvane::demo {

using namespace Qt::Literals::StringLiterals;

QByteArray contentsOf(const QString& path)
{
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

Clip clipOf(const Track& track, const QString& lyrics)
{
    return {.id = track.id,
            .title = track.isUntitled ? u"Untitled"_s : track.title,
            .lyrics = lyrics,
            .tags = track.tags,
            .durationSeconds = track.song.seconds};
}

FolderInspection::FolderInspection(const QString& folder)
    : folder_(folder)
{
    const QStringList names =
        QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    unseen_ = QSet<QString>(names.begin(), names.end());
    entries_ = static_cast<int>(names.size());
}

bool FolderInspection::expect(const QString& name)
{
    if (unseen_.remove(name))
        return true;
    addFault(name + u" is missing."_s);
    return false;
}

qint64 FolderInspection::expectFile(const QString& name, const QByteArray& expected)
{
    if (!expect(name))
        return -1;
    if (contentsOf(path(name)) != expected)
        addFault(name + u" does not hold what the service has."_s);
    return expected.size();
}

void FolderInspection::expectNothingElse()
{
    for (const QString& name : unseen_)
        addFault(name + u" should not be there."_s);
}

} // namespace orvane::demo
