#pragma once

#include "platform/network/Connection.h"

#include <QObject>

#include <vector>

namespace orvane {

/// Open connections between two requests, at most one for each origin and each for a few seconds only.
class ConnectionPool final : public QObject
{
public:
    explicit ConnectionPool(QObject* parent)
        : QObject(parent)
    {
    }

    /// An open connection to `origin`; null where there is none.
    ConnectionPointer take(const Origin& origin);

    /// Keeps a connection on which nothing is under way.
    void give(ConnectionPointer connection);

private:
    void drop(Connection* connection);

    std::vector<ConnectionPointer> idle_;
};

} // namespace orvane
