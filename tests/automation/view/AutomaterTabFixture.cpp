#include "tests/automation/view/AutomaterTabFixture.h"

#include "main/Chrome/SegmentBar.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QSignalSpy>
#include <QTimer>

namespace orvane::test {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

demo::LibraryOptions threeTracks()
{
    demo::LibraryOptions options;
    options.tracks = 3;
    options.plainOnly = true;
    options.shortestSeconds = 1;
    options.longestSeconds = 1;
    return options;
}

} // namespace

AutomaterTabFixture::AutomaterTabFixture()
    : AutomaterTabFixture(std::make_unique<demo::StandInService>(threeTracks()))
{
}

AutomaterTabFixture::AutomaterTabFixture(std::unique_ptr<demo::StandInService> made)
    : AutomaterWorld(made->endpoints())
    , service(std::move(made))
{
    service->setTokenLifetime(1h);
    session.setToken(service->currentToken());
    launch();
}

bool AutomaterTabFixture::waitUntil(const std::function<bool()>& condition) const
{
    QDeadlineTimer deadline(60s);
    QTimer beat;
    beat.start(5);
    while (!condition() && !deadline.hasExpired()) {
        QEventLoop turn;
        QObject::connect(&beat, &QTimer::timeout, &turn, &QEventLoop::quit);
        turn.exec();
    }
    return condition();
}

bool AutomaterTabFixture::waitForIdle() const
{
    return waitUntil([this] { return !run().isRunning(); });
}

void AutomaterTabFixture::runToTheEnd()
{
    // A run that finds nothing to do may be over before the press returns.
    const QSignalSpy finished(&run(), &AutomaterRun::finished);
    tab->toggleRun();
    ASSERT_TRUE(waitUntil([&finished] { return finished.count() == 1; }));
}

void AutomaterTabFixture::startAndHold()
{
    demo::Fault fault;
    fault.kind = demo::Fault::Kind::silence;
    fault.where = u"page=1"_s;
    service->script(fault);
    tab->toggleRun();
    ASSERT_TRUE(session.automationInProgress);
}

void AutomaterTabFixture::pickSource(RunSource source)
{
    part<SegmentBar>(u"sourcePicker"_s)->choose(static_cast<int>(source));
}

QStringList AutomaterTabFixture::lines() const
{
    const auto* log = part<LogView>(u"logView"_s);
    QStringList shown;
    for (int line = 0; line < log->lineCount(); ++line)
        shown.append(log->lineText(line).section(u"] "_s, 1));
    return shown;
}

QStringList AutomaterTabFixture::files(const QString& below) const
{
    return QDir(folder() + u'/' + below).entryList(QDir::Files);
}

void AutomaterTabFixture::write(const QString& name) const
{
    QDir().mkpath(folder());
    QFile file(folder() + u'/' + name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("not much of a song");
}

} // namespace orvane::test
