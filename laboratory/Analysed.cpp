#include "laboratory/Analysed.h"

#include "dj/KeyText.h"
#include "laboratory/Arguments.h"
#include "laboratory/Json.h"
#include "mastering/arithmetic/InParallel.h"

#include <QJsonObject>

#include <exception>
#include <vector>

namespace orvane::lab {

using namespace Qt::Literals::StringLiterals;

namespace {

QJsonObject objectOf(const DJ::Grid& grid)
{
    return {{u"bpm"_s, toJson(grid.bpm)},
            {u"phase"_s, toJson(grid.phase)},
            {u"downbeat"_s, grid.downbeat},
            {u"cueIn"_s, toJson(grid.cueIn)},
            {u"firstBar"_s, toJson(grid.firstBar())}};
}

QJsonObject objectOf(const DJ::Key& key)
{
    return {{u"tonic"_s, key.tonic}, {u"isMinor"_s, key.isMinor}, {u"name"_s, name(key)}, {u"camelot"_s, camelot(key)}};
}

QJsonObject objectOf(const DJ::Analysis& track)
{
    return {{u"url"_s, track.url.toString(QUrl::FullyEncoded)},
            {u"title"_s, track.title},
            {u"bpm"_s, toJson(track.bpm)},
            {u"key"_s, objectOf(track.key)},
            {u"energy"_s, toJson(track.energy)},
            {u"duration"_s, toJson(track.duration)},
            {u"grid"_s, objectOf(track.grid)},
            {u"playedBPM"_s, toJson(track.playedBPM)}};
}

} // namespace

DJ::Set analysed(const QStringList& paths)
{
    std::vector<DJ::Analysis> tracks(std::size_t(paths.size()));
    std::vector<std::exception_ptr> failures(tracks.size());
    inParallel(tracks.size(), processorCount(), [&](std::size_t index) {
        try {
            tracks[index] = DJ::analyse(QUrl::fromLocalFile(absolute(paths[qsizetype(index)])));
        } catch (...) {
            failures[index] = std::current_exception();
        }
    });
    for (const std::exception_ptr& failure : failures) {
        if (failure)
            std::rethrow_exception(failure);
    }
    return DJ::Set(tracks.begin(), tracks.end());
}

QJsonArray toJson(const DJ::Set& set)
{
    QJsonArray array;
    for (const DJ::Analysis& track : set)
        array.append(objectOf(track));
    return array;
}

} // namespace orvane::lab
