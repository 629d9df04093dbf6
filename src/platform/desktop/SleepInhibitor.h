#pragma once

#include <QDBusConnection>
#include <QDBusUnixFileDescriptor>
#include <QObject>
#include <QString>

namespace orvane {

/// Keeps the machine from sleeping while it holds: through logind's inhibitor on the system bus, else through
/// org.freedesktop.ScreenSaver on the session bus. Where neither answers the machine may sleep, and nothing fails.
class SleepInhibitor : public QObject
{
    Q_OBJECT

public:
    SleepInhibitor(QDBusConnection systemBus, QDBusConnection sessionBus, QObject* parent = nullptr);
    ~SleepInhibitor() override;

    /// Asks for it, in the user's words; returns at once. A second call while it holds does nothing.
    void hold(const QString& reason);
    /// Lets go, also of an answer that is still under way.
    void release();

    /// Sleep is prevented at this moment.
    bool isHolding() const;

Q_SIGNALS:
    void holdingChanged(bool holding);

private:
    void holdThroughScreenSaver(const QString& reason);

    QDBusConnection systemBus_;
    QDBusConnection sessionBus_;
    bool wanted_ = false;
    int request_ = 0;
    QDBusUnixFileDescriptor descriptor_;
    uint cookie_ = 0;
};

} // namespace orvane
