#include "tests/platform/desktop/FakeNotifications.h"

namespace orvane::test {

using namespace Qt::Literals::StringLiterals;

FakeNotifications::FakeNotifications()
    : FakeService(u"org.freedesktop.Notifications"_s, u"/org/freedesktop/Notifications"_s)
{
}

QStringList FakeNotifications::GetCapabilities()
{
    noteCall({}, {capabilities});
    return capabilities;
}

uint FakeNotifications::Notify(const QString& program, uint replaced, const QString& icon, const QString& title,
                               const QString& text, const QStringList& actions, const QVariantMap& hints,
                               int milliseconds)
{
    const uint id = replaced ? replaced : next_++;
    noteCall({program, replaced, icon, title, text, actions, hints, milliseconds}, {id});
    return id;
}

} // namespace orvane::test
