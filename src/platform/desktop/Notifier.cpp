#include "platform/desktop/Notifier.h"

#include "platform/desktop/Answer.h"

#include <QDBusPendingReply>

#include <utility>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString service = u"org.freedesktop.Notifications"_s;
const QString object = u"/org/freedesktop/Notifications"_s;
const QString openFolder = u"open-folder"_s;
constexpr int serviceDecides = -1;

QDBusMessage call(const QString& method)
{
    return QDBusMessage::createMethodCall(service, object, service, method);
}

QStringList actionsOf(const Notification& notification)
{
    return notification.folder ? QStringList{openFolder, u"Open folder"_s} : QStringList();
}

} // namespace

Notifier::Notifier(QDBusConnection bus, QObject* parent)
    : QObject(parent)
    , bus_(std::move(bus))
{
    // Without the name of a service: to follow a named one the library asks for its owner and waits for the answer.
    bus_.connect(QString(), object, service, u"ActionInvoked"_s, this, SLOT(actionInvoked(uint, QString)));
}

void Notifier::show(const Notification& notification)
{
    if (!bus_.isConnected())
        return;
    next_ = notification;
    if (!underWay_)
        sendNext();
}

void Notifier::sendNext()
{
    if (!next_)
        return;
    if (readsMarkup_)
        send(*std::exchange(next_, std::nullopt));
    else
        askForMarkup();
}

void Notifier::askForMarkup()
{
    underWay_ = true;
    const QDBusPendingCall pending = bus_.asyncCall(call(u"GetCapabilities"_s));
    whenAnswered(pending, this, [this](const QDBusPendingCall& answer) {
        const QDBusPendingReply<QStringList> capabilities = answer;
        readsMarkup_ = capabilities.isValid() && capabilities.value().contains(u"body-markup"_s);
        underWay_ = false;
        sendNext();
    });
}

void Notifier::send(const Notification& notification)
{
    const QString text = *readsMarkup_ ? notification.text.toHtmlEscaped() : notification.text;
    QDBusMessage notify = call(u"Notify"_s);
    notify << u"Orvane"_s << last_ << u"orvane"_s << notification.title << text << actionsOf(notification)
           << QVariantMap() << serviceDecides;
    underWay_ = true;
    whenAnswered(bus_.asyncCall(notify), this, [this, folder = notification.folder](const QDBusPendingCall& answer) {
        const QDBusPendingReply<uint> id = answer;
        if (id.isValid()) {
            last_ = id.value();
            folder_ = folder;
        } else {
            // Another service may answer the next time.
            readsMarkup_.reset();
        }
        underWay_ = false;
        sendNext();
    });
}

void Notifier::actionInvoked(uint id, const QString& action)
{
    if (id == last_ && action == openFolder && folder_ && onOpenFolder)
        onOpenFolder(*folder_);
}

} // namespace orvane
