#include "tests/support/ScriptedServer.h"

#include <arpa/inet.h>
#include <array>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <netinet/in.h>
#include <poll.h>
#include <stdexcept>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace orvane::test {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::chrono::minutes patience{1};
constexpr int dribblePauseMs = 5;

class Descriptor
{
public:
    explicit Descriptor(int value)
        : value_(value)
    {
        if (value_ < 0)
            throw std::runtime_error("no descriptor");
    }

    ~Descriptor()
    {
        if (value_ >= 0)
            ::close(value_);
    }

    Descriptor(Descriptor&& other) noexcept
        : value_(std::exchange(other.value_, -1))
    {
    }

    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int operator*() const { return value_; }

private:
    int value_;
};

bool isGone(int connection)
{
    std::array<char, 1> next{};
    const ssize_t count = ::recv(connection, next.data(), next.size(), MSG_PEEK | MSG_DONTWAIT);
    return count == 0 || (count < 0 && errno != EAGAIN && errno != EINTR);
}

} // namespace

Step send(QByteArray bytes, int times)
{
    return {.kind = Step::Kind::send, .bytes = std::move(bytes), .times = times};
}

Step gate()
{
    return {.kind = Step::Kind::gate, .bytes = {}};
}

Step hold()
{
    return {.kind = Step::Kind::hold, .bytes = {}};
}

Step dribble()
{
    return {.kind = Step::Kind::dribble, .bytes = "."};
}

Step reset()
{
    return {.kind = Step::Kind::reset, .bytes = {}};
}

Step nextRequest()
{
    return {.kind = Step::Kind::nextRequest, .bytes = {}};
}

QByteArray answer(const QByteArray& status, const QByteArray& headerLines, const QByteArray& body)
{
    const QByteArray length = "Content-Length: " + QByteArray::number(body.size()) + "\r\n";
    return answerUnmeasured(status, headerLines + length, body);
}

QByteArray answerUnmeasured(const QByteArray& status, const QByteArray& headerLines, const QByteArray& body)
{
    return "HTTP/1.1 " + status + "\r\n" + headerLines + "\r\n" + body;
}

class ScriptedServer::Implementation
{
public:
    explicit Implementation(const QString& address)
        : address_(address)
        , listener_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
        , ending_(::eventfd(0, EFD_CLOEXEC))
    {
        sockaddr_in name = {};
        name.sin_family = AF_INET;
        ::inet_pton(AF_INET, address.toLatin1().constData(), &name.sin_addr);
        socklen_t length = sizeof name;
        auto* const generic = reinterpret_cast<sockaddr*>(&name);
        const bool listening = ::bind(*listener_, generic, length) == 0 && ::listen(*listener_, 64) == 0 &&
                               ::getsockname(*listener_, generic, &length) == 0;
        if (!listening)
            throw std::runtime_error("cannot listen");
        port_ = ntohs(name.sin_port);
        acceptor_ = std::thread([this] { acceptAll(); });
    }

    ~Implementation()
    {
        {
            const std::lock_guard lock(mutex_);
            isEnding_ = true;
        }
        changed_.notify_all();
        const std::uint64_t one = 1;
        if (::write(*ending_, &one, sizeof one) != sizeof one)
            std::terminate();
        acceptor_.join();
        for (std::thread& thread : servers_)
            thread.join();
    }

    Implementation(const Implementation&) = delete;
    Implementation& operator=(const Implementation&) = delete;

    void play(Script script)
    {
        const std::lock_guard lock(mutex_);
        scripts_.append(std::move(script));
    }

    void clear()
    {
        const std::lock_guard lock(mutex_);
        scripts_.clear();
    }

    bool waitUntil(const std::function<bool()>& happened)
    {
        std::unique_lock lock(mutex_);
        return changed_.wait_for(lock, patience, happened);
    }

    template <typename Change>
    auto change(Change apply)
    {
        const std::lock_guard lock(mutex_);
        changed_.notify_all();
        return apply();
    }

    template <typename Read>
    auto read(Read value) const
    {
        const std::lock_guard lock(mutex_);
        return value();
    }

    const QString address_;
    quint16 port_ = 0;
    int gatesReached_ = 0;
    int gatesOpened_ = 0;
    int left_ = 0;
    int connections_ = 0;
    QList<QByteArray> requests_;

private:
    /// Whether something can be read from `descriptor` before the server ends; `milliseconds` below 0 is for ever.
    bool waitReadable(int descriptor, int milliseconds)
    {
        std::array<pollfd, 2> watched = {pollfd{descriptor, POLLIN, 0}, pollfd{*ending_, POLLIN, 0}};
        ::poll(watched.data(), watched.size(), milliseconds);
        return watched[1].revents == 0 && watched[0].revents != 0;
    }

    bool ends() const
    {
        return read([this] { return isEnding_; });
    }

    void acceptAll()
    {
        while (waitReadable(*listener_, -1)) {
            const int accepted = ::accept4(*listener_, nullptr, nullptr, SOCK_CLOEXEC);
            if (accepted < 0)
                continue;
            change([this] { ++connections_; });
            servers_.emplace_back([this, connection = Descriptor(accepted)] { serve(*connection); });
        }
    }

    void serve(int connection)
    {
        while (readRequest(connection)) {
            bool there = true;
            bool again = false;
            for (const Step& step : nextScript()) {
                again = step.kind == Step::Kind::nextRequest;
                if (there || step.kind == Step::Kind::gate)
                    there = perform(step, connection) && there;
            }
            if (!again || !there)
                break;
        }
        ::shutdown(connection, SHUT_WR);
    }

    Script nextScript()
    {
        const std::lock_guard lock(mutex_);
        if (scripts_.isEmpty())
            return {};
        return scripts_.size() > 1 ? scripts_.takeFirst() : scripts_.first();
    }

    bool readRequest(int connection)
    {
        QByteArray head;
        std::array<char, 4096> piece{};
        while (!head.endsWith("\r\n\r\n")) {
            if (!waitReadable(connection, -1))
                return false;
            const ssize_t count = ::recv(connection, piece.data(), piece.size(), 0);
            if (count <= 0)
                return false;
            head.append(piece.data(), count);
        }
        change([this, &head] { requests_.append(head); });
        return true;
    }

    bool perform(const Step& step, int connection)
    {
        switch (step.kind) {
        case Step::Kind::send:
            return sendAll(step, connection);
        case Step::Kind::gate:
            return passGate();
        case Step::Kind::hold:
            while (!ends() && waitReadable(connection, -1) && !isGone(connection)) {
            }
            return noteLeaving();
        case Step::Kind::dribble:
            while (!ends() && !isGone(connection) && sendAll(step, connection))
                waitReadable(connection, dribblePauseMs);
            return noteLeaving();
        case Step::Kind::reset: {
            const linger atOnce = {.l_onoff = 1, .l_linger = 0};
            ::setsockopt(connection, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
            const sockaddr none = {.sa_family = AF_UNSPEC, .sa_data = {}};
            ::connect(connection, &none, sizeof none);
            return false;
        }
        case Step::Kind::nextRequest:
            return true;
        }
        return false;
    }

    bool sendAll(const Step& step, int connection)
    {
        for (int time = 0; time < step.times; ++time) {
            QByteArrayView rest = step.bytes;
            while (!rest.isEmpty()) {
                std::array<pollfd, 2> watched = {pollfd{connection, POLLOUT, 0}, pollfd{*ending_, POLLIN, 0}};
                ::poll(watched.data(), watched.size(), -1);
                const ssize_t count =
                    ::send(connection, rest.data(), static_cast<std::size_t>(rest.size()), MSG_NOSIGNAL | MSG_DONTWAIT);
                if (watched[1].revents != 0 || (count < 0 && errno != EAGAIN))
                    return noteLeaving();
                rest = rest.sliced(std::max<ssize_t>(count, 0));
            }
        }
        return true;
    }

    bool passGate()
    {
        std::unique_lock lock(mutex_);
        const int mine = ++gatesReached_;
        changed_.notify_all();
        changed_.wait(lock, [this, mine] { return isEnding_ || gatesOpened_ >= mine; });
        return !isEnding_;
    }

    bool noteLeaving()
    {
        change([this] { ++left_; });
        return false;
    }

    Descriptor listener_;
    Descriptor ending_;
    mutable std::mutex mutex_;
    std::condition_variable changed_;
    bool isEnding_ = false;
    QList<Script> scripts_;
    std::thread acceptor_;
    std::vector<std::thread> servers_;
};

ScriptedServer::ScriptedServer(const QString& address)
    : implementation_(std::make_unique<Implementation>(address))
{
}

ScriptedServer::~ScriptedServer() = default;

void ScriptedServer::play(Script script)
{
    implementation_->play(std::move(script));
}

void ScriptedServer::clear()
{
    implementation_->clear();
}

quint16 ScriptedServer::port() const
{
    return implementation_->port_;
}

QUrl ScriptedServer::url(const QString& target) const
{
    return QUrl(u"http://%1:%2%3"_s.arg(implementation_->address_).arg(port()).arg(target));
}

bool ScriptedServer::waitForGate(int count)
{
    return implementation_->waitUntil([this, count] { return implementation_->gatesReached_ >= count; });
}

void ScriptedServer::openGate()
{
    implementation_->change([this] { ++implementation_->gatesOpened_; });
}

bool ScriptedServer::waitForLeaving()
{
    return implementation_->waitUntil([this] { return implementation_->left_ > 0; });
}

QList<QByteArray> ScriptedServer::requests() const
{
    return implementation_->read([this] { return implementation_->requests_; });
}

int ScriptedServer::connections() const
{
    return implementation_->read([this] { return implementation_->connections_; });
}

} // namespace orvane::test
