#pragma once

#include "tests/platform/desktop/FakeService.h"

namespace orvane::test {

/// A screen saver that gives out the cookies 0, 1, 2, …
class FakeScreenSaver : public FakeService
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.ScreenSaver")

public:
    FakeScreenSaver();

public Q_SLOTS:
    uint Inhibit(const QString& program, const QString& reason);
    void UnInhibit(uint cookie);

private:
    uint next_ = 0;
};

} // namespace orvane::test
