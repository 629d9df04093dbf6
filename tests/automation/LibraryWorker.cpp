#include "automation/AutomaterRun.h"
#include "demonstration/service/StandInService.h"
#include "main/App/Preferences.h"
#include "main/App/Session.h"
#include "platform/async/Ticker.h"
#include "platform/desktop/Notifier.h"
#include "platform/desktop/SleepInhibitor.h"
#include "platform/network/HttpClient.h"
#include "tests/support/TestClock.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QElapsedTimer>
#include <QThreadPool>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>
#include <thread>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;
using namespace orvane;

namespace {

/// Where this process kills itself: so long after an event of its run, counted from 0.
struct Death
{
    int event = 0;
    std::chrono::microseconds after{0};
};

/// On a thread of its own, as a kill from outside would find the others anywhere.
void dieAfter(std::chrono::microseconds delay)
{
    const auto end = std::chrono::steady_clock::now() + delay;
    std::thread([end] {
        while (std::chrono::steady_clock::now() < end) {
        }
        ::kill(::getpid(), SIGKILL);
    }).detach();
}

int residentKibibytes()
{
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line)) {
        if (line.starts_with("VmRSS:"))
            return std::stoi(line.substr(std::strlen("VmRSS:")));
    }
    return 0;
}

/// Counts what the run tells, and says when each event came.
class Events
{
public:
    explicit Events(std::optional<Death> death)
        : death_(death)
    {
        watch_.start();
    }

    void count()
    {
        std::printf("event %lld\n", static_cast<long long>(watch_.nsecsElapsed() / 1000));
        if (death_ && events_ == death_->event)
            dieAfter(death_->after);
        ++events_;
    }

private:
    std::optional<Death> death_;
    QElapsedTimer watch_;
    int events_ = 0;
};

std::optional<Death> deathFrom(int argc, char** argv)
{
    if (argc != 7)
        return std::nullopt;
    return Death{.event = std::atoi(argv[5]), .after = std::chrono::microseconds(std::atoll(argv[6]))};
}

void sayResident(const RunProgress& at)
{
    constexpr int every = 20;
    if (at.done % every == 0)
        std::printf("resident %d %d %d\n", indexOf(at.stage), at.done, residentKibibytes());
}

} // namespace

/// library_worker FOLDER PREFERENCES PORT TOKEN [EVENT MICROSECONDS]: runs the library of the stand-in service at that
/// port through the chain, and kills itself so long after that event, if told to. Waits of the run take no time. Says
/// when each event came, the resident memory on the way and every line of the log. Exits with 1 where a stage failed.
int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const std::optional<Death> death = deathFrom(argc, argv);
    if (argc != 5 && !death)
        return 2;
    // System calls are counted by thread: with one for the work they come in the same order each time.
    QThreadPool::globalInstance()->setMaxThreadCount(1);
    QThreadPool::globalInstance()->setExpiryTimeout(-1);
    Preferences preferences(QString::fromLocal8Bit(argv[2]));
    Session session(preferences);
    session.setDestination(QUrl::fromLocalFile(QString::fromLocal8Bit(argv[1])));
    session.setToken(QString::fromLatin1(argv[4]));
    HttpClient client;
    test::TestClock clock;
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
                      .endpoints = demo::StandInService::endpointsAt(static_cast<quint16>(std::atoi(argv[3])))});
    run.configProvider = [&session] {
        return PipelineConfig{.workspace = {},
                              .assets = {Asset::audio, Asset::lyrics, Asset::lrc, Asset::artwork},
                              .destination = session.destination(),
                              .token = session.token()};
    };
    run.choicesProvider = [] { return RunChoices{.rename = true, .tag = true, .master = true}; };
    Events events(death);
    QObject::connect(&run, &AutomaterRun::stageChanged, &run, [&events] { events.count(); });
    QObject::connect(&run, &AutomaterRun::progressed, &run, [&events](const RunProgress& at) {
        events.count();
        sayResident(at);
    });
    QObject::connect(&run, &AutomaterRun::logged, &run, [&events](const QString& message) {
        events.count();
        std::printf("log %s\n", qPrintable(message));
    });
    int outcome = 1;
    QObject::connect(&run, &AutomaterRun::finished, &run, [&outcome](const RunSummary& summary) {
        outcome = summary.isSuccess() ? 0 : 1;
        QCoreApplication::quit();
    });
    run.toggle();
    QCoreApplication::exec();
    return outcome;
}
