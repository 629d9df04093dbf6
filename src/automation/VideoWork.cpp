#include "automation/VideoWork.h"

#include "suno/TrackNames.h"
#include "video/VideoEngine.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <cmath>

namespace orvane::VideoWork {

using namespace Qt::Literals::StringLiterals;

QString subtitleFor(const Clip& clip)
{
    QStringList tags;
    for (const QString& part : clip.tags.split(u',')) {
        if (const QString tag = part.trimmed(); !tag.isEmpty())
            tags.append(tag);
    }
    return tags.isEmpty() ? u"Orvane"_s : tags.first(std::min<qsizetype>(tags.size(), 3)).join(u" · ");
}

double playingTime(const QList<SavedTrack>& tracks)
{
    double seconds = 0.0;
    for (const SavedTrack& track : tracks)
        seconds += std::max(track.clip.durationSeconds, 0.0);
    return seconds;
}

QString humanTime(double seconds)
{
    const qint64 whole = std::llround(seconds);
    const qint64 minutes = whole / 60;
    if (minutes == 0)
        return u"%1s"_s.arg(whole);
    if (minutes < 60)
        return u"%1m"_s.arg(minutes);
    return u"%1h %2m"_s.arg(minutes / 60).arg(minutes % 60);
}

QString stemFor(const QString& stem)
{
    return safeName(stem, u"video"_s);
}

QString outputFor(const QString& folder, const QString& stem)
{
    return folder + u"/Videos/"_s + stemFor(stem) + u".mp4"_s;
}

QSet<QString> renderedStems(const QString& folder)
{
    QSet<QString> stems;
    for (const QString& name : QDir(folder + u"/Videos"_s).entryList(QDir::Files, QDir::NoSort))
        stems.insert(QFileInfo(name).completeBaseName());
    return stems;
}

QString render(VideoEngine& engine, const Order& order)
{
    const QUrl artwork = order.artwork ? QUrl::fromLocalFile(*order.artwork) : QUrl();
    try {
        engine.render(QUrl::fromLocalFile(order.audio), artwork, order.title, order.subtitle, order.look,
                      QUrl::fromLocalFile(order.output));
    } catch (const std::exception& error) {
        return QString::fromUtf8(error.what());
    }
    return {};
}

} // namespace orvane::VideoWork
