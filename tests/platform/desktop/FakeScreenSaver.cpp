#include "tests/platform/desktop/FakeScreenSaver.h"

namespace orvane::test {

using namespace Qt::Literals::StringLiterals;

FakeScreenSaver::FakeScreenSaver()
    : FakeService(u"org.freedesktop.ScreenSaver"_s, u"/org/freedesktop/ScreenSaver"_s)
{
}

uint FakeScreenSaver::Inhibit(const QString& program, const QString& reason)
{
    const uint cookie = next_++;
    noteCall({program, reason}, {cookie});
    return cookie;
}

void FakeScreenSaver::UnInhibit(uint cookie)
{
    noteCall({cookie}, {});
}

} // namespace orvane::test
