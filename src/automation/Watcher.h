#pragma once

#include "automation/AutomationServices.h"
#include "platform/async/TaskScope.h"
#include "suno/Clip.h"
#include "suno/Engine.h"
#include "suno/LogLevel.h"

#include <QDateTime>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>
#include <qcoro/qcorotask.h>

#include <functional>
#include <optional>

namespace orvane {

/// Looks at the library every so often and hands on the tracks that it has not seen.
///
/// What was seen is kept in the preferences and only ever written from a whole read. A track that did not come through
/// stays unseen and is tried again at the next check. Lives on the main thread; has an engine of its own, so that
/// stopping a run stops no check. Destroying it ends a check under way and waits for that.
class Watcher
{
public:
    /// Minutes: what is taken without a stored value, and the least.
    static constexpr int usualInterval = 15;
    static constexpr int leastInterval = 5;

    explicit Watcher(const AutomationServices& services);
    ~Watcher();
    Watcher(const Watcher&) = delete;
    Watcher& operator=(const Watcher&) = delete;

    /// Hears every line for the log.
    std::function<void(const QString& message, LogLevel level)> onLog;
    /// Runs the tracks and gives the identifiers of those that came through; none do without it.
    std::function<QCoro::Task<QStringList>(QList<Clip>)> onNewTracks;
    /// Called when anything that `summary` tells has changed.
    std::function<void()> onStateChange;
    /// The project to read, or empty for the whole library, as without it.
    std::function<QString()> workspaceProvider;

    /// For the user's switch: takes the library as it is now for the baseline, then starts.
    void turnOn();
    /// For the user's switch: stops, also where the baseline is still being read.
    void turnOff();

    /// Checks at once and from then on at each interval.
    void start();
    /// Ends the checks to come; one under way goes on.
    void stop();

    /// Reads the library and hands on what is new in it. Does nothing while another check or an export is under way, or
    /// without a token.
    QCoro::Task<> check();

    /// Marks everything that is in the library now as seen; nothing where it cannot be read whole. Waits for a check
    /// under way.
    QCoro::Task<> adoptCurrentLibrary();

    bool isEnabled() const;

    bool isChecking() const { return checking_; }

    /// Minutes between two checks.
    int intervalMinutes() const;
    /// Stored for the next start; held to the least.
    void setIntervalMinutes(int minutes);

    /// What the latest check came to, in words.
    const QString& lastResult() const { return lastResult_; }

    /// When a check last ended.
    const std::optional<QDateTime>& lastCheck() const { return lastCheck_; }

    /// What the latest check came to and when, for a status line.
    QString summary() const;

private:
    QCoro::Task<> adoptAndStart(int turn);
    QCoro::Task<QString> readAndHandOn();
    QCoro::Task<QString> handOn(QList<Clip> fresh);
    QCoro::Task<bool> adoptAll();
    bool isEnding() const;
    QString workspace() const;
    QSet<QString> seen() const;
    void remember(const QSet<QString>& seen);
    void setChecking(bool checking);
    void changed() const;
    QString reported(const QString& sentence, LogLevel level) const;
    void log(const QString& message, LogLevel level) const;

    const AutomationServices services_;
    Engine engine_;
    bool checking_ = false;
    /// Number of the latest turn of the user's switch: a start that an earlier one wanted is not wanted any more.
    int turn_ = 0;
    std::optional<QDateTime> lastCheck_;
    QString lastResult_;
    /// Destroyed first: its tasks use all of the above.
    TaskScope scope_;
};

} // namespace orvane
