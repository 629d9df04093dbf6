#include "main/Window/ProgramServices.h"

#include "main/App/L10n.h"

#include <QDBusConnection>
#include <QGuiApplication>
#include <QStandardPaths>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

ProgramFolders ProgramFolders::ofUser(const QString& programName)
{
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return {.preferences = Preferences::userPath(programName), .webProfile = data + u'/' + programName + u"/web"_s};
}

ProgramServices::ProgramServices(Endpoints addresses, const ProgramFolders& folders, Dialogs& answers)
    : endpoints(std::move(addresses))
    , preferences(folders.preferences)
    , session(preferences)
    , dialogs(answers)
    , notifier(QDBusConnection::sessionBus())
    , sleep(QDBusConnection::systemBus(), QDBusConnection::sessionBus())
    , taskbar(QDBusConnection::sessionBus(), QGuiApplication::desktopFileName())
    , profile(folders.webProfile)
{
    L10n::setPreferences(&preferences);
}

ProgramServices::~ProgramServices()
{
    L10n::setPreferences(nullptr);
}

} // namespace orvane
