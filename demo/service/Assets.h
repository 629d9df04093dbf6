#pragma once

#include "demo/service/HttpMessage.h"
#include "demo/service/Library.h"

#include <QByteArray>
#include <QCache>
#include <QString>

#include <mutex>

namespace orvane::demo {

/// Recordings and covers, made when they are first asked for and kept within a bound. Callable from any thread.
class Assets
{
public:
    QByteArray audio(const Track& track);
    QByteArray artwork(const Track& track);

    /// A body of `size` bytes that repeats one short recording.
    StreamedBody repeatedAudio(qint64 size);

private:
    std::mutex lock_;
    static constexpr int mostKilobytes = 256 * 1024;
    QCache<QString, QByteArray> made_{mostKilobytes};

    QByteArray kept(const QString& name, const std::function<QByteArray()>& make);
};

} // namespace orvane::demo
