#include "demo/service/Assets.h"

#include "demo/service/Painter.h"
#include "demo/service/Recording.h"

namespace orvane::demo {

using namespace Qt::Literals::StringLiterals;

QByteArray Assets::kept(const QString& name, const std::function<QByteArray()>& make)
{
    const std::lock_guard guard(lock_);
    if (const QByteArray* known = made_.object(name))
        return *known;
    const QByteArray bytes = make();
    made_.insert(name, new QByteArray(bytes), static_cast<int>(bytes.size() / 1024 + 1));
    return bytes;
}

QByteArray Assets::audio(const Track& track)
{
    return kept(track.id + u".mp3"_s, [&track] { return record(track.song); });
}

QByteArray Assets::artwork(const Track& track)
{
    return kept(track.id + u'.' + track.artworkExtension,
                [&track] { return paintCover(track.song.seed, track.artworkExtension); });
}

StreamedBody Assets::repeatedAudio(qint64 size)
{
    // The same for every library, so that many services in one process make it once.
    static const QByteArray block = record({.seconds = 8}).repeated(4);
    const auto read = [size](qint64 offset, qint64 most) {
        const qsizetype start = offset % block.size();
        return block.mid(start, std::min({most, size - offset, qint64(block.size()) - start}));
    };
    return {.size = size, .read = read};
}

} // namespace orvane::demo
