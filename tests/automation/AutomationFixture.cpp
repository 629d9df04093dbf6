#include "tests/automation/AutomationFixture.h"

#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QTimer>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

QString nameOf(LogLevel level)
{
    return level == LogLevel::info ? u"info"_s : level == LogLevel::success ? u"success"_s : u"error"_s;
}

QString textOf(const StageState& state)
{
    static const QStringList kinds{u"done"_s, u"failed"_s, u"skipped"_s, u"waiting"_s, u"running"_s};
    const QString kind = kinds.at(static_cast<int>(state.kind));
    return state.note.isEmpty() ? kind : kind + u", "_s + state.note;
}

} // namespace

void PrintTo(const LogLevel& level, std::ostream* out)
{
    *out << nameOf(level).toStdString();
}

void PrintTo(const StageState& state, std::ostream* out)
{
    *out << textOf(state).toStdString();
}

namespace test {

demo::LibraryOptions shortTracks(int count)
{
    demo::LibraryOptions options;
    options.tracks = count;
    options.plainOnly = true;
    options.shortestSeconds = 1;
    options.longestSeconds = 1;
    return options;
}

demo::Fault answering(int status, const QString& where, int times)
{
    demo::Fault fault;
    fault.where = where;
    fault.times = times;
    fault.status = status;
    return fault;
}

AutomationFixture::AutomationFixture(int tracks)
    : service(shortTracks(tracks))
{
    service.setTokenLifetime(std::chrono::hours(1));
    session.setDestination(QUrl::fromLocalFile(folder()));
    session.setToken(service.currentToken());
    useDesktop(QDBusConnection(u"none"_s));
}

void AutomationFixture::useDesktop(const QDBusConnection& bus)
{
    automater.reset();
    notifier = std::make_unique<Notifier>(bus);
    sleep = std::make_unique<SleepInhibitor>(QDBusConnection(u"none"_s), bus);
    launch();
}

void AutomationFixture::launch()
{
    automater.reset();
    automater = std::make_unique<Automater>(AutomationServices{.session = session,
                                                               .preferences = preferences,
                                                               .client = client,
                                                               .clock = clock,
                                                               .ticker = ticker,
                                                               .notifier = *notifier,
                                                               .sleep = *sleep,
                                                               .endpoints = service.endpoints()});
    run().configProvider = [this] {
        return PipelineConfig{
            .workspace = workspace, .assets = assets, .destination = session.destination(), .token = session.token()};
    };
    run().choicesProvider = [this] { return choices; };
    run().prerequisites = makePrerequisites(session, run().configProvider, 0);
    const auto add = [this](const QString& line) {
        lines.append(line);
        if (onLine)
            onLine(line);
    };
    QObject::connect(&run(), &AutomaterRun::logged, &run(),
                     [add](const QString& message, LogLevel level) { add(nameOf(level) + u": "_s + message); });
    QObject::connect(&run(), &AutomaterRun::stageChanged, &run(), [add](Stage stage, const StageState& state) {
        add(u"> "_s + nameOf(stage) + u": "_s + textOf(state));
    });
    QObject::connect(&run(), &AutomaterRun::progressed, &run(), [this](const RunProgress& at) {
        progress.append(at);
        if (onProgress)
            onProgress(at);
    });
    QObject::connect(&run(), &AutomaterRun::finished, &run(),
                     [this](const RunSummary& summary) { summaries.append(summary); });
}

void AutomationFixture::runToTheEnd()
{
    const auto before = summaries.size();
    run().toggle();
    ASSERT_TRUE(waitUntil([this, before] { return summaries.size() > before; }));
}

bool AutomationFixture::waitUntil(const std::function<bool()>& condition) const
{
    if (condition())
        return true;
    QElapsedTimer elapsed;
    elapsed.start();
    bool held = false;
    QEventLoop loop;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &loop, [&] {
        held = condition();
        if (held || elapsed.hasExpired(60'000))
            loop.quit();
    });
    look.start(1);
    loop.exec();
    return held;
}

QStringList AutomationFixture::told() const
{
    QStringList told = lines;
    told.removeIf(
        [](const QString& line) { return line.startsWith(u"info: Querying") || line.startsWith(u"info: Page"); });
    return told;
}

QStringList AutomationFixture::logged() const
{
    QStringList logged = told();
    logged.removeIf([](const QString& line) { return line.startsWith(u'>'); });
    return logged;
}

QStringList AutomationFixture::files(const QString& below) const
{
    return QDir(path(below)).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

void AutomationFixture::write(const QString& name, const QByteArray& bytes) const
{
    QDir().mkpath(QFileInfo(path(name)).path());
    QFile file(path(name));
    ASSERT_TRUE(file.open(QFile::WriteOnly)) << name.toStdString();
    ASSERT_EQ(file.write(bytes), bytes.size());
}

QByteArray AutomationFixture::read(const QString& name) const
{
    QFile file(path(name));
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray AutomationFixture::recording() const
{
    return service.audioOf(service.tracks().first().id);
}

void AutomationFixture::select(const QString& name)
{
    session.setSelection(TrackRef{.name = name, .audio = QUrl::fromLocalFile(path(name)), .artwork = {}, .lyrics = {}});
}

} // namespace test
} // namespace orvane
