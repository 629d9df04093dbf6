#pragma once

#include "platform/web/ScriptOutcome.h"

#include <QByteArray>
#include <QJsonObject>
#include <QMap>
#include <QTcpServer>
#include <QUrl>

#include <chrono>
#include <functional>
#include <memory>

class QSslConfiguration;
class QTcpSocket;

namespace orvane {

class WebPage;

namespace test {

/// What a page server answers for a path.
struct Page
{
    QByteArray body;
    int status = 200;
    QByteArray contentType = "text/html; charset=utf-8";
    /// Whole header lines, each with its line end.
    QByteArray headers = {};
    /// Takes the request and never answers.
    bool silent = false;
    /// Gives parts of the body too, to who asks for them, as a player does that goes to a place in a film.
    bool inParts = false;
};

/// A web server on loopback with a few pages, on the test's own event loop. A path without a page answers 404.
class PageServer
{
public:
    PageServer();
    explicit PageServer(const QSslConfiguration& tls);

    void serve(const QByteArray& path, const Page& page) { pages_[path] = page; }

    void serve(const QByteArray& path, const QByteArray& body) { pages_[path] = Page{.body = body}; }

    /// `host` is any name that the engine takes for loopback: 127.0.0.1, localhost, and names below localhost.
    QUrl url(const QString& path, const QString& host = QStringLiteral("127.0.0.1")) const;

    /// Each request's head, in order.
    const QList<QByteArray>& requests() const { return requests_; }

    /// Value of the Cookie header of the last request for `path`.
    QByteArray cookiesSentTo(const QByteArray& path) const;

private:
    void listen();
    void answer(QTcpSocket& socket);

    bool tls_ = false;
    std::unique_ptr<QTcpServer> server_;
    QMap<QByteArray, Page> pages_;
    QList<QByteArray> requests_;
};

/// Whether `holds` came true; the event loop runs meanwhile, for a minute at most.
bool eventually(const std::function<bool()>& holds);

/// Loads `url` and waits; true when it finished.
bool load(WebPage& page, const QUrl& url);

/// Calls a script in the page and waits for its outcome.
ScriptOutcome call(WebPage& page, const QString& body, const QJsonObject& arguments = {},
                   std::chrono::milliseconds timeLimit = std::chrono::minutes(1));

} // namespace test
} // namespace orvane
