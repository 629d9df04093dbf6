#include "platform/network/ConnectionPool.h"

#include <QPointer>
#include <QTimer>

#include <algorithm>

namespace orvane {

ConnectionPointer ConnectionPool::take(const Origin& origin)
{
    const auto found = std::find_if(idle_.begin(), idle_.end(), [&origin](const ConnectionPointer& connection) {
        return connection->origin() == origin && connection->isOpen();
    });
    if (found == idle_.end())
        return nullptr;
    ConnectionPointer connection = std::move(*found);
    idle_.erase(found);
    connection->disconnect();
    return connection;
}

void ConnectionPool::give(ConnectionPointer connection)
{
    Connection* const kept = connection.get();
    kept->disconnect();
    kept->markUsed();
    std::erase_if(idle_, [kept](const ConnectionPointer& other) { return other->origin() == kept->origin(); });
    // Whatever comes unasked ends it too.
    for (const auto signal : {&Connection::closed, &Connection::arrived})
        connect(kept, signal, this, [this, kept] { drop(kept); });
    connect(kept, &Connection::failed, this, [this, kept] { drop(kept); });
    idle_.push_back(std::move(connection));
    // A connection that was let go of lives for a moment longer, and may outlive the pool.
    QTimer::singleShot(idleLife_, kept, [pool = QPointer(this), kept] {
        if (pool)
            pool->drop(kept);
    });
}

void ConnectionPool::drop(Connection* connection)
{
    std::erase_if(idle_, [connection](const ConnectionPointer& other) { return other.get() == connection; });
}

} // namespace orvane
