#include "dj/Analysis.h"

#include "dj/Failure.h"
#include "dj/arithmetic/Energy.h"
#include "dj/arithmetic/KeyFinder.h"
#include "dj/arithmetic/Mono.h"
#include "dj/arithmetic/OnsetEnvelope.h"
#include "dj/arithmetic/Tempo.h"

namespace orvane::DJ {

namespace {

/// A dot at either end of the name begins no extension.
QString withoutExtension(const QString& fileName)
{
    const qsizetype dot = fileName.lastIndexOf(u'.');
    return dot < 1 || dot + 1 == fileName.size() ? fileName : fileName.first(dot);
}

} // namespace

Analysis analyse(const QUrl& url, const std::optional<QString>& title)
{
    return analyse(Master::readAsMono(url.toLocalFile()), url, title);
}

Analysis analyse(Master::Sound sound, const QUrl& url, const std::optional<QString>& title)
{
    if (isEmpty(sound.channels))
        throw Failure::unreadable(url.fileName());
    const double rate = sound.sampleRate;
    const std::vector<double> samples = toMono(std::move(sound.channels));
    const std::vector<double> envelope = onsetEnvelope(samples, rate);
    const Grid beats = grid(envelope, tempo(envelope, rate), rate);
    return {.url = url,
            .title = title ? *title : withoutExtension(url.fileName()),
            .bpm = beats.bpm,
            .key = key(samples, rate),
            .energy = energy(samples),
            .duration = double(samples.size()) / rate,
            .grid = beats};
}

} // namespace orvane::DJ
