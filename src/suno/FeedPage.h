#pragma once

#include "suno/Clip.h"

#include <QByteArray>
#include <QList>
#include <QString>

namespace orvane {

/// One page of the library feed.
struct FeedPage
{
    /// Records on the page, readable or not; none ends the library.
    qsizetype records = 0;
    /// The readable ones in order.
    QList<Clip> clips = {};
    /// Why the body is no JSON; empty where it is.
    QString error = {};

    bool operator==(const FeedPage&) const = default;
};

/// Reads a page's body: a list of objects, or an object that holds one under `clips`. Pure; meant for the pool.
FeedPage readFeedPage(const QByteArray& body);

} // namespace orvane
