#include "tests/dj/MixFiles.h"

#include "mastering/Master.h"
#include "tests/mastering/arithmetic/Signals.h"

#include <QFile>

#include <algorithm>
#include <cmath>

namespace orvane::test {

using namespace Qt::Literals::StringLiterals;

double in24Bits(double sample)
{
    const double single = std::clamp(double(float(sample)), -1.0, 1.0);
    return std::clamp(std::nearbyint(single * 8388608.0), -8388608.0, 8388607.0) / 8388608.0;
}

Channels in24Bits(Channels channels)
{
    for (auto& channel : channels)
        std::transform(channel.begin(), channel.end(), channel.begin(), [](double sample) { return in24Bits(sample); });
    return channels;
}

void levelled(double target, double ceiling, Channels& channels)
{
    Master::apply(target, ceiling, channels, 44100.0);
}

DJ::Analysis MixFiles::track(const Told& told, const Channels& channels, double rate, const QString& fileName) const
{
    const QString path = folder.path((fileName.isEmpty() ? told.title : fileName) + u".wav"_s);
    Master::write(channels, rate, {.format = Master::Format::wav}, path);
    return {.url = QUrl::fromLocalFile(path),
            .title = told.title,
            .bpm = told.bpm,
            .key = told.key,
            .energy = 0.5,
            .duration = double(channels.front().size()) / rate,
            .grid = {.bpm = told.bpm, .phase = told.phase, .downbeat = told.downbeat, .cueIn = told.cueIn}};
}

DJ::Set MixFiles::noises(int count, double seconds) const
{
    DJ::Set set;
    for (int index = 0; index < count; ++index)
        set.append(track({u"track %1"_s.arg(index)}, {noise(std::size_t(seconds * 44100.0), 0.1, unsigned(index))}));
    return set;
}

Channels MixFiles::heard(const DJ::Mix& mix) const
{
    return Master::read(mix.url.toLocalFile()).channels;
}

QString MixFiles::tracklist(const DJ::Mix& mix) const
{
    QFile file(mix.cue.toLocalFile());
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return QString::fromUtf8(file.readAll());
}

DJ::Mix MixFiles::render(const DJ::Set& set, const DJ::MixSettings& settings) const
{
    return DJ::render(set, settings, out());
}

QList<PlainTrack> MixFiles::plain(const DJ::Set& set)
{
    QList<PlainTrack> tracks;
    for (const DJ::Analysis& record : set) {
        Master::Sound sound = Master::read(record.url.toLocalFile());
        tracks.append({.record = record, .channels = std::move(sound.channels), .rate = sound.sampleRate});
    }
    return tracks;
}

void MixFiles::expectPlain(const DJ::Set& set, const DJ::MixSettings& settings, const Channels& tag,
                           const std::vector<std::int64_t>& hits) const
{
    const DJ::Mix mix = render(set, settings);
    const PlainMix wanted = plainMix(plain(set), settings, levelled, tag, hits);
    EXPECT_EQ(heard(mix), in24Bits(wanted.channels));
    EXPECT_EQ(mix.moves, wanted.moves);
    EXPECT_EQ(mix.bpm, wanted.bpm);
    EXPECT_EQ(mix.duration, double(wanted.channels[0].size()) / 44100.0);
    EXPECT_EQ(tracklist(mix).toStdString(),
              DJ::cueSheet(set, wanted.moves, wanted.bpm, wanted.unmatched, wanted.shifted).toStdString());
}

} // namespace orvane::test
