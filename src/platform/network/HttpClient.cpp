#include "platform/network/HttpClient.h"

#include "platform/network/Exchange.h"
#include "platform/network/HeaderFields.h"

#include <QThread>
#include <qcoro/qcorofuture.h>

#include <map>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

/// Lives on the network thread and owns what is under way there.
class HttpClient::Worker final : public QObject
{
public:
    explicit Worker(Limits limits)
        : limits_(limits)
        , pool_(this)
    {
    }

    void start(quint64 number, std::unique_ptr<Exchange> exchange)
    {
        Exchange* const started = exchange.get();
        running_.emplace(number, std::move(exchange));
        connect(started, &Exchange::ended, this, [this, number] { remove(number); });
        started->start();
    }

    void cancel(quint64 number)
    {
        if (const auto found = running_.find(number); found != running_.end())
            found->second->cancel();
    }

    ExchangeGround ground() { return {.limits = limits_, .pool = pool_}; }

private:
    void remove(quint64 number)
    {
        const auto found = running_.find(number);
        found->second.release()->deleteLater();
        running_.erase(found);
    }

    Limits limits_;
    ConnectionPool pool_;
    std::map<quint64, std::unique_ptr<Exchange>> running_;
};

class HttpClient::Thread
{
public:
    explicit Thread(Limits limits)
        : limits_(limits)
        , worker_(new Worker(limits))
    {
        thread_.setObjectName(u"network"_s);
        worker_->moveToThread(&thread_);
        QObject::connect(worker_, &QObject::destroyed, &thread_, &QThread::quit, Qt::DirectConnection);
        thread_.start();
    }

    ~Thread()
    {
        // In the event loop, which then still deletes what the worker lets go of.
        worker_->deleteLater();
        thread_.wait();
    }

    Thread(const Thread&) = delete;
    Thread& operator=(const Thread&) = delete;

    const Limits& limits() const { return limits_; }

    QFuture<HttpResponse> start(quint64 number, HttpRequest request, std::unique_ptr<Body> body)
    {
        auto exchange = std::make_unique<Exchange>(std::move(request), std::move(body), worker_->ground());
        const QFuture<HttpResponse> answer = exchange->answer();
        exchange->moveToThread(&thread_);
        const auto begin = [worker = worker_, number, started = exchange.release()] {
            worker->start(number, std::unique_ptr<Exchange>(started));
        };
        QMetaObject::invokeMethod(worker_, begin, Qt::QueuedConnection);
        return answer;
    }

    void cancel(quint64 number)
    {
        const auto end = [worker = worker_, number] { worker->cancel(number); };
        QMetaObject::invokeMethod(worker_, end, Qt::QueuedConnection);
    }

    quint64 nextNumber() { return ++lastNumber_; }

    static QCoro::Task<HttpResponse> fetch(Thread* thread, HttpRequest request, std::unique_ptr<Body> body,
                                           std::stop_token stop)
    {
        if (stop.stop_requested())
            throw HttpError(HttpError::Code::Cancelled, u"cancelled"_s);
        const quint64 number = thread->nextNumber();
        QFuture<HttpResponse> answer = thread->start(number, std::move(request), std::move(body));
        const std::stop_callback onStop(stop, [thread, number] { thread->cancel(number); });
        HttpResponse response = co_await answer;
        co_return response;
    }

private:
    Limits limits_;
    QThread thread_;
    Worker* worker_;
    quint64 lastNumber_ = 0;
};

std::optional<QByteArray> HttpResponse::header(QByteArrayView name) const
{
    return firstValue(headers, name);
}

HttpClient::HttpClient()
    : HttpClient(Limits())
{
}

HttpClient::HttpClient(Limits limits)
    : thread_(std::make_unique<Thread>(limits))
{
}

HttpClient::~HttpClient() = default;

QCoro::Task<HttpResponse> HttpClient::data(HttpRequest request, std::stop_token stop)
{
    return Thread::fetch(thread_.get(), std::move(request), makeMemoryBody(thread_->limits().memoryBody), stop);
}

QCoro::Task<HttpResponse> HttpClient::download(HttpRequest request, QString path, std::stop_token stop)
{
    return Thread::fetch(thread_.get(), std::move(request), makeFileBody(std::move(path)), stop);
}

} // namespace orvane
