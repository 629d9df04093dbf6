#include "demonstration/program/SecondOpinion.h"

#include "platform/sound/AudioReader.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <algorithm>
#include <cmath>
#include <ebur128.h>
#include <exception>
#include <memory>
#include <taglib/attachedpictureframe.h>
#include <taglib/id3v2tag.h>
#include <taglib/mpegfile.h>
#include <vector>

namespace orvane::demo {

using namespace Qt::Literals::StringLiterals;

namespace {

struct Destroy
{
    void operator()(ebur128_state* state) const { ebur128_destroy(&state); }
};

using Meter = std::unique_ptr<ebur128_state, Destroy>;

std::vector<float> interleaved(const SoundPlanes& planes)
{
    std::vector<float> samples;
    samples.reserve(planes.size() * planes.front().size());
    for (std::size_t frame = 0; frame < planes.front().size(); ++frame) {
        for (const std::vector<float>& plane : planes)
            samples.push_back(plane[frame]);
    }
    return samples;
}

Loudness measured(AudioReader& reader)
{
    const auto channels = static_cast<unsigned>(reader.channelCount());
    const auto rate = static_cast<unsigned long>(reader.sampleRate());
    const Meter meter(ebur128_init(channels, rate, EBUR128_MODE_I | EBUR128_MODE_TRUE_PEAK));
    SoundPlanes block;
    std::size_t frames = 0;
    while (reader.read(block)) {
        ebur128_add_frames_float(meter.get(), interleaved(block).data(), block.front().size());
        frames += block.front().size();
    }
    Loudness loudness{.seconds = static_cast<double>(frames) / reader.sampleRate()};
    ebur128_loudness_global(meter.get(), &loudness.integrated);
    double highest = 0.0;
    for (unsigned channel = 0; channel < channels; ++channel) {
        double peak = 0.0;
        ebur128_true_peak(meter.get(), channel, &peak);
        highest = std::max(highest, peak);
    }
    loudness.truePeak = 20.0 * std::log10(highest);
    return loudness;
}

QString textOf(const TagLib::String& text)
{
    return QString::fromStdString(text.to8Bit(true));
}

QString frameOf(const TagLib::ID3v2::Tag& tag, const char* id)
{
    const TagLib::ID3v2::FrameList frames = tag.frameList(id);
    return frames.isEmpty() ? QString() : textOf(frames.front()->toString());
}

void readCover(const TagLib::ID3v2::Tag& tag, TagsRead& read)
{
    const TagLib::ID3v2::FrameList frames = tag.frameList("APIC");
    if (frames.isEmpty())
        return;
    const auto* frame = dynamic_cast<const TagLib::ID3v2::AttachedPictureFrame*>(frames.front());
    if (!frame)
        return;
    read.coverType = textOf(frame->mimeType());
    read.cover = QByteArray(frame->picture().data(), static_cast<qsizetype>(frame->picture().size()));
}

QByteArray outputOf(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(-1);
    return process.readAllStandardOutput();
}

} // namespace

std::optional<Loudness> loudnessOf(const QString& path)
{
    try {
        AudioReader reader(path);
        return measured(reader);
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

TagsRead tagsOf(const QString& path)
{
    TagLib::MPEG::File file(QFile::encodeName(path).constData());
    TagsRead read;
    if (!file.isValid() || !file.hasID3v2Tag())
        return read;
    const TagLib::ID3v2::Tag& tag = *file.ID3v2Tag();
    read.title = frameOf(tag, "TIT2");
    read.artist = frameOf(tag, "TPE1");
    read.album = frameOf(tag, "TALB");
    read.genre = frameOf(tag, "TCON");
    read.track = frameOf(tag, "TRCK");
    read.lyrics = frameOf(tag, "USLT");
    readCover(tag, read);
    return read;
}

VideoRead videoOf(const QString& path)
{
    const QByteArray told = outputOf(
        u"ffprobe"_s, {u"-v"_s, u"error"_s, u"-count_frames"_s, u"-show_streams"_s, u"-of"_s, u"json"_s, path});
    VideoRead video;
    for (const QJsonValue& each : QJsonDocument::fromJson(told).object().value(u"streams").toArray()) {
        const QJsonObject stream = each.toObject();
        if (stream.value(u"codec_type").toString() == u"audio") {
            video.soundCodec = stream.value(u"codec_name").toString();
            continue;
        }
        video.pictureCodec = stream.value(u"codec_name").toString();
        video.size = QSize(stream.value(u"width").toInt(), stream.value(u"height").toInt());
        video.frames = stream.value(u"nb_read_frames").toString().toInt();
        video.seconds = stream.value(u"duration").toString().toDouble();
    }
    return video;
}

bool savePicture(const QString& video, double seconds, const QString& picture)
{
    QFile::remove(picture);
    outputOf(u"ffmpeg"_s, {u"-v"_s, u"error"_s, u"-ss"_s, QString::number(seconds, 'f', 3), u"-i"_s, video,
                           u"-frames:v"_s, u"1"_s, u"-y"_s, picture});
    return QFile::exists(picture);
}

} // namespace orvane::demo
