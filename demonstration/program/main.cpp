#include "demonstration/program/Demonstration.h"
#include "demonstration/service/StandInService.h"
#include "main/App/L10n.h"
#include "main/Program/Program.h"
#include "main/Program/RootRefusal.h"
#include "main/Window/AppDelegate.h"
#include "main/Window/ProgramServices.h"

#include <QApplication>
#include <QDir>
#include <QStandardPaths>

#include <cstdio>
#include <optional>
#include <unistd.h>

namespace {

using namespace orvane;
using namespace Qt::Literals::StringLiterals;

const QString programName = u"orvane-demo"_s;

/// The folder for an unattended run; absent for a person at the window.
std::optional<QString> unattendedFolder(const QStringList& arguments)
{
    if (arguments.size() == 3 && arguments[1] == u"--unattended")
        return QDir(arguments[2]).absolutePath();
    return std::nullopt;
}

/// A fresh folder: what an earlier demonstration left there goes.
bool makeFresh(const QString& folder)
{
    return QDir(folder).removeRecursively() && QDir().mkpath(folder);
}

ProgramFolders foldersOf(const std::optional<QString>& unattended)
{
    if (!unattended)
        return ProgramFolders::ofUser(programName);
    return {.preferences = *unattended + u"/preferences.json"_s, .webProfile = *unattended + u"/web"_s};
}

/// The demonstration never writes where the user's own library goes.
void keepApart(const ProgramFolders& folders)
{
    Preferences preferences(folders.preferences);
    if (preferences.contains(u"destinationPath"_s))
        return;
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    preferences.set(u"destinationPath"_s, data + u'/' + programName + u"/Library"_s);
}

bool mayRun()
{
    // Scripts that run the demonstration as root switch the web engine's sandbox off.
    if (qEnvironmentVariableIsSet("QTWEBENGINE_DISABLE_SANDBOX"))
        return true;
    const auto refusal = refusalFor(geteuid());
    if (refusal)
        std::fprintf(stderr, "%s\n", qPrintable(*refusal));
    return !refusal;
}

} // namespace

int main(int argc, char** argv)
{
    if (!mayRun())
        return 1;
    prepareApplication();
    QApplication application(argc, argv);
    QCoreApplication::setApplicationName(programName);
    const std::optional<QString> unattended = unattendedFolder(QCoreApplication::arguments());
    if (unattended && !makeFresh(*unattended)) {
        std::fprintf(stderr, "%s cannot be made anew.\n", qPrintable(*unattended));
        return 1;
    }
    const ProgramFolders folders = foldersOf(unattended);
    if (!unattended)
        keepApart(folders);

    demo::StandInService service;
    SystemDialogs dialogs;
    ProgramServices services(service.endpoints(), folders, dialogs);
    dressApplication(application);
    AppDelegate delegate(services);
    delegate.applicationDidFinishLaunching();
    if (unattended)
        return demo::Demonstration(service, services, delegate, *unattended).run() ? 0 : 1;
    return QApplication::exec();
}
