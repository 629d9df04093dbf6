#include "platform/filesystem/StagingLeftovers.h"

#include "platform/filesystem/StagingFile.h"

#include <QDir>
#include <QRegularExpression>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

bool isStagingName(const QString& fileName)
{
    // The endings are spelt out, so that a hidden ".profile.new" of somebody else's is never taken for ours.
    static const QRegularExpression staging(
        uR"(^(?:.+\.(?:mp3|png|jpg|webp)\.part|\..+\.(?:mp3|wav|flac|m4a|aac|aif|aiff|mp4|txt|lrc|png|jpg|webp)\.new|\..+\.[mM][pP]3\.tagging)$)"_s,
        QRegularExpression::DotMatchesEverythingOption);
    return staging.match(fileName).hasMatch();
}

int removeStagingLeftovers(const QString& folder)
{
    int removed = 0;
    const QFileInfoList files = QDir(folder).entryInfoList(QDir::Files | QDir::Hidden | QDir::NoSymLinks);
    for (const QFileInfo& file : files) {
        if (isStagingName(file.fileName()) && removeStagingFile(QFile::encodeName(file.filePath())))
            ++removed;
    }
    return removed;
}

} // namespace orvane
