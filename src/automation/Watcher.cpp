#include "automation/Watcher.h"

#include "main/App/Preferences.h"
#include "main/App/Session.h"
#include "platform/async/Clock.h"
#include "platform/async/Ticker.h"
#include "platform/desktop/Notifier.h"
#include "platform/network/Redaction.h"

#include <QJsonArray>

#include <algorithm>

namespace orvane {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString enabledKey = u"watcherEnabled"_s;
const QString intervalKey = u"watcherIntervalMinutes"_s;
const QString seenKey = u"watcherSeenClipIDs"_s;

/// How long a wait that the user can stop goes without a look.
constexpr auto slice = 150ms;

QString processedText(qsizetype through, qsizetype fresh)
{
    if (through == fresh)
        return u"%1 new track(s) processed"_s.arg(fresh);
    return u"%1 of %2 processed — the rest will be retried"_s.arg(through).arg(fresh);
}

QString agoText(const QDateTime& then, const QDateTime& now)
{
    const qint64 minutes = then.secsTo(now) / 60;
    return minutes < 1 ? u"just now"_s : u"%1m ago"_s.arg(minutes);
}

} // namespace

Watcher::Watcher(const AutomationServices& services)
    : services_(services)
    , engine_(services.client, services.clock, services.endpoints)
    , lastResult_(u"not started yet"_s)
{
    engine_.tokenProvider = [this] { return services_.session.token(); };
}

Watcher::~Watcher()
{
    services_.ticker.stop();
    onLog = nullptr;
    onStateChange = nullptr;
    scope_.requestStop();
    engine_.stop();
}

void Watcher::turnOn()
{
    scope_.add(adoptAndStart(++turn_));
}

void Watcher::turnOff()
{
    ++turn_;
    stop();
}

QCoro::Task<> Watcher::adoptAndStart(int turn)
{
    co_await adoptCurrentLibrary();
    if (turn == turn_ && !isEnding())
        start();
}

void Watcher::start()
{
    stop();
    services_.preferences.set(enabledKey, true);
    services_.ticker.start(std::chrono::minutes(intervalMinutes()), [this] { scope_.add(check()); });
    scope_.add(check());
}

void Watcher::stop()
{
    services_.ticker.stop();
    services_.preferences.set(enabledKey, false);
    changed();
}

QCoro::Task<> Watcher::check()
{
    if (checking_ || services_.session.downloadInProgress || isEnding())
        co_return;
    if (services_.session.token().isEmpty()) {
        lastResult_ = u"waiting for a Suno session"_s;
        changed();
        co_return;
    }
    setChecking(true);
    lastResult_ = co_await readAndHandOn();
    lastCheck_ = services_.clock.now();
    setChecking(false);
}

QCoro::Task<QString> Watcher::readAndHandOn()
{
    engine_.reset();
    QList<Clip> clips;
    QString refusal;
    try {
        clips = co_await engine_.fetchAllClips(workspace(), services_.session.token());
    } catch (const LibraryError& error) {
        refusal = error.sentence();
    } catch (const std::exception& error) {
        refusal = redacted(QString::fromLocal8Bit(error.what()));
    }
    if (!refusal.isEmpty())
        co_return reported(u"check failed: "_s + refusal, LogLevel::error);
    if (!engine_.lastFetchComplete() || isEnding())
        co_return reported(u"Suno returned only part of the library; skipping this check"_s, LogLevel::error);
    const QSet<QString> known = seen();
    clips.removeIf([&known](const Clip& clip) { return known.contains(clip.id); });
    if (clips.isEmpty())
        co_return u"no new tracks"_s;
    const QString result = co_await handOn(clips);
    co_return result;
}

QCoro::Task<QString> Watcher::handOn(QList<Clip> fresh)
{
    log(u"%1 new track(s) found."_s.arg(fresh.size()), LogLevel::success);
    QStringList through;
    if (onNewTracks)
        through = co_await onNewTracks(fresh);
    if (!through.isEmpty())
        remember(seen() + QSet<QString>(through.begin(), through.end()));
    const QString result = processedText(through.size(), fresh.size());
    services_.notifier.show({.title = u"Orvane"_s, .text = result, .folder = {}});
    co_return result;
}

QCoro::Task<> Watcher::adoptCurrentLibrary()
{
    if (services_.session.token().isEmpty())
        co_return;
    while (checking_ && !isEnding())
        co_await services_.clock.sleep(slice);
    if (isEnding())
        co_return;
    setChecking(true);
    const bool isAdopted = co_await adoptAll();
    if (!isAdopted)
        log(u"Could not read the whole library, so nothing was marked as seen. Try again in a moment."_s,
            LogLevel::error);
    setChecking(false);
}

QCoro::Task<bool> Watcher::adoptAll()
{
    engine_.reset();
    QList<Clip> clips;
    try {
        clips = co_await engine_.fetchAllClips(workspace(), services_.session.token());
    } catch (const std::exception&) {
        co_return false;
    }
    if (!engine_.lastFetchComplete())
        co_return false;
    QSet<QString> all = seen();
    for (const Clip& clip : clips)
        all.insert(clip.id);
    remember(all);
    lastResult_ = u"%1 existing track(s) marked as already handled"_s.arg(clips.size());
    log(lastResult_ + u". From now on only new ones are picked up."_s, LogLevel::success);
    co_return true;
}

bool Watcher::isEnding() const
{
    return scope_.stopToken().stop_requested();
}

bool Watcher::isEnabled() const
{
    return services_.preferences.flag(enabledKey).value_or(false);
}

int Watcher::intervalMinutes() const
{
    return std::max(services_.preferences.integer(intervalKey).value_or(usualInterval), leastInterval);
}

void Watcher::setIntervalMinutes(int minutes)
{
    services_.preferences.set(intervalKey, std::max(minutes, leastInterval));
}

QString Watcher::summary() const
{
    if (checking_)
        return u"checking now…"_s;
    if (!lastCheck_)
        return lastResult_;
    return lastResult_ + u" · checked "_s + agoText(*lastCheck_, services_.clock.now());
}

QString Watcher::workspace() const
{
    return workspaceProvider ? workspaceProvider() : QString();
}

QSet<QString> Watcher::seen() const
{
    const QStringList stored = services_.preferences.texts(seenKey).value_or(QStringList());
    return {stored.begin(), stored.end()};
}

void Watcher::remember(const QSet<QString>& seen)
{
    QStringList sorted(seen.begin(), seen.end());
    sorted.sort();
    services_.preferences.set(seenKey, QJsonArray::fromStringList(sorted));
}

void Watcher::setChecking(bool checking)
{
    checking_ = checking;
    changed();
}

void Watcher::changed() const
{
    if (onStateChange)
        onStateChange();
}

QString Watcher::reported(const QString& sentence, LogLevel level) const
{
    log(sentence, level);
    return sentence;
}

void Watcher::log(const QString& message, LogLevel level) const
{
    if (onLog)
        onLog(message, level);
}

} // namespace orvane
