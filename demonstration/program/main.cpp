#include "demonstration/program/ChainDemonstration.h"
#include "demonstration/program/DownloadDemonstration.h"
#include "demonstration/service/StandInService.h"
#include "main/App/L10n.h"
#include "main/Program/Program.h"
#include "main/Program/RootRefusal.h"
#include "main/Window/AppDelegate.h"
#include "main/Window/ProgramServices.h"
#include "platform/desktop/SoleInstance.h"

#include <QApplication>
#include <QDir>
#include <QStandardPaths>

#include <cstdio>
#include <memory>
#include <optional>
#include <unistd.h>

namespace {

using namespace orvane;
using namespace Qt::Literals::StringLiterals;

const QString programName = u"orvane-demo"_s;

/// A demonstration that goes by itself.
struct Unattended
{
    /// "chain" or "download".
    QString job;
    QString folder;
};

/// Absent for a person at the window.
std::optional<Unattended> unattendedFrom(const QStringList& arguments)
{
    if (arguments.size() == 4 && arguments[1] == u"--unattended")
        return Unattended{.job = arguments[2], .folder = QDir(arguments[3]).absolutePath()};
    return std::nullopt;
}

bool isKnown(const Unattended& unattended)
{
    return unattended.job == u"chain" || unattended.job == u"download";
}

std::unique_ptr<demo::Demonstration> demonstrationOf(const Unattended& unattended, demo::StandInService& service,
                                                     ProgramServices& services, AppDelegate& delegate)
{
    if (unattended.job == u"download")
        return std::make_unique<demo::DownloadDemonstration>(service, services, delegate, unattended.folder);
    return std::make_unique<demo::ChainDemonstration>(service, services, delegate, unattended.folder);
}

/// A fresh folder: what an earlier demonstration left there goes.
bool makeFresh(const QString& folder)
{
    return QDir(folder).removeRecursively() && QDir().mkpath(folder);
}

ProgramFolders foldersOf(const std::optional<Unattended>& unattended)
{
    if (!unattended)
        return ProgramFolders::ofUser(programName);
    return {.preferences = unattended->folder + u"/preferences.json"_s, .webProfile = unattended->folder + u"/web"_s};
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
    const std::optional<Unattended> unattended = unattendedFrom(QCoreApplication::arguments());
    if (unattended && !isKnown(*unattended)) {
        std::fprintf(stderr, "%s is no demonstration: chain, download\n", qPrintable(unattended->job));
        return 2;
    }
    if (unattended && !makeFresh(unattended->folder)) {
        std::fprintf(stderr, "%s cannot be made anew.\n", qPrintable(unattended->folder));
        return 1;
    }
    const ProgramFolders folders = foldersOf(unattended);
    SoleInstance instance(folders.webProfile);
    if (const auto farewell = farewellUnlessFirst(instance))
        return sayFarewell(application, *farewell);
    if (!unattended)
        keepApart(folders);

    demo::StandInService service;
    SystemDialogs dialogs;
    ProgramServices services(service.endpoints(), folders, dialogs);
    dressApplication(application);
    AppDelegate delegate(services);
    QObject::connect(&instance, &SoleInstance::called, &delegate, &AppDelegate::comeForward);
    delegate.applicationDidFinishLaunching();
    if (unattended)
        return demonstrationOf(*unattended, service, services, delegate)->run() ? 0 : 1;
    return QApplication::exec();
}
