#include "automation/AutomaterRun.h"
#include "main/App/Preferences.h"
#include "main/App/Session.h"
#include "platform/async/Clock.h"
#include "platform/async/Ticker.h"
#include "platform/desktop/Notifier.h"
#include "platform/desktop/SleepInhibitor.h"
#include "platform/network/HttpClient.h"
#include "tests/support/TraceMark.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QThreadPool>

#include <cstdio>

using namespace Qt::Literals::StringLiterals;
using namespace orvane;

/// automation_worker FOLDER PREFERENCES: renames, tags and masters what lies in the folder, and says every line of the
/// log. Exits with 1 where a stage failed.
int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    if (argc != 3)
        return 2;
    // Calls are counted by thread: with one for the work its steps come in the same order each time.
    QThreadPool::globalInstance()->setMaxThreadCount(1);
    QThreadPool::globalInstance()->setExpiryTimeout(-1);
    Preferences preferences(QString::fromLocal8Bit(argv[2]));
    Session session(preferences);
    HttpClient client;
    SystemClock clock;
    SystemTicker ticker;
    Notifier notifier(QDBusConnection(u"none"_s));
    SleepInhibitor sleep(QDBusConnection(u"none"_s), QDBusConnection(u"none"_s));
    AutomaterRun run({.session = session,
                      .preferences = preferences,
                      .client = client,
                      .clock = clock,
                      .ticker = ticker,
                      .notifier = notifier,
                      .sleep = sleep,
                      .endpoints = {}});
    const PipelineConfig config{.destination = QUrl::fromLocalFile(QString::fromLocal8Bit(argv[1]))};
    run.configProvider = [&config] { return config; };
    run.choicesProvider = [] {
        return RunChoices{.source = RunSource::folder, .rename = true, .tag = true, .master = true};
    };
    QStringList said;
    QObject::connect(&run, &AutomaterRun::logged, &run, [&said](const QString& message) { said.append(message); });
    int outcome = 1;
    QObject::connect(&run, &AutomaterRun::finished, &run, [&outcome](const RunSummary& summary) {
        outcome = summary.isSuccess() ? 0 : 1;
        QCoreApplication::quit();
    });
    test::markTrace();
    run.toggle();
    QCoreApplication::exec();
    test::markTrace();
    for (const QString& line : said)
        std::printf("%s\n", qPrintable(line));
    return outcome;
}
