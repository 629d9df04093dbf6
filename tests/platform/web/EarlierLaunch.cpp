#include "platform/web/WebPage.h"
#include "platform/web/WebProfile.h"
#include "tests/platform/web/PageServer.h"

#include <QApplication>

/// A short run of a program with a web profile: FOLDER ADDRESS SCRIPT. It loads the address, runs the script there and
/// ends as a program does.
int main(int argc, char** argv)
{
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.size() != 4)
        return 2;
    orvane::WebProfile profile(arguments.at(1));
    orvane::WebPage page(profile);
    const bool loaded = orvane::test::load(page, QUrl(arguments.at(2)));
    return loaded && orvane::test::call(page, arguments.at(3)).isValue() ? 0 : 1;
}
