#include "demonstration/service/Assets.h"

#include "demonstration/service/Painter.h"
#include "demonstration/service/Recording.h"

namespace orvane::demo {

using namespace Qt::Literals::StringLiterals;

QByteArray Assets::kept(const QString& name, const Maker& make)
{
    std::promise<QByteArray> promise;
    {
        std::unique_lock guard(lock_);
        if (const QByteArray* known = made_.object(name))
            return *known;
        if (const auto other = underWay_.constFind(name); other != underWay_.constEnd()) {
            const std::shared_future<QByteArray> coming = *other;
            guard.unlock();
            return coming.get();
        }
        underWay_.insert(name, promise.get_future().share());
    }
    const QByteArray bytes = make();
    promise.set_value(bytes);
    const std::lock_guard guard(lock_);
    underWay_.remove(name);
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

QByteArray Assets::thumbnail(const Track& track)
{
    return kept(track.id + u" thumbnail"_s, [&track] { return paintThumbnail(track.song.seed); });
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
