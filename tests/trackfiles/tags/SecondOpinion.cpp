#include "tests/trackfiles/tags/SecondOpinion.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>

#include <attachedpictureframe.h>
#include <cmath>
#include <gtest/gtest.h>
#include <id3v2tag.h>
#include <lame/lame.h>
#include <mpegfile.h>
#include <unsynchronizedlyricsframe.h>
#include <vector>

namespace orvane::test {

using namespace Qt::Literals::StringLiterals;

namespace {

QByteArray output(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished(60'000));
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();
    return process.readAllStandardOutput();
}

QString toQt(const TagLib::String& text)
{
    return QString::fromStdString(text.to8Bit(true));
}

std::optional<QString> textOrAbsent(const TagLib::String& text)
{
    return text.isEmpty() ? std::nullopt : std::optional(toQt(text));
}

/// The first frame of that name as the kind it must be; null without one.
template <typename Frame>
const Frame* firstFrame(const TagLib::ID3v2::Tag& tag, const char* id)
{
    const TagLib::ID3v2::FrameList& frames = tag.frameList(id);
    return frames.isEmpty() ? nullptr : dynamic_cast<const Frame*>(frames.front());
}

void readPosition(const TagLib::ID3v2::Tag& tag, Tags::Metadata& metadata)
{
    const auto* frame = firstFrame<TagLib::ID3v2::Frame>(tag, "TRCK");
    if (!frame)
        return;
    const QStringList position = toQt(frame->toString()).split(u'/');
    metadata.trackNumber = position.first().toInt();
    if (position.size() > 1)
        metadata.trackTotal = position.last().toInt();
}

void readLyrics(const TagLib::ID3v2::Tag& tag, Tags::Metadata& metadata)
{
    const auto* frame = firstFrame<TagLib::ID3v2::UnsynchronizedLyricsFrame>(tag, "USLT");
    if (!frame)
        return;
    metadata.lyrics = toQt(frame->text());
    EXPECT_EQ(frame->language(), TagLib::ByteVector("eng"));
    EXPECT_TRUE(frame->description().isEmpty());
}

void readPicture(const TagLib::ID3v2::Tag& tag, Tags::Metadata& metadata)
{
    const auto* frame = firstFrame<TagLib::ID3v2::AttachedPictureFrame>(tag, "APIC");
    if (!frame)
        return;
    metadata.artwork = QByteArray(frame->picture().data(), frame->picture().size());
    metadata.artworkMime = toQt(frame->mimeType());
    EXPECT_EQ(frame->type(), TagLib::ID3v2::AttachedPictureFrame::FrontCover);
    EXPECT_TRUE(frame->description().isEmpty());
}

} // namespace

QByteArray toneMp3(LameFrame frame)
{
    constexpr int rate = 44100;
    const lame_t encoder = lame_init();
    lame_set_in_samplerate(encoder, rate);
    lame_set_num_channels(encoder, 1);
    lame_set_brate(encoder, 128);
    lame_set_bWriteVbrTag(encoder, frame == LameFrame::With ? 1 : 0);
    lame_init_params(encoder);
    std::vector<float> tone(rate);
    for (std::size_t index = 0; index < tone.size(); ++index)
        tone[index] = 0.5F * std::sin(0.06F * static_cast<float>(index));
    std::vector<unsigned char> bytes(200'000);
    const int size = static_cast<int>(bytes.size());
    int filled = lame_encode_buffer_ieee_float(encoder, tone.data(), tone.data(), rate, bytes.data(), size);
    filled += lame_encode_flush(encoder, bytes.data() + filled, size - filled);
    if (frame == LameFrame::With)
        lame_get_lametag_frame(encoder, bytes.data(), bytes.size());
    lame_close(encoder);
    return QByteArray(reinterpret_cast<const char*>(bytes.data()), filled);
}

Tags::Metadata readByTagLib(const QString& path)
{
    TagLib::MPEG::File file(QFile::encodeName(path).constData());
    const TagLib::ID3v2::Tag& tag = *file.ID3v2Tag(true);
    Tags::Metadata metadata{.title = toQt(tag.title()),
                            .artist = toQt(tag.artist()),
                            .album = textOrAbsent(tag.album()),
                            .genre = textOrAbsent(tag.genre())};
    readPosition(tag, metadata);
    readLyrics(tag, metadata);
    readPicture(tag, metadata);
    return metadata;
}

ProbedFile readByFfprobe(const QString& path)
{
    const QStringList ask{u"-v"_s,
                          u"fatal"_s,
                          u"-of"_s,
                          u"json"_s,
                          u"-show_format"_s,
                          u"-select_streams"_s,
                          u"v"_s,
                          u"-show_packets"_s,
                          u"-show_data_hash"_s,
                          u"md5"_s,
                          path};
    const QJsonObject answer = QJsonDocument::fromJson(output(u"ffprobe"_s, ask)).object();
    const QJsonObject picture = answer[u"packets"_s].toArray().first().toObject();
    return {.texts = answer[u"format"_s].toObject()[u"tags"_s].toObject(),
            .pictureHash = picture[u"data_hash"_s].toString().section(u':', 1).toLatin1()};
}

QByteArray audioHash(const QString& path)
{
    const QStringList copy{u"-v"_s, u"error"_s, u"-i"_s, path,     u"-map"_s, u"0:a"_s,
                           u"-c"_s, u"copy"_s,  u"-f"_s, u"md5"_s, u"-"_s};
    return output(u"ffmpeg"_s, copy);
}

} // namespace orvane::test
