#include "platform/desktop/SoleInstance.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QLocalSocket>
#include <QStandardPaths>

#include <algorithm>

namespace orvane {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr QByteArrayView question = "come forward ";
constexpr QByteArrayView reply = "coming\n";
constexpr int longestQuestion = 4096;
/// How long a lock is waited for between two questions.
constexpr std::chrono::milliseconds pause = 50ms;

/// A socket's path has a hundred bytes, the folder's may have thousands.
QString socketFor(const QString& folder)
{
    const QByteArray hash = QCryptographicHash::hash(QFile::encodeName(folder), QCryptographicHash::Sha256).toHex();
    const QString runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    return runtime + u'/' + QCoreApplication::applicationName() + u'-' + QString::fromLatin1(hash.first(16));
}

/// Only the last folder is ours; those above it are the system's.
void makePrivateFolder(const QString& folder)
{
    QDir().mkpath(QFileInfo(folder).path());
    QDir().mkdir(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

int leftOf(const QDeadlineTimer& deadline)
{
    return static_cast<int>(deadline.remainingTime());
}

/// Whether the process behind the socket says that it comes forward.
bool call(const QString& socketPath, const QByteArray& activation, const QDeadlineTimer& deadline)
{
    QLocalSocket socket;
    socket.connectToServer(socketPath);
    if (!socket.waitForConnected(leftOf(deadline)))
        return false;
    socket.write(question.toByteArray() + activation.simplified() + '\n');
    while (!socket.canReadLine()) {
        if (!socket.waitForReadyRead(leftOf(deadline)))
            return false;
    }
    return socket.readLine() == reply;
}

} // namespace

SoleInstance::SoleInstance(const QString& folder, QObject* parent)
    : QObject(parent)
    , socketPath_(socketFor(folder))
    , lock_(folder + u".lock"_s)
{
    makePrivateFolder(QFileInfo(folder).path());
    // A lock is as old as the run that holds it; only the end of that process makes it stale.
    lock_.setStaleLockTime(0ms);
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&server_, &QLocalServer::newConnection, this, &SoleInstance::answer);
}

SoleInstance::Standing SoleInstance::take(const QByteArray& activation, std::chrono::milliseconds patience)
{
    const QDeadlineTimer deadline(patience);
    bool isOurs = lock_.tryLock(0ms);
    while (!isOurs) {
        if (call(socketPath_, activation, deadline))
            return Standing::Second;
        if (lock_.error() != QLockFile::LockFailedError)
            break;
        // Who starts or ends does not answer yet, or no more: one of the two changes soon.
        isOurs = lock_.tryLock(std::min(pause, std::chrono::milliseconds(deadline.remainingTime())));
        if (!isOurs && deadline.hasExpired())
            return Standing::Unanswered;
    }
    listen();
    return Standing::First;
}

void SoleInstance::listen()
{
    QLocalServer::removeServer(socketPath_);
    server_.listen(socketPath_);
}

void SoleInstance::answer()
{
    while (QLocalSocket* const caller = server_.nextPendingConnection()) {
        connect(caller, &QLocalSocket::disconnected, caller, &QObject::deleteLater);
        connect(caller, &QLocalSocket::readyRead, this, [this, caller] { hear(*caller); });
        hear(*caller);
    }
}

void SoleInstance::hear(QLocalSocket& caller)
{
    if (!caller.canReadLine() && caller.bytesAvailable() < longestQuestion)
        return;
    const QByteArray line = caller.readLine(longestQuestion);
    if (line.startsWith(question) && line.endsWith('\n')) {
        Q_EMIT called(line.sliced(question.size()).chopped(1));
        caller.write(reply.toByteArray());
        caller.flush();
    }
    caller.disconnectFromServer();
}

} // namespace orvane
