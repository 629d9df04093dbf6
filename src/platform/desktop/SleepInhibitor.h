#pragma once

#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QDBusUnixFileDescriptor>
#include <QObject>
#include <QString>

#include <optional>

namespace orvane {

/// Keeps the machine from sleeping while it holds: through logind's inhibitor on the system bus, else through
/// org.freedesktop.ScreenSaver on the session bus. Where neither answers the machine may sleep, and nothing fails.
class SleepInhibitor : public QObject
{
    Q_OBJECT

public:
    SleepInhibitor(QDBusConnection systemBus, QDBusConnection sessionBus, QObject* parent = nullptr);
    ~SleepInhibitor() override;

    /// Asks for it, in the user's words; returns at once. A second call before the release does nothing.
    void hold(const QString& reason);
    /// Lets go, also of an answer that is still under way.
    void release();

    /// Sleep is prevented at this moment.
    bool isHolding() const;

Q_SIGNALS:
    void holdingChanged(bool holding);

private:
    void holdThroughLogind(const QString& reason);
    void holdThroughScreenSaver(const QString& reason);

    /// Whether the answer to the request of that number is still wanted.
    bool isWanted(int request) const { return wanted_ && request == request_; }

    QDBusConnection systemBus_;
    QDBusConnection sessionBus_;
    bool wanted_ = false;
    /// Number of the latest hold: an answer to an earlier one is not wanted any more.
    int request_ = 0;
    /// Logind's lock: it holds for as long as the descriptor is open.
    QDBusUnixFileDescriptor descriptor_;
    std::optional<uint> cookie_;
};

} // namespace orvane
