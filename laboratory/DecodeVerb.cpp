#include "laboratory/Arguments.h"
#include "laboratory/Verb.h"
#include "platform/filesystem/AtomicFile.h"
#include "platform/sound/AudioReader.h"

#include <QJsonObject>

namespace orvane::lab {

using namespace Qt::Literals::StringLiterals;

namespace {

SoundPlanes decodeWhole(AudioReader& reader)
{
    SoundPlanes whole(std::size_t(reader.channelCount()));
    SoundPlanes block;
    while (reader.read(block)) {
        for (std::size_t channel = 0; channel < whole.size(); ++channel)
            whole[channel].insert(whole[channel].end(), block[channel].begin(), block[channel].end());
    }
    return whole;
}

void writePlanes(const SoundPlanes& planes, const QString& path)
{
    AtomicFile file(path, temporarySibling(path));
    for (const auto& plane : planes)
        file.write(
            QByteArrayView(reinterpret_cast<const char*>(plane.data()), qsizetype(plane.size() * sizeof(float))));
    file.commit();
}

} // namespace

QJsonValue decode(const QStringList& arguments)
{
    const QStringList paths = Arguments(arguments, {}).alone(2, 2);
    AudioReader reader(absolute(paths[0]));
    const SoundPlanes planes = decodeWhole(reader);
    writePlanes(planes, absolute(paths[1]));
    return QJsonObject{{u"sampleRate"_s, reader.sampleRate()},
                       {u"channels"_s, reader.channelCount()},
                       {u"frames"_s, qint64(planes.front().size())}};
}

} // namespace orvane::lab
