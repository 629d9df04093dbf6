#include "dj/Render.h"
#include "dj/SetTempo.h"
#include "laboratory/Analysed.h"
#include "laboratory/Arguments.h"
#include "laboratory/Json.h"
#include "laboratory/Outputs.h"
#include "laboratory/Verb.h"

namespace orvane::lab {

using namespace Qt::Literals::StringLiterals;

namespace {

double within(const QString& option, double number, double most)
{
    if (number >= 0.0 && number <= most)
        return number;
    throw UsageError(u"--%1 takes a number from 0 to %2."_s.arg(option, QString::number(most)));
}

DJ::MixSettings settingsOf(const Arguments& options)
{
    constexpr double longestBlend = 3600.0;
    constexpr double largestStretch = 0.5;
    constexpr double farthestNudge = 11.0;
    DJ::MixSettings settings;
    settings.crossfade =
        within(u"crossfade"_s, options.number(u"crossfade"_s).value_or(settings.crossfade), longestBlend);
    settings.maxStretch =
        within(u"stretch"_s, options.number(u"stretch"_s).value_or(settings.maxStretch), largestStretch);
    settings.keyNudge = int(within(u"nudge"_s, options.integer(u"nudge"_s).value_or(settings.keyNudge), farthestNudge));
    settings.matchTempo = !options.has(u"no-match"_s);
    settings.levelMatch = !options.has(u"no-level"_s);
    settings.filterSweep = !options.has(u"no-sweep"_s);
    settings.fadeEdges = !options.has(u"no-fade"_s);
    settings.preservePitch = !options.has(u"no-preserve-pitch"_s);
    settings.format = formatNamed(options.text(u"format"_s).value_or(u"wav"_s));
    settings.mp3Rate = rateOf(options);
    settings.watermark = watermarkOf(options);
    return settings;
}

QJsonArray objectsOf(const QList<DJ::Move>& moves)
{
    QJsonArray array;
    for (const DJ::Move& move : moves)
        array.append(QJsonObject{{u"from"_s, move.from},
                                 {u"to"_s, move.to},
                                 {u"atSeconds"_s, toJson(move.atSeconds)},
                                 {u"keyMove"_s, move.keyMove},
                                 {u"tempoChange"_s, toJson(move.tempoChange)}});
    return array;
}

} // namespace

QJsonValue mix(const QStringList& arguments)
{
    const Arguments options(arguments,
                            {u"name"_s, u"crossfade"_s, u"stretch"_s, u"nudge"_s, u"format"_s, u"rate"_s, u"tag"_s,
                             u"level"_s, u"placement"_s},
                            {u"no-match"_s, u"no-level"_s, u"no-sweep"_s, u"no-fade"_s, u"no-preserve-pitch"_s});
    const QStringList paths = options.alone(2, 1 + mostFiles);
    const DJ::MixSettings settings = settingsOf(options);
    const DJ::Set set = DJ::asMixed(analysed(paths.sliced(1)), settings);
    const QString name = options.text(u"name"_s).value_or(DJ::usualMixName());
    const DJ::Mix made = DJ::render(set, settings, absolute(paths[0]), name);
    return QJsonObject{{u"url"_s, made.url.toString(QUrl::FullyEncoded)},
                       {u"cue"_s, made.cue.toString(QUrl::FullyEncoded)},
                       {u"moves"_s, objectsOf(made.moves)},
                       {u"duration"_s, toJson(made.duration)},
                       {u"bpm"_s, toJson(made.bpm)}};
}

} // namespace orvane::lab
