#include "tests/platform/desktop/FakeService.h"

#include <QCoreApplication>
#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <QSignalSpy>

#include <gmock/gmock.h>

namespace orvane::test {

using namespace Qt::Literals::StringLiterals;

FakeService::FakeService(const QString& service, const QString& path)
    : service_(service)
    , path_(path)
    , bus_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"fake "_s + service))
{
    if (!bus_.registerObject(path_, this, QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals) ||
        !bus_.registerService(service_))
        qFatal("the test's bus does not take the service %s", qPrintable(service_));
}

FakeService::~FakeService()
{
    bus_.unregisterService(service_);
    bus_.unregisterObject(path_);
    QDBusConnection::disconnectFromBus(u"fake "_s + service_);
}

int FakeService::count(const QString& method) const
{
    return int(std::count_if(calls.begin(), calls.end(), [&](const Call& call) { return call.method == method; }));
}

QVariantList FakeService::last(const QString& method) const
{
    const auto found =
        std::find_if(calls.rbegin(), calls.rend(), [&](const Call& call) { return call.method == method; });
    return found == calls.rend() ? QVariantList() : found->arguments;
}

void FakeService::answerKept()
{
    keepsAnswers = false;
    for (const Kept& kept : std::exchange(kept_, {}))
        bus_.send(kept.call.createReply(kept.answer));
}

void FakeService::noteCall(const QVariantList& arguments, const QVariantList& answer)
{
    calls.append({.method = message().member(), .arguments = arguments});
    if (refuses) {
        sendErrorReply(QDBusError::AccessDenied, u"refused by the test"_s);
    } else if (keepsAnswers) {
        setDelayedReply(true);
        kept_.append({.call = message(), .answer = answer});
    }
}

QDBusConnection unreachableBus()
{
    return QDBusConnection::connectToBus(u"unix:path=/nowhere/bus"_s, u"unreachable"_s);
}

QDBusConnection testBus()
{
    return QDBusConnection::sessionBus();
}

int answersUnderWay()
{
    return int(QCoreApplication::instance()->findChildren<QDBusPendingCallWatcher*>().size());
}

void settle()
{
    // The bus keeps the order of messages; the second question goes out after whatever the first answer set off.
    for (int round = 0; round < 4; ++round) {
        const QDBusMessage question =
            QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/"_s, u"org.freedesktop.DBus"_s, u"GetId"_s);
        QDBusPendingCallWatcher watcher(testBus().asyncCall(question));
        QSignalSpy answered(&watcher, &QDBusPendingCallWatcher::finished);
        EXPECT_TRUE(answered.wait());
        QCoreApplication::processEvents();
    }
}

} // namespace orvane::test
