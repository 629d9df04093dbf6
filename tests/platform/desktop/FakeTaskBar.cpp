#include "tests/platform/desktop/FakeTaskBar.h"

#include "tests/platform/desktop/FakeService.h"

#include <QDBusMessage>

namespace orvane::test {

using namespace Qt::Literals::StringLiterals;

FakeTaskBar::FakeTaskBar()
    : bus_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"task bar"_s))
{
    const bool listens = bus_.connect({}, {}, u"com.canonical.Unity.LauncherEntry"_s, u"Update"_s, this,
                                      SLOT(update(QString, QVariantMap)));
    if (!listens)
        qFatal("the test's bus does not let a task bar listen");
}

FakeTaskBar::~FakeTaskBar()
{
    QDBusConnection::disconnectFromBus(u"task bar"_s);
}

QList<FakeTaskBar::Update> FakeTaskBar::told()
{
    // What the program sent has reached the bus; then all that the bus has for this connection must have come too.
    settle();
    const QDBusMessage question =
        QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/"_s, u"org.freedesktop.DBus"_s, u"GetId"_s);
    bus_.call(question, QDBus::BlockWithGui);
    settle();
    return updates_;
}

void FakeTaskBar::update(const QString& program, const QVariantMap& properties)
{
    updates_.append({.program = program,
                     .progress = properties.value(u"progress"_s).toDouble(),
                     .isVisible = properties.value(u"progress-visible"_s).toBool()});
}

void PrintTo(const FakeTaskBar::Update& update, std::ostream* out)
{
    *out << update.program.toStdString() << ' ' << update.progress << (update.isVisible ? " shown" : " hidden");
}

} // namespace orvane::test
