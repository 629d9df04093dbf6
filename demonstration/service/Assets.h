#pragma once

#include "demonstration/service/HttpMessage.h"
#include "demonstration/service/Library.h"

#include <QByteArray>
#include <QCache>
#include <QHash>
#include <QString>

#include <functional>
#include <future>
#include <mutex>

namespace orvane::demo {

/// Recordings and covers, made when they are first asked for and kept within a bound. Callable from any thread: what
/// one is making, others wait for.
class Assets
{
public:
    QByteArray audio(const Track& track);
    QByteArray artwork(const Track& track);
    /// The cover at a quarter of its side, as a JPEG.
    QByteArray thumbnail(const Track& track);

    /// A body of `size` bytes that repeats one short recording.
    StreamedBody repeatedAudio(qint64 size);

private:
    using Maker = std::function<QByteArray()>;

    QByteArray kept(const QString& name, const Maker& make);

    std::mutex lock_;
    static constexpr int mostKilobytes = 256 * 1024;
    QCache<QString, QByteArray> made_{mostKilobytes};
    QHash<QString, std::shared_future<QByteArray>> underWay_;
};

} // namespace orvane::demo
