#include "main/Window/DestinationGuard.h"

#include "main/App/L10n.h"
#include "main/App/Session.h"
#include "main/Chrome/Dialogs.h"

#include <QFileInfo>
#include <QStandardPaths>

#include <utility>

namespace orvane {
namespace {

// A closing slash makes another address of it, but no other folder.
QString folderPath(const QUrl& url)
{
    return url.adjusted(QUrl::StripTrailingSlash).toLocalFile();
}

Question personalFolderQuestion(const QString& path)
{
    return {.text = L10n::t(L10n::Key::alertBusyFolder, {QFileInfo(path).fileName()}),
            .informativeText = L10n::t(L10n::Key::alertBusyFolderBody),
            .firstButton = L10n::t(L10n::Key::useItAnyway),
            .secondButton = L10n::t(L10n::Key::cancel)};
}

} // namespace

DestinationGuard::DestinationGuard(Session& session, Dialogs& dialogs, QStringList personalFolders)
    : session_(session)
    , dialogs_(dialogs)
    , personalFolders_(std::move(personalFolders))
{
}

void DestinationGuard::adopt(const QUrl& url, QWidget* over)
{
    if (url == session_.destination())
        return;
    if (session_.downloadInProgress) {
        dialogs_.tell(over, L10n::t(L10n::Key::alertRunInProgress), L10n::t(L10n::Key::alertRunInProgressBody));
        return;
    }
    if (mayHoldRun(url, over))
        session_.setDestination(url);
}

bool DestinationGuard::mayHoldRun(const QUrl& url, QWidget* over) const
{
    const QString path = folderPath(url);
    return !personalFolders_.contains(path) || dialogs_.ask(over, personalFolderQuestion(path));
}

QStringList DestinationGuard::usersFolders()
{
    QStringList folders;
    for (const auto location :
         {QStandardPaths::HomeLocation, QStandardPaths::DesktopLocation, QStandardPaths::DocumentsLocation,
          QStandardPaths::DownloadLocation, QStandardPaths::MoviesLocation, QStandardPaths::MusicLocation}) {
        const QStringList entries = QStandardPaths::standardLocations(location);
        if (!entries.isEmpty())
            folders.append(entries.first());
    }
    return folders;
}

} // namespace orvane
