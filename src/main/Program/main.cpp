#include "main/Program/Program.h"
#include "main/Program/RootRefusal.h"
#include "main/Window/AppDelegate.h"
#include "main/Window/ProgramServices.h"

#include <QApplication>

#include <cstdio>
#include <unistd.h>

int main(int argc, char** argv)
{
    using namespace orvane;

    if (const auto refusal = refusalFor(geteuid())) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(*refusal));
        return 1;
    }
    prepareApplication();
    QApplication application(argc, argv);
    SystemDialogs dialogs;
    ProgramServices services(Endpoints::production(), ProgramFolders::ofUser(QStringLiteral("orvane")), dialogs);
    dressApplication(application);
    AppDelegate delegate(services);
    delegate.applicationDidFinishLaunching();
    const int result = QApplication::exec();
    delegate.applicationWillTerminate();
    return result;
}
