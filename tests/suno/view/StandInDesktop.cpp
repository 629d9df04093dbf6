#include "tests/suno/view/StandInDesktop.h"

#include "platform/desktop/Notifier.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QSignalSpy>
#include <QTest>

#include <stdexcept>

namespace orvane::test {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString programsConnection = u"orvane-tested-program"_s;
const QString desktopsConnection = u"orvane-stand-in-desktop"_s;

constexpr int longestWait = 30'000;

} // namespace

StandInDesktop::StandInDesktop()
{
    daemon_.start(u"dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--nopidfile"_s, u"--print-address=1"_s});
    if (!daemon_.waitForStarted() || !daemon_.waitForReadyRead())
        throw std::runtime_error("dbus-daemon does not start");
    const QString address = QString::fromLatin1(daemon_.readLine()).trimmed();
    QDBusConnection::connectToBus(address, programsConnection);
    QDBusConnection desktop = QDBusConnection::connectToBus(address, desktopsConnection);
    desktop.registerVirtualObject(u"/org/freedesktop"_s, this, QDBusConnection::SubPath);
    desktop.registerService(u"org.freedesktop.Notifications"_s);
    desktop.registerService(u"org.freedesktop.ScreenSaver"_s);
}

StandInDesktop::~StandInDesktop()
{
    QDBusConnection::disconnectFromBus(programsConnection);
    QDBusConnection::disconnectFromBus(desktopsConnection);
    daemon_.terminate();
    daemon_.waitForFinished();
}

QDBusConnection StandInDesktop::bus() const
{
    return QDBusConnection(programsConnection);
}

QString StandInDesktop::introspect(const QString&) const
{
    return {};
}

bool StandInDesktop::handleMessage(const QDBusMessage& message, const QDBusConnection& connection)
{
    connection.send(message.createReply(answer(message)));
    return true;
}

void StandInDesktop::chooseAction(uint notification, const QString& action)
{
    QDBusMessage chosen = QDBusMessage::createSignal(u"/org/freedesktop/Notifications"_s,
                                                     u"org.freedesktop.Notifications"_s, u"ActionInvoked"_s);
    chosen << notification << action;
    QDBusConnection(desktopsConnection).send(chosen);
}

QVariantList StandInDesktop::answer(const QDBusMessage& message)
{
    const QString method = message.member();
    const QVariantList arguments = message.arguments();
    if (method == u"GetCapabilities")
        return {QStringList{u"body"_s, u"actions"_s}};
    if (method == u"Notify") {
        shown.append({.title = arguments.at(3).toString(),
                      .text = arguments.at(4).toString(),
                      .actions = arguments.at(5).toStringList()});
        return {uint(shown.size())};
    }
    if (method == u"Inhibit") {
        awakeFor.append(arguments.at(1).toString());
        cookies_.append(++lastCookie_);
        return {lastCookie_};
    }
    if (method == u"UnInhibit") {
        const qsizetype index = cookies_.indexOf(arguments.at(0).toUInt());
        if (index >= 0) {
            cookies_.removeAt(index);
            awakeFor.removeAt(index);
        }
    }
    return {};
}

bool StandInDesktop::settle() const
{
    const QDBusMessage ping = QDBusMessage::createMethodCall(u"org.freedesktop.Notifications"_s,
                                                             u"/org/freedesktop/Notifications"_s, {}, u"Ping"_s);
    const QDBusPendingCallWatcher watcher(bus().asyncCall(ping));
    QSignalSpy answered(&watcher, &QDBusPendingCallWatcher::finished);
    return answered.wait(longestWait);
}

bool StandInDesktop::tell(Notifier& notifier, const QString& text)
{
    notifier.show({.title = u"Test"_s, .text = text, .folder = {}});
    return QTest::qWaitFor([&] { return !shown.isEmpty() && shown.last().text == text; }, longestWait) && settle();
}

bool StandInDesktop::acquaint(Notifier& notifier)
{
    const bool isShown = tell(notifier, u"first"_s);
    shown.clear();
    return isShown;
}

QStringList StandInDesktop::textsUntilNow(Notifier& notifier)
{
    tell(notifier, u"last"_s);
    QStringList texts;
    for (const Shown& one : shown)
        texts.append(one.text);
    return texts;
}

} // namespace orvane::test
