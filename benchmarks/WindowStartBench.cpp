#include "benchmarks/Report.h"
#include "main/App/Preferences.h"
#include "main/App/Session.h"
#include "main/Chrome/Dialogs.h"
#include "main/Chrome/TabBar.h"
#include "main/Chrome/Theme.h"
#include "main/Window/MainMenu.h"
#include "platform/async/Clock.h"
#include "platform/desktop/Notifier.h"
#include "platform/desktop/SleepInhibitor.h"
#include "platform/network/HttpClient.h"
#include "suno/view/DownloaderTab.h"

#include <QApplication>
#include <QMainWindow>
#include <QMenuBar>
#include <QProcess>
#include <QTemporaryDir>
#include <QVBoxLayout>

#include <cstdio>
#include <string_view>

namespace {

using namespace orvane;
using namespace Qt::Literals::StringLiterals;

constexpr std::string_view showArgument = "--show";

/// Ends the program once everything in the window has been painted for the first time.
class FirstPaint : public QObject
{
public:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        const bool handled = QObject::eventFilter(watched, event);
        if (event->type() == QEvent::Paint)
            QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
        return handled;
    }
};

MenuActions noActions()
{
    return {.selectedTab = [] { return 0; }};
}

/// The window as the program shows it, but for the page on the left.
int showWindow(int argc, char** argv)
{
    QApplication application(argc, argv);
    Theme::apply(application);
    const QTemporaryDir folder;
    Preferences preferences(folder.filePath(u"preferences.json"_s));
    Session session(preferences);
    HttpClient client;
    SystemClock clock;
    SystemDialogs dialogs;
    Notifier notifier(QDBusConnection::sessionBus());
    SleepInhibitor sleep(QDBusConnection::systemBus(), QDBusConnection::sessionBus());

    QMainWindow window;
    auto* column = new QWidget(&window);
    auto* rows = new QVBoxLayout(column);
    rows->addWidget(new TabBar({u"Downloader"_s}, column));
    rows->addWidget(new DownloaderTab({.session = session,
                                       .client = client,
                                       .clock = clock,
                                       .dialogs = dialogs,
                                       .notifier = notifier,
                                       .sleep = sleep,
                                       .endpoints = Endpoints::production()},
                                      column));
    window.setCentralWidget(column);
    window.setMenuBar(MainMenu::build(u"Orvane"_s, {u"Downloader"_s}, noActions(), &window));
    FirstPaint firstPaint;
    column->installEventFilter(&firstPaint);
    window.resize(1320, 860);
    window.show();
    return QApplication::exec();
}

double secondsToRun(const QString& program, const QStringList& arguments)
{
    const double start = bench::seconds();
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(60'000) || process.exitCode() != 0)
        qFatal("%s did not end well.", qPrintable(program));
    return bench::seconds() - start;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 2 && argv[1] == showArgument)
        return showWindow(argc, argv);
    QCoreApplication application(argc, argv);
    const QString self = QCoreApplication::applicationFilePath();
    secondsToRun(self, {QString::fromLatin1(showArgument)});
    bench::report("window: start to first paint, without the web engine",
                  secondsToRun(self, {QString::fromLatin1(showArgument)}), "s", "an empty process",
                  secondsToRun(u"true"_s, {}));
    return 0;
}
