#include "main/Program/Program.h"
#include "main/Program/RootRefusal.h"
#include "main/Window/AppDelegate.h"
#include "main/Window/ProgramServices.h"
#include "platform/desktop/SoleInstance.h"

#include <QApplication>
#include <QProcess>

#include <cstdio>
#include <unistd.h>

namespace {

using namespace orvane;

struct Ending
{
    int exitCode = 0;
    bool isRelaunched = false;
};

Ending runAsFirst(QApplication& application, const ProgramFolders& folders, SoleInstance& instance)
{
    Ending ending;
    SystemDialogs dialogs;
    ProgramServices services(Endpoints::production(), folders, dialogs);
    dressApplication(application);
    AppDelegate delegate(services);
    delegate.startAnew = [&ending] { ending.isRelaunched = true; };
    QObject::connect(&instance, &SoleInstance::called, &delegate, &AppDelegate::comeForward);
    delegate.applicationDidFinishLaunching();
    ending.exitCode = QApplication::exec();
    delegate.applicationWillTerminate();
    return ending;
}

} // namespace

int main(int argc, char** argv)
{
    if (const auto refusal = refusalFor(geteuid())) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(*refusal));
        return 1;
    }
    prepareApplication();
    QApplication application(argc, argv);
    Ending ending;
    {
        const ProgramFolders folders = ProgramFolders::ofUser(QStringLiteral("orvane"));
        SoleInstance instance(folders.webProfile);
        if (const auto farewell = farewellUnlessFirst(instance))
            return sayFarewell(application, *farewell);
        ending = runAsFirst(application, folders, instance);
    }
    // Not before everything is written and the folders are free again.
    if (ending.isRelaunched)
        QProcess::startDetached(QCoreApplication::applicationFilePath(), {});
    return ending.exitCode;
}
