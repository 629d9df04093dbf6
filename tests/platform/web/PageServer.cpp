#include "tests/platform/web/PageServer.h"

#include "platform/web/WebPage.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QSignalSpy>
#include <QSslConfiguration>
#include <QSslServer>
#include <QTcpSocket>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace orvane::test {
namespace {

constexpr std::chrono::milliseconds longestWait = std::chrono::minutes(1);

/// The part of the body that a request's head asks for, as "bytes=FIRST-LAST" or "bytes=FIRST-".
QByteArray partial(const Page& page, const QByteArray& range)
{
    const QList<QByteArray> ends = range.split('-');
    const qsizetype first = ends.first().toLongLong();
    const qsizetype last = ends.value(1).isEmpty() ? page.body.size() - 1 : ends.value(1).toLongLong();
    const QByteArray part = page.body.mid(first, last - first + 1);
    return "HTTP/1.1 206 Partial Content\r\nContent-Type: " + page.contentType +
           "\r\nContent-Length: " + QByteArray::number(part.size()) + "\r\nContent-Range: bytes " +
           QByteArray::number(first) + '-' + QByteArray::number(first + part.size() - 1) + '/' +
           QByteArray::number(page.body.size()) + "\r\nConnection: close\r\n\r\n" + part;
}

QByteArray response(const Page& page, const QByteArray& head)
{
    constexpr QByteArrayView range = "range: bytes=";
    const qsizetype asked = head.toLower().indexOf("\r\n" + range.toByteArray());
    if (page.inParts && asked >= 0)
        return partial(page, head.mid(asked + 2 + range.size()).split('\r').first());
    return "HTTP/1.1 " + QByteArray::number(page.status) + " Answer\r\nContent-Type: " + page.contentType +
           "\r\nContent-Length: " + QByteArray::number(page.body.size()) + "\r\n" + page.headers +
           "Connection: close\r\n\r\n" + page.body;
}

QByteArray pathOf(const QByteArray& head)
{
    return head.split(' ').value(1).split('?').first();
}

} // namespace

PageServer::PageServer()
    : server_(std::make_unique<QTcpServer>())
{
    listen();
}

PageServer::PageServer(const QSslConfiguration& tls)
    : tls_(true)
{
    auto server = std::make_unique<QSslServer>();
    server->setSslConfiguration(tls);
    server_ = std::move(server);
    listen();
}

void PageServer::listen()
{
    server_->listen(QHostAddress::LocalHost);
    QObject::connect(server_.get(), &QTcpServer::pendingConnectionAvailable, server_.get(), [this] {
        while (QTcpSocket* socket = server_->nextPendingConnection()) {
            QObject::connect(socket, &QTcpSocket::readyRead, server_.get(), [this, socket] { answer(*socket); });
            QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            if (socket->bytesAvailable() > 0)
                answer(*socket);
        }
    });
}

void PageServer::answer(QTcpSocket& socket)
{
    if (!socket.peek(65536).contains("\r\n\r\n"))
        return;
    const QByteArray head = socket.readAll();
    requests_.append(head);
    const Page page = pages_.value(pathOf(head), Page{.body = "not here", .status = 404});
    if (page.silent)
        return;
    socket.write(response(page, head));
    socket.disconnectFromHost();
}

QUrl PageServer::url(const QString& path, const QString& host) const
{
    QUrl url;
    url.setScheme(tls_ ? u"https"_s : u"http"_s);
    url.setHost(host);
    url.setPort(server_->serverPort());
    url.setPath(path);
    return url;
}

QByteArray PageServer::cookiesSentTo(const QByteArray& path) const
{
    QByteArray cookies;
    for (const QByteArray& head : requests_) {
        if (pathOf(head) != path)
            continue;
        cookies.clear();
        for (const QByteArray& line : head.split('\n')) {
            if (line.toLower().startsWith("cookie:"))
                cookies = line.mid(7).trimmed();
        }
    }
    return cookies;
}

bool eventually(const std::function<bool()>& holds)
{
    // What is to be deleted later from outside of any loop would wait for the end of the program.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    if (holds())
        return true;
    // The engine does one piece of its work for each turn of the loop, so that the loop must not pause between turns.
    QEventLoop loop;
    QTimer look;
    bool held = false;
    QObject::connect(&look, &QTimer::timeout, &loop, [&] {
        held = holds();
        if (held)
            loop.quit();
        else
            look.start();
    });
    // One look at a time, since a look may run an event loop of its own; and none before this loop runs, which could
    // not be left by it.
    look.setSingleShot(true);
    look.start(2);
    QTimer::singleShot(longestWait, &loop, &QEventLoop::quit);
    loop.exec();
    return held;
}

bool load(WebPage& page, const QUrl& url)
{
    const QSignalSpy finished(&page, &WebPage::finished);
    const QSignalSpy failed(&page, &WebPage::failed);
    page.load(url);
    eventually([&] { return !finished.isEmpty() || !failed.isEmpty(); });
    return !finished.isEmpty();
}

ScriptOutcome call(WebPage& page, const QString& body, const QJsonObject& arguments,
                   std::chrono::milliseconds timeLimit)
{
    return QCoro::waitFor(page.callAsync(body, arguments, timeLimit));
}

} // namespace orvane::test
