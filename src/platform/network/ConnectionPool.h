#pragma once

#include "platform/network/Connection.h"

#include <QObject>

#include <chrono>
#include <vector>

namespace orvane {

/// Open connections between two requests, at most one for each origin and each for a few seconds only.
class ConnectionPool final : public QObject
{
public:
    /// Servers close an idle connection after 5 s and up; a request must not cross that on its way.
    static constexpr std::chrono::milliseconds usualIdleLife{4'000};

    explicit ConnectionPool(QObject* parent, std::chrono::milliseconds idleLife = usualIdleLife)
        : QObject(parent)
        , idleLife_(idleLife)
    {
    }

    /// An open connection to `origin`; null where there is none.
    ConnectionPointer take(const Origin& origin);

    /// Keeps a connection on which nothing is under way.
    void give(ConnectionPointer connection);

private:
    void drop(Connection* connection);

    const std::chrono::milliseconds idleLife_;
    std::vector<ConnectionPointer> idle_;
};

} // namespace orvane
