#include "trackfiles/keys/TrackKeys.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <dirent.h>
#include <memory>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

struct CloseFolder
{
    void operator()(DIR* folder) const { ::closedir(folder); }
};

/// The visible names in a folder, in no order. The names alone are read: a look at each file would cost more than all
/// the rest in a library of tens of thousands. A name that is no text cannot be one of ours.
QStringList visibleNames(const QString& folder)
{
    QStringList names;
    const std::unique_ptr<DIR, CloseFolder> open(::opendir(QFile::encodeName(folder).constData()));
    if (!open)
        return names;
    while (const dirent* entry = ::readdir(open.get())) {
        if (entry->d_name[0] == '.')
            continue;
        QString name = QFile::decodeName(entry->d_name);
        if (name.contains(QChar::ReplacementCharacter) && QFile::encodeName(name) != entry->d_name)
            continue;
        names.append(std::move(name));
    }
    return names;
}

/// Two spellings of one title, by case or by composed form, meet in one key.
QString lookupKey(const QString& title)
{
    return title.toLower().normalized(QString::NormalizationForm_C);
}

} // namespace

QHash<QString, QString> ExistingFiles::byTitle(const QString& folder)
{
    const QString folderName = QFileInfo(QDir::cleanPath(folder)).fileName();
    QHash<QString, QString> bases;
    for (const QString& name : visibleNames(folder)) {
        if (!Library::classify(name, folderName))
            continue;
        const QString trackKey = Library::trackKey(name);
        const QString title = lookupKey(TrackNamer::stripIndexPrefix(trackKey));
        if (title.isEmpty())
            continue;
        QString& base = bases[title];
        if (base.isEmpty() || trackKey < base)
            base = trackKey;
    }
    return bases;
}

QString ExistingFiles::base(const QString& title, int index, const QHash<QString, QString>& existing)
{
    if (const auto found = existing.constFind(lookupKey(title)); found != existing.constEnd())
        return *found;
    return u"%1 - "_s.arg(index + 1, 3, 10, QChar(u'0')) + title;
}

} // namespace orvane
