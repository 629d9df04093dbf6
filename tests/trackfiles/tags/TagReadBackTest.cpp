#include "tests/support/TestFolder.h"
#include "tests/trackfiles/tags/SecondOpinion.h"

#include <QCryptographicHash>

#include <gtest/gtest.h>

/// What is written is read back by two readers that are not ours.

namespace orvane {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::audioHash;
using test::LameFrame;
using test::TestFolder;
using test::toneMp3;

QByteArray md5(const QByteArray& bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Md5).toHex();
}

/// A text in every frame: emoji, right to left, combining characters.
Tags::Metadata everything()
{
    return {.title = u"Ångström 夜 👩‍🚀"_s,
            .artist = u"فنان"_s,
            .album = u"e\u0301tude"_s,
            .genre = u"Synthwave"_s,
            .trackNumber = 3,
            .trackTotal = 12,
            .lyrics = u"one\nשתיים\n"_s,
            .artwork = QByteArray("\xFF\xD8\xFF\xE0 not really a picture", 26),
            .artworkMime = u"image/jpeg"_s};
}

void expectBothReaders(const QString& path, const Tags::Metadata& expected)
{
    EXPECT_EQ(test::readByTagLib(path), expected);
    const test::ProbedFile probed = test::readByFfprobe(path);
    const auto text = [&probed](const QString& name) { return probed.texts[name].toString(); };
    EXPECT_EQ(text(u"title"_s), expected.title);
    EXPECT_EQ(text(u"artist"_s), expected.artist);
    EXPECT_EQ(text(u"album"_s), expected.album.value_or(QString()));
    EXPECT_EQ(text(u"genre"_s), expected.genre.value_or(QString()));
    EXPECT_EQ(text(u"lyrics-eng"_s), expected.lyrics.value_or(QString()));
    EXPECT_EQ(text(u"track"_s), expected.trackNumber ? u"3/12"_s : QString());
    EXPECT_EQ(probed.pictureHash, expected.artwork ? md5(*expected.artwork) : QByteArray());
}

/// A frame, and how a body of a given size is made for it.
struct SizedFrame
{
    const char* name;
    /// The bytes of the body beside the value.
    int around;
    void (*fill)(Tags::Metadata& metadata, int bytes);
};

QString letters(int bytes)
{
    return QString(bytes, u'x');
}

const SizedFrame sizedFrames[] = {
    {"title", 2, [](Tags::Metadata& metadata, int bytes) { metadata.title = letters(bytes); }},
    {"artist", 2, [](Tags::Metadata& metadata, int bytes) { metadata.artist = letters(bytes); }},
    {"album", 2, [](Tags::Metadata& metadata, int bytes) { metadata.album = letters(bytes); }},
    {"genre", 2, [](Tags::Metadata& metadata, int bytes) { metadata.genre = letters(bytes); }},
    {"lyrics", 6, [](Tags::Metadata& metadata, int bytes) { metadata.lyrics = letters(bytes); }},
    {"artwork", 14, [](Tags::Metadata& metadata, int bytes) { metadata.artwork = QByteArray(bytes, 'p'); }},
};

class FrameOfSize : public testing::TestWithParam<std::tuple<SizedFrame, int>>
{
};

void PrintTo(const SizedFrame& frame, std::ostream* stream)
{
    *stream << frame.name;
}

TEST_P(FrameOfSize, readsBackInBothReaders)
{
    const auto& [frame, size] = GetParam();
    const TestFolder folder;
    const QString path = folder.write(u"song.mp3"_s, toneMp3());
    Tags::Metadata metadata{.title = u"t"_s};
    frame.fill(metadata, size - frame.around);
    Tags::write(metadata, path);
    expectBothReaders(path, metadata);
}

// The borders at which a size takes another byte of seven bits.
INSTANTIATE_TEST_SUITE_P(Borders, FrameOfSize,
                         testing::Combine(testing::ValuesIn(sizedFrames),
                                          testing::Values(127, 128, 16383, 16384, 2097151, 2097152)));
INSTANTIATE_TEST_SUITE_P(LargePicture, FrameOfSize,
                         testing::Combine(testing::Values(sizedFrames[5]), testing::Values(16'000'000)));

/// A file that carries something before or behind its audio, and what of it must stay behind the new tag.
struct CarriedFile
{
    const char* name;
    QByteArray bytes;
    QByteArray kept;
};

void PrintTo(const CarriedFile& file, std::ostream* stream)
{
    *stream << file.name;
}

QByteArray tagOf(int flags, const QByteArray& body)
{
    QByteArray tag("ID3\x04\x00", 5);
    tag.append(static_cast<char>(flags));
    for (const std::uint8_t byte : Tags::synchsafe(body.size()))
        tag.append(static_cast<char>(byte));
    return tag + body;
}

QByteArray footerOf(const QByteArray& tag)
{
    return "3DI" + tag.sliced(3, 7);
}

QByteArray framesOf(const Tags::Metadata& metadata)
{
    return Tags::build(metadata).sliced(10);
}

QList<CarriedFile> carriedFiles()
{
    const QByteArray audio = toneMp3();
    const QByteArray bare = toneMp3(LameFrame::Without);
    const QByteArray withFooter = tagOf(0x10, framesOf({.title = u"old"_s}));
    const QByteArray oversized = tagOf(0, framesOf({.title = u"old"_s}) + QByteArray(3'000'000, '\0'));
    const QByteArray second = Tags::build({.title = u"second"_s});
    const QByteArray atTheEnd = "TAGold title" + QByteArray(116, '\0');
    return {{"noTag", bare, bare},
            {"aFrameOfTheEncoder", audio, audio},
            {"aFooter", withFooter + footerOf(withFooter) + audio, audio},
            {"anOversizedTag", oversized + audio, audio},
            {"twoTagsInARow", Tags::build({.title = u"first"_s}) + second + audio, second + audio},
            {"anOldTagBehind", audio + atTheEnd, audio + atTheEnd}};
}

class RewrittenFile : public testing::TestWithParam<CarriedFile>
{
};

TEST_P(RewrittenFile, readsBackInBothReadersAndItsAudioIsTheSame)
{
    const TestFolder folder;
    const QString path = folder.write(u"song.mp3"_s, GetParam().bytes);
    const QByteArray before = audioHash(path);
    ASSERT_TRUE(before.startsWith("MD5="));
    Tags::write(everything(), path);
    expectBothReaders(path, everything());
    EXPECT_EQ(audioHash(path), before);
    EXPECT_EQ(folder.read(u"song.mp3"_s), Tags::build(everything()) + GetParam().kept);
}

TEST_P(RewrittenFile, writingTheSameMetadataTwiceGivesTheSameFile)
{
    const TestFolder folder;
    const QString path = folder.write(u"song.mp3"_s, GetParam().bytes);
    Tags::write(everything(), path);
    const QByteArray once = folder.read(u"song.mp3"_s);
    Tags::write(everything(), path);
    EXPECT_EQ(folder.read(u"song.mp3"_s), once);
}

INSTANTIATE_TEST_SUITE_P(Carrying, RewrittenFile, testing::ValuesIn(carriedFiles()),
                         [](const auto& file) { return std::string(file.param.name); });

TEST(RewrittenTag, ofFewerFieldsReplacesTheOldOneWhole)
{
    const TestFolder folder;
    const QString path = folder.write(u"song.mp3"_s, toneMp3());
    Tags::write(everything(), path);
    Tags::write({.title = u"bare"_s}, path);
    expectBothReaders(path, {.title = u"bare"_s});
    EXPECT_EQ(folder.read(u"song.mp3"_s), Tags::build({.title = u"bare"_s}) + toneMp3());
}

} // namespace
} // namespace orvane
