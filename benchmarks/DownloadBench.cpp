#include "benchmarks/Report.h"
#include "platform/network/HttpClient.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QThread>
#include <qcoro/qcorotask.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <functional>
#include <memory>
#include <sys/socket.h>
#include <vector>

namespace {

using namespace Qt::Literals::StringLiterals;
namespace bench = orvane::bench;

constexpr qint64 pieceBytes = 1024 * 1024;
constexpr int pieces = 300;
constexpr int rounds = 7;

[[noreturn]] void giveUp(const char* why)
{
    std::fprintf(stderr, "%s\n", why);
    std::exit(1);
}

void sendAll(qintptr descriptor, const QByteArray& bytes)
{
    for (qsizetype sent = 0; sent < bytes.size();) {
        const ssize_t count = ::send(static_cast<int>(descriptor), bytes.data() + sent,
                                     static_cast<std::size_t>(bytes.size() - sent), MSG_NOSIGNAL);
        if (count < 0)
            return;
        sent += count;
    }
}

/// Answers connections on loopback one after the other with 300 MiB, as fast as they are taken.
class Source : public QThread
{
public:
    Source()
    {
        if (!server_.listen(QHostAddress::LocalHost))
            giveUp("cannot listen on loopback");
        server_.moveToThread(this);
    }

    ~Source() override
    {
        requestInterruption();
        wait();
    }

    QUrl url() const { return QUrl(u"http://127.0.0.1:%1/track.mp3"_s.arg(server_.serverPort())); }

private:
    void run() override
    {
        constexpr int patienceMs = 50;
        while (!isInterruptionRequested()) {
            if (server_.waitForNewConnection(patienceMs))
                serve(*std::unique_ptr<QTcpSocket>(server_.nextPendingConnection()));
        }
        server_.close();
    }

    void serve(QTcpSocket& connection) const
    {
        while (!connection.peek(pieceBytes).endsWith("\r\n\r\n") && connection.waitForReadyRead()) {
        }
        const int blocking = ::fcntl(static_cast<int>(connection.socketDescriptor()), F_GETFL) & ~O_NONBLOCK;
        ::fcntl(static_cast<int>(connection.socketDescriptor()), F_SETFL, blocking);
        const QByteArray length = QByteArray::number(pieceBytes * pieces);
        sendAll(connection.socketDescriptor(),
                "HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Length: " + length + "\r\n\r\n");
        for (int index = 0; index < pieces; ++index)
            sendAll(connection.socketDescriptor(), piece_);
    }

    QTcpServer server_;
    QByteArray piece_ = QByteArray(pieceBytes, 'x');
};

double secondsOf(const std::function<void()>& work)
{
    const double start = bench::seconds();
    work();
    return bench::seconds() - start;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

double megabytesPerSecond(double seconds)
{
    return static_cast<double>(pieceBytes) * pieces / 1e6 / seconds;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"track.mp3"_s);
    Source source;
    source.start();
    orvane::HttpClient client;
    const auto ours = [&client, &source, &path] {
        orvane::HttpRequest request;
        request.url = source.url();
        QCoro::waitFor(client.download(request, path, {}));
    };
    const auto curls = [&source, &path] {
        if (QProcess::execute(u"curl"_s, {u"--silent"_s, u"--output"_s, path, source.url().toString()}) != 0)
            giveUp("curl failed");
    };
    curls();
    const double before = bench::residentMebibytes();
    ours();
    bench::report("download 300 MiB, growth of memory", bench::peakResidentMebibytes() - before, "MiB");
    std::vector<double> ourSeconds;
    std::vector<double> curlSeconds;
    for (int round = 0; round < rounds; ++round) {
        ourSeconds.push_back(secondsOf(ours));
        curlSeconds.push_back(secondsOf(curls));
    }
    bench::report("download 300 MiB", megabytesPerSecond(median(ourSeconds)), "MB/s", "curl",
                  megabytesPerSecond(median(curlSeconds)));
}
