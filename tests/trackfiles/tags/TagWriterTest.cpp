#include "platform/filesystem/FileError.h"
#include "tests/support/TestFolder.h"
#include "trackfiles/tags/Tags.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <attachedpictureframe.h>
#include <cerrno>
#include <cmath>
#include <csignal>
#include <gtest/gtest.h>
#include <id3v2tag.h>
#include <lame/lame.h>
#include <mpegfile.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unsynchronizedlyricsframe.h>
#include <vector>

namespace orvane {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::TestFolder;

/// A second of a tone as MP3, with or without the frame that LAME describes the file in.
QByteArray mp3(bool describedByLame = true)
{
    constexpr int rate = 44100;
    lame_t encoder = lame_init();
    lame_set_in_samplerate(encoder, rate);
    lame_set_num_channels(encoder, 1);
    lame_set_brate(encoder, 128);
    lame_set_bWriteVbrTag(encoder, describedByLame ? 1 : 0);
    lame_init_params(encoder);
    std::vector<float> tone(rate);
    for (std::size_t index = 0; index < tone.size(); ++index)
        tone[index] = 0.5F * std::sin(0.06F * static_cast<float>(index));
    std::vector<unsigned char> bytes(200'000);
    const int size = static_cast<int>(bytes.size());
    int filled = lame_encode_buffer_ieee_float(encoder, tone.data(), tone.data(), rate, bytes.data(), size);
    filled += lame_encode_flush(encoder, bytes.data() + filled, size - filled);
    if (describedByLame)
        lame_get_lametag_frame(encoder, bytes.data(), bytes.size());
    lame_close(encoder);
    return QByteArray(reinterpret_cast<const char*>(bytes.data()), filled);
}

QByteArray output(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(60'000);
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();
    return process.readAllStandardOutput();
}

/// The audio of a file as another program copies it out.
QByteArray audioHash(const QString& path)
{
    const QStringList copy{u"-v"_s, u"error"_s, u"-i"_s, path,     u"-map"_s, u"0:a"_s,
                           u"-c"_s, u"copy"_s,  u"-f"_s, u"md5"_s, u"-"_s};
    return output(u"ffmpeg"_s, copy);
}

QJsonObject probedTags(const QString& path)
{
    const QStringList ask{u"-v"_s, u"error"_s, u"-show_format"_s, u"-of"_s, u"json"_s, path};
    const QJsonObject answer = QJsonDocument::fromJson(output(u"ffprobe"_s, ask)).object();
    return answer[u"format"_s].toObject()[u"tags"_s].toObject();
}

QString toQt(const TagLib::String& text)
{
    return QString::fromStdString(text.to8Bit(true));
}

Tags::Metadata everything()
{
    return {.title = u"Ångström 夜 👩‍🚀"_s,
            .artist = u"فنان"_s,
            .album = u"e\u0301tude"_s,
            .genre = u"Synthwave"_s,
            .trackNumber = 3,
            .trackTotal = 12,
            .lyrics = u"one\ntwo\n"_s,
            .artwork = QByteArray("\xFF\xD8\xFF\xE0 not really a picture", 26),
            .artworkMime = u"image/jpeg"_s};
}

/// What a tag says, read by a library that is not ours.
Tags::Metadata readBack(const QString& path)
{
    TagLib::MPEG::File file(QFile::encodeName(path).constData());
    TagLib::ID3v2::Tag* tag = file.ID3v2Tag();
    Tags::Metadata metadata{.title = toQt(tag->title()), .artist = toQt(tag->artist())};
    if (!tag->album().isEmpty())
        metadata.album = toQt(tag->album());
    if (!tag->genre().isEmpty())
        metadata.genre = toQt(tag->genre());
    const auto frames = [tag](const char* id) { return tag->frameList(id); };
    if (!frames("TRCK").isEmpty()) {
        const QStringList position = toQt(frames("TRCK").front()->toString()).split(u'/');
        metadata.trackNumber = position.first().toInt();
        if (position.size() > 1)
            metadata.trackTotal = position.last().toInt();
    }
    if (!frames("USLT").isEmpty()) {
        const auto* lyrics = dynamic_cast<TagLib::ID3v2::UnsynchronizedLyricsFrame*>(frames("USLT").front());
        metadata.lyrics = toQt(lyrics->text());
        EXPECT_EQ(lyrics->language(), TagLib::ByteVector("eng"));
    }
    if (!frames("APIC").isEmpty()) {
        const auto* picture = dynamic_cast<TagLib::ID3v2::AttachedPictureFrame*>(frames("APIC").front());
        metadata.artwork = QByteArray(picture->picture().data(), picture->picture().size());
        metadata.artworkMime = toQt(picture->mimeType());
        EXPECT_EQ(picture->type(), TagLib::ID3v2::AttachedPictureFrame::FrontCover);
    }
    return metadata;
}

class TagWriter : public testing::Test
{
protected:
    TestFolder folder;

    QString song(const QByteArray& bytes) const { return folder.write(u"song.mp3"_s, bytes); }
};

TEST_F(TagWriter, everyFrameReadsBackInAnotherLibrary)
{
    const QString path = song(mp3());
    Tags::write(everything(), path);
    EXPECT_EQ(readBack(path), everything());
}

TEST_F(TagWriter, everyTextReadsBackInAnotherProgram)
{
    const QString path = song(mp3());
    Tags::write(everything(), path);
    const QJsonObject tags = probedTags(path);
    EXPECT_EQ(tags[u"title"_s].toString(), everything().title);
    EXPECT_EQ(tags[u"artist"_s].toString(), everything().artist);
    EXPECT_EQ(tags[u"album"_s].toString(), everything().album);
    EXPECT_EQ(tags[u"genre"_s].toString(), everything().genre);
    EXPECT_EQ(tags[u"track"_s].toString(), u"3/12"_s);
    EXPECT_EQ(tags[u"lyrics-eng"_s].toString(), everything().lyrics);
}

TEST_F(TagWriter, theAudioIsTheSameBeforeAndAfter)
{
    for (const bool describedByLame : {true, false}) {
        const QString path = song(mp3(describedByLame));
        const QByteArray before = audioHash(path);
        ASSERT_TRUE(before.startsWith("MD5="));
        Tags::write(everything(), path);
        EXPECT_EQ(audioHash(path), before);
        EXPECT_TRUE(folder.read(u"song.mp3"_s).endsWith(mp3(describedByLame)));
    }
}

TEST_F(TagWriter, writingTwiceGivesTheSameBytes)
{
    const QString path = song(mp3());
    Tags::write(everything(), path);
    const QByteArray once = folder.read(u"song.mp3"_s);
    Tags::write(everything(), path);
    EXPECT_EQ(folder.read(u"song.mp3"_s), once);
    EXPECT_EQ(once, Tags::build(everything()) + mp3());
}

TEST_F(TagWriter, anotherTagReplacesTheOldOneWhole)
{
    const QString path = song(mp3());
    Tags::write(everything(), path);
    Tags::write({.title = u"bare"_s}, path);
    EXPECT_EQ(folder.read(u"song.mp3"_s), Tags::build({.title = u"bare"_s}) + mp3());
}

TEST_F(TagWriter, sizesAtTheBordersOfSevenBitsReadBack)
{
    for (const int size : {127, 128, 16383, 16384, 2097151, 2097152, 16'000'000}) {
        const QString path = song(mp3());
        // The picture's frame has a body of exactly that size.
        const Tags::Metadata metadata{.title = u"t"_s, .artwork = QByteArray(size - 14, 'p')};
        Tags::write(metadata, path);
        EXPECT_EQ(readBack(path).artwork, metadata.artwork) << size;
        EXPECT_EQ(probedTags(path)[u"title"_s].toString(), u"t"_s) << size;
    }
    for (const int size : {127, 128, 16383, 16384}) {
        const QString path = song(mp3());
        const Tags::Metadata metadata{.title = QString(size - 2, u't')};
        Tags::write(metadata, path);
        EXPECT_EQ(readBack(path).title, metadata.title) << size;
        EXPECT_EQ(probedTags(path)[u"title"_s].toString(), metadata.title) << size;
    }
}

QByteArray tagOf(int flags, int statedSize, const QByteArray& body)
{
    QByteArray tag("ID3\x04\x00", 5);
    tag.append(static_cast<char>(flags));
    for (const std::uint8_t byte : Tags::synchsafe(statedSize))
        tag.append(static_cast<char>(byte));
    return tag + body;
}

TEST_F(TagWriter, aTagWithAFooterGoesWithItsFooter)
{
    const QByteArray frames(100, '\0');
    const QString path = song(tagOf(0x10, 100, frames) + QByteArray("3DI\x04\x00\x10\x00\x00\x00\x64", 10) + mp3());
    Tags::write({.title = u"t"_s}, path);
    EXPECT_EQ(folder.read(u"song.mp3"_s), Tags::build({.title = u"t"_s}) + mp3());
}

TEST_F(TagWriter, aTagWhoseSizeRunsPastTheEndLeavesATagWithoutAudio)
{
    const QString path = song(tagOf(0, 1'000'000, mp3()));
    Tags::write({.title = u"t"_s}, path);
    EXPECT_EQ(folder.read(u"song.mp3"_s), Tags::build({.title = u"t"_s}));
}

TEST_F(TagWriter, ofTwoTagsInARowTheSecondCountsAsAudio)
{
    const QByteArray second = Tags::build({.title = u"second"_s});
    const QString path = song(Tags::build({.title = u"first"_s}) + second + mp3());
    Tags::write({.title = u"t"_s}, path);
    EXPECT_EQ(folder.read(u"song.mp3"_s), Tags::build({.title = u"t"_s}) + second + mp3());
}

TEST_F(TagWriter, anOldTagAtTheEndStaysWhereItIs)
{
    const QByteArray last = QByteArray("TAG") + QByteArray(125, 'o');
    const QString path = song(mp3() + last);
    Tags::write({.title = u"t"_s}, path);
    EXPECT_TRUE(folder.read(u"song.mp3"_s).endsWith(last));
}

TEST_F(TagWriter, aFileThatIsNoMp3IsLeftAloneAndNamed)
{
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray("\xFF"), QByteArray("\xFF\xDF\x90"), QByteArray("RIFF....WAVE"),
          QByteArray("fLaC...."), QByteArray("<html></html>"), QByteArray("ID3\x04\x00\x00\x00\x00\x00\x00", 10)}) {
        const QString path = song(bytes);
        try {
            Tags::write(everything(), path);
            ADD_FAILURE() << bytes.toHex().constData();
        } catch (const Tags::Failure& failure) {
            EXPECT_EQ(failure.sentence(), u"song.mp3 does not look like an MP3, so it was left alone."_s);
        }
        EXPECT_EQ(folder.read(u"song.mp3"_s), bytes);
        EXPECT_EQ(folder.names(), QStringList{u"song.mp3"_s});
    }
}

TEST_F(TagWriter, aFrameSyncIsEnoughAndATagAtTheHeadIsToo)
{
    for (const QByteArray& audio : {QByteArray("\xFF\xFB"), QByteArray("\xFF\xE0 anything")}) {
        Tags::write({.title = u"t"_s}, song(audio));
        EXPECT_EQ(folder.read(u"song.mp3"_s), Tags::build({.title = u"t"_s}) + audio);
    }
    Tags::write({.title = u"t"_s}, song(tagOf(0, 4, "....") + "RIFF"));
    EXPECT_EQ(folder.read(u"song.mp3"_s), Tags::build({.title = u"t"_s}) + "RIFF");
}

TEST_F(TagWriter, aLeftoverOfAnInterruptedRunDoesNotStopTheNext)
{
    const QString path = song(mp3());
    folder.write(u".song.mp3.tagging"_s, "half a file");
    Tags::write({.title = u"t"_s}, path);
    EXPECT_EQ(readBack(path).title, u"t"_s);
    EXPECT_EQ(folder.names(), QStringList{u"song.mp3"_s});
}

TEST_F(TagWriter, aMissingFileIsTheSystemsError)
{
    EXPECT_EQ(test::errorOf([this] { Tags::write({}, folder.path(u"gone.mp3"_s)); }), ENOENT);
    EXPECT_EQ(test::errorOf([this] { Tags::write({}, folder.path()); }), EISDIR);
}

TEST_F(TagWriter, aPipeIsRefusedWithoutBeingOpened)
{
    ASSERT_EQ(::mkfifo(QFile::encodeName(folder.path(u"song.mp3"_s)).constData(), 0600), 0);
    EXPECT_EQ(test::errorOf([this] { Tags::write({}, folder.path(u"song.mp3"_s)); }), EINVAL);
}

TEST_F(TagWriter, aFullDiskLeavesTheFileAsItWas)
{
    const QByteArray before = mp3();
    const QString path = song(before);
    const int answer = test::inChild([&path] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{.rlim_cur = 4096, .rlim_max = 4096};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        return test::errorOf([&path] { Tags::write({.title = u"t"_s}, path); }) == EFBIG ? 0 : 1;
    });
    EXPECT_EQ(answer, 0);
    EXPECT_EQ(folder.read(u"song.mp3"_s), before);
    EXPECT_EQ(folder.names(), QStringList{u"song.mp3"_s});
}

TEST_F(TagWriter, aFolderThatCannotBeWrittenLeavesTheFileAsItWas)
{
    const TestFolder parent;
    const QString path = parent.write(u"locked/song.mp3"_s, mp3());
    const QByteArray locked = QFile::encodeName(parent.path(u"locked"_s));
    ::chmod(locked.constData(), 0555);
    const int answer = test::inChild([&path] {
        test::becomeUnprivileged();
        return test::errorOf([&path] { Tags::write({.title = u"t"_s}, path); }) == EACCES ? 0 : 1;
    });
    ::chmod(locked.constData(), 0755);
    EXPECT_EQ(answer, 0);
    EXPECT_EQ(parent.read(u"locked/song.mp3"_s), mp3());
}

} // namespace
} // namespace orvane
