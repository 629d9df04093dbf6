#include "platform/desktop/Reveal.h"

#include "platform/desktop/Answer.h"

#include <QDBusMessage>
#include <QFileInfo>
#include <QUrl>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

QDBusMessage showItems(const QString& path)
{
    const QString service = u"org.freedesktop.FileManager1"_s;
    QDBusMessage call =
        QDBusMessage::createMethodCall(service, u"/org/freedesktop/FileManager1"_s, service, u"ShowItems"_s);
    call << QStringList{QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded)} << QString();
    return call;
}

} // namespace

void revealFile(QDBusConnection bus, const QString& path, std::function<void(const QString& folder)> openFolder)
{
    const QString folder = QFileInfo(path).path();
    if (!bus.isConnected()) {
        openFolder(folder);
        return;
    }
    whenAnswered(bus.asyncCall(showItems(path)), [folder, openFolder](const QDBusPendingCall& answer) {
        if (answer.isError())
            openFolder(folder);
    });
}

} // namespace orvane
