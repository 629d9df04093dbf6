#include "main/App/Session.h"

#include "main/App/Preferences.h"

#include <QDir>
#include <QStandardPaths>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString destinationKey = u"destinationPath"_s;

/// A path with a NUL would make the folder of the shorter name.
bool isUsablePath(const QString& path)
{
    return !path.isEmpty() && !path.contains(QChar::Null);
}

QUrl initialDestination(const Preferences& preferences)
{
    const QString stored = preferences.text(destinationKey).value_or(QString());
    if (isUsablePath(stored) && QDir().mkpath(stored))
        return QUrl::fromLocalFile(QDir::cleanPath(QDir(stored).absolutePath()));
    return Session::defaultDestination();
}

QUrl inside(const QUrl& folder, const QString& name)
{
    return QUrl::fromLocalFile(QDir(folder.toLocalFile()).filePath(name));
}

} // namespace

Session::Session(Preferences& preferences, QObject* parent)
    : QObject(parent)
    , preferences_(preferences)
    , destination_(initialDestination(preferences))
{
}

void Session::setToken(const QString& token)
{
    token_ = token;
    Q_EMIT tokenChanged();
}

void Session::setDestination(const QUrl& destination)
{
    destination_ = destination;
    preferences_.set(destinationKey, QDir::cleanPath(destination.toLocalFile()));
    Q_EMIT destinationChanged();
}

void Session::setSelection(const std::optional<TrackRef>& selection)
{
    selection_ = selection;
    Q_EMIT selectionChanged();
}

QUrl Session::videosFolder() const
{
    return inside(destination_, u"Videos"_s);
}

QUrl Session::masteredFolder() const
{
    return inside(destination_, u"Mastered"_s);
}

QUrl Session::defaultDestination()
{
    const QStringList downloads = QStandardPaths::standardLocations(QStandardPaths::DownloadLocation);
    if (downloads.isEmpty())
        qFatal("This system names no download folder.");
    return inside(QUrl::fromLocalFile(downloads.first()), u"Orvane"_s);
}

} // namespace orvane
