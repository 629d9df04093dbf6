#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QUrl>

#include <memory>

namespace orvane::test {

/// One thing that the server does to a connection after a request has come.
struct Step
{
    enum class Kind
    {
        send,
        gate,
        hold,
        dribble,
        reset,
        nextRequest
    };

    Kind kind = Kind::send;
    QByteArray bytes;
    /// How often `bytes` are sent.
    int times = 1;
};

using Script = QList<Step>;

/// Sends these bytes as they stand, `times` times.
Step send(QByteArray bytes, int times = 1);
/// Waits until the test opens the gate; reached also when the client has left by then.
Step gate();
/// Says nothing until the client leaves.
Step hold();
/// Sends single bytes, some milliseconds apart, until the client leaves.
Step dribble();
/// Cuts the connection with a reset.
Step reset();
/// Waits for another request on the same connection, which the next script answers.
Step nextRequest();

/// An answer with this status line's tail ("200 OK"), these header lines ("A: b\r\n") and this body, and its length.
QByteArray answer(const QByteArray& status, const QByteArray& headerLines, const QByteArray& body);
/// The same without an announcement of the length.
QByteArray answerUnmeasured(const QByteArray& status, const QByteArray& headerLines, const QByteArray& body);

/// A TCP server on loopback, on threads of its own, that answers with exactly the bytes a test scripts. Behind the last
/// step of a script it closes the connection. Its calls may be made from any thread and do not need an event loop.
class ScriptedServer
{
public:
    /// Listens on a free port of this loopback address.
    explicit ScriptedServer(const QString& address = QStringLiteral("127.0.0.1"));
    ~ScriptedServer();
    ScriptedServer(const ScriptedServer&) = delete;
    ScriptedServer& operator=(const ScriptedServer&) = delete;

    /// Each request takes the next script; the last one serves all further requests.
    void play(Script script);
    /// Forgets all scripts.
    void clear();

    quint16 port() const;
    /// Address of `target` (path and query) here.
    QUrl url(const QString& target = QStringLiteral("/")) const;

    /// Waits until `count` gates have been reached since the start; false if that does not happen within a minute.
    bool waitForGate(int count = 1);
    void openGate();
    /// Waits until a client has left while a script was holding, dribbling or sending; false after a minute.
    bool waitForLeaving();

    /// The heads of all requests, byte for byte, in the order in which they came.
    QList<QByteArray> requests() const;
    int connections() const;

private:
    class Implementation;
    std::unique_ptr<Implementation> implementation_;
};

} // namespace orvane::test
