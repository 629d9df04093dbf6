#pragma once

#include "demonstration/service/StandInService.h"
#include "tests/demonstration/service/RawClient.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

namespace orvane::test {

/// A small library behind the service, and a client that asks it over bare connections.
class StandIn : public testing::Test
{
protected:
    static demo::LibraryOptions shortLibrary()
    {
        return {.tracks = 16, .pageSize = 5, .shortestSeconds = 1, .longestSeconds = 2};
    }

    RawHeaders bearer() const { return {{"Authorization", "Bearer " + service.currentToken().toLatin1()}}; }

    RawAnswer askPage(int number, const QByteArray& more = {}) const
    {
        return ask(port, "/api/feed/v2?page=" + QByteArray::number(number) + more, bearer());
    }

    QJsonArray page(int number, const QByteArray& more = {}) const
    {
        const RawAnswer answer = askPage(number, more);
        EXPECT_EQ(answer.status(), 200);
        return QJsonDocument::fromJson(answer.body).object()[QStringLiteral("clips")].toArray();
    }

    QByteArray audioTarget(int position) const { return '/' + service.tracks()[position].id.toLatin1() + ".mp3"; }

    /// Waits until that many requests have been seen, and gives them.
    QList<demo::SeenRequest> seenAfter(qsizetype count) const
    {
        QList<demo::SeenRequest> seen = service.requests();
        while (seen.size() < count)
            seen = service.requests();
        return seen;
    }

    demo::StandInService service{shortLibrary()};
    const quint16 port = static_cast<quint16>(service.endpoints().sunoHome.port());
};

} // namespace orvane::test
