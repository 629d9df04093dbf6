#pragma once

#include "tests/platform/desktop/FakeService.h"

#include <QDBusUnixFileDescriptor>

namespace orvane::test {

/// A login manager that gives out one end of a pipe as its lock, and sees at the other end whether it is still held.
class FakeLogind : public FakeService
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.login1.Manager")

public:
    FakeLogind();
    ~FakeLogind() override;

    /// Locks that were given out and are still open.
    int locksHeld();

public Q_SLOTS:
    QDBusUnixFileDescriptor Inhibit(const QString& what, const QString& who, const QString& why, const QString& mode);

private:
    QList<int> ends_;
};

} // namespace orvane::test
