#include "platform/desktop/SleepInhibitor.h"

#include "platform/desktop/Answer.h"

#include <QDBusMessage>
#include <QDBusPendingReply>

#include <utility>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString programName = u"Orvane"_s;

QDBusMessage logindCall(const QString& reason)
{
    QDBusMessage inhibit = QDBusMessage::createMethodCall(u"org.freedesktop.login1"_s, u"/org/freedesktop/login1"_s,
                                                          u"org.freedesktop.login1.Manager"_s, u"Inhibit"_s);
    inhibit << u"sleep"_s << programName << reason << u"block"_s;
    return inhibit;
}

QDBusMessage screenSaverCall(const QString& method)
{
    const QString service = u"org.freedesktop.ScreenSaver"_s;
    return QDBusMessage::createMethodCall(service, u"/org/freedesktop/ScreenSaver"_s, service, method);
}

void unInhibit(const QDBusConnection& bus, uint cookie)
{
    QDBusMessage letGo = screenSaverCall(u"UnInhibit"_s);
    letGo << cookie;
    bus.send(letGo);
}

} // namespace

SleepInhibitor::SleepInhibitor(QDBusConnection systemBus, QDBusConnection sessionBus, QObject* parent)
    : QObject(parent)
    , systemBus_(std::move(systemBus))
    , sessionBus_(std::move(sessionBus))
{
}

SleepInhibitor::~SleepInhibitor()
{
    release();
}

void SleepInhibitor::hold(const QString& reason)
{
    if (wanted_)
        return;
    wanted_ = true;
    ++request_;
    if (systemBus_.isConnected())
        holdThroughLogind(reason);
    else
        holdThroughScreenSaver(reason);
}

void SleepInhibitor::release()
{
    const bool held = isHolding();
    wanted_ = false;
    descriptor_ = {};
    if (cookie_)
        unInhibit(sessionBus_, *std::exchange(cookie_, std::nullopt));
    if (held)
        Q_EMIT holdingChanged(false);
}

bool SleepInhibitor::isHolding() const
{
    return descriptor_.isValid() || cookie_;
}

void SleepInhibitor::holdThroughLogind(const QString& reason)
{
    const QDBusPendingCall pending = systemBus_.asyncCall(logindCall(reason));
    // An answer that nobody wants closes its descriptor by itself, and so lets go.
    whenAnswered(pending, this, [this, reason, request = request_](const QDBusPendingCall& answer) {
        if (!isWanted(request))
            return;
        const QDBusPendingReply<QDBusUnixFileDescriptor> descriptor = answer;
        if (!descriptor.isValid() || !descriptor.value().isValid()) {
            holdThroughScreenSaver(reason);
            return;
        }
        descriptor_ = descriptor.value();
        Q_EMIT holdingChanged(true);
    });
}

void SleepInhibitor::holdThroughScreenSaver(const QString& reason)
{
    if (!sessionBus_.isConnected())
        return;
    QDBusMessage inhibit = screenSaverCall(u"Inhibit"_s);
    inhibit << programName << reason;
    const QPointer<SleepInhibitor> self = this;
    whenAnswered(sessionBus_.asyncCall(inhibit),
                 [self, bus = sessionBus_, request = request_](const QDBusPendingCall& answer) {
                     const QDBusPendingReply<uint> cookie = answer;
                     if (!cookie.isValid())
                         return;
                     if (!self || !self->isWanted(request)) {
                         unInhibit(bus, cookie.value());
                         return;
                     }
                     self->cookie_ = cookie.value();
                     Q_EMIT self->holdingChanged(true);
                 });
}

} // namespace orvane
