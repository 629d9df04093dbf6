#pragma once

#include "tests/platform/desktop/FakeService.h"

#include <QVariantMap>

namespace orvane::test {

/// A notification service that gives out the identifiers 7, 8, 9, … and keeps that of a notification it replaces.
class FakeNotifications : public FakeService
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    FakeNotifications();

    QStringList capabilities;

public Q_SLOTS:
    QStringList GetCapabilities();
    uint Notify(const QString& program, uint replaced, const QString& icon, const QString& title, const QString& text,
                const QStringList& actions, const QVariantMap& hints, int milliseconds);

Q_SIGNALS:
    void ActionInvoked(uint id, const QString& action);

private:
    uint next_ = 7;
};

} // namespace orvane::test
