#include "platform/filesystem/FileError.h"
#include "tests/support/TestFolder.h"
#include "tests/trackfiles/tags/SecondOpinion.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace orvane {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::TestFolder;
using test::toneMp3;

const Tags::Metadata metadata{.title = u"Song"_s, .lyrics = u"words"_s, .artwork = QByteArray("picture")};

class TagWriter : public testing::Test
{
protected:
    QString song(const QByteArray& bytes) const { return folder.write(u"song.mp3"_s, bytes); }

    void expectAccepted(const QByteArray& bytes, const QByteArray& audio) const
    {
        Tags::write(metadata, song(bytes));
        EXPECT_EQ(folder.read(u"song.mp3"_s), Tags::build(metadata) + audio) << bytes.toHex().constData();
        EXPECT_EQ(folder.names(), QStringList{u"song.mp3"_s});
    }

    void expectLeftAlone(const QByteArray& bytes) const
    {
        const QString path = song(bytes);
        try {
            Tags::write(metadata, path);
            ADD_FAILURE() << bytes.toHex().constData();
        } catch (const Tags::Failure& failure) {
            EXPECT_EQ(failure.sentence(), u"song.mp3 does not look like an MP3, so it was left alone."_s);
        }
        EXPECT_EQ(folder.read(u"song.mp3"_s), bytes);
        EXPECT_EQ(folder.names(), QStringList{u"song.mp3"_s});
    }

    TestFolder folder;
};

QByteArray tagOf(int statedSize, const QByteArray& body)
{
    QByteArray tag("ID3\x04\x00\x00", 6);
    for (const std::uint8_t byte : Tags::synchsafe(statedSize))
        tag.append(static_cast<char>(byte));
    return tag + body;
}

TEST_F(TagWriter, aFileOfExactly10BytesBeginningId3HasOffset0AndFailsTheSyncTest)
{
    const QByteArray bare = tagOf(0, {});
    ASSERT_EQ(bare.size(), 10);
    EXPECT_EQ(Tags::audioOffset(bare), 0);
    expectLeftAlone(bare);
}

TEST_F(TagWriter, aTagWhoseStatedSizeRunsPastTheEndOfTheFileGivesATagAndNoAudio)
{
    const QByteArray bytes = tagOf(1'000'000, toneMp3());
    EXPECT_EQ(Tags::audioOffset(bytes), bytes.size());
    expectAccepted(bytes, {});
    EXPECT_EQ(test::readByTagLib(folder.path(u"song.mp3"_s)), metadata);
}

TEST_F(TagWriter, aFileStartingFfFbPasses)
{
    expectAccepted("\xFF\xFB", "\xFF\xFB");
    expectAccepted("\xFF\xE0 anything", "\xFF\xE0 anything");
}

TEST_F(TagWriter, aFileStartingFfDfFails)
{
    expectLeftAlone("\xFF\xDF\x90");
    expectLeftAlone("\xFE\xFB\x90");
}

TEST_F(TagWriter, aRiffOrFlacFileFails)
{
    expectLeftAlone("RIFF....WAVE");
    expectLeftAlone("fLaC....");
    expectLeftAlone("<html></html>");
}

TEST_F(TagWriter, aFileOfLessThanTwoBytesFails)
{
    expectLeftAlone({});
    expectLeftAlone("\xFF");
}

TEST_F(TagWriter, aFileWithATagAtItsHeadPassesWhateverFollows)
{
    expectAccepted(tagOf(4, "....") + "RIFF", "RIFF");
    expectAccepted(tagOf(0, {}) + "x", "x");
}

TEST_F(TagWriter, aLeftoverTrackMp3TaggingFromAnInterruptedRunDoesNotStopTheNextWrite)
{
    const QString path = folder.write(u"track.mp3"_s, toneMp3());
    folder.write(u".track.mp3.tagging"_s, "half a file");
    Tags::write(metadata, path);
    EXPECT_EQ(test::readByTagLib(path), metadata);
    EXPECT_EQ(folder.names(), QStringList{u"track.mp3"_s});
}

TEST_F(TagWriter, aLeftoverThatCannotBeRemovedIsTheSystemsErrorAndTheFileIsAsItWas)
{
    const QString path = song(toneMp3());
    ASSERT_TRUE(QDir().mkdir(folder.path(u".song.mp3.tagging"_s)));
    EXPECT_EQ(test::errorOf([&path] { Tags::write(metadata, path); }), EISDIR);
    EXPECT_EQ(folder.read(u"song.mp3"_s), toneMp3());
}

TEST_F(TagWriter, theFilesRightsStay)
{
    const QString path = song(toneMp3());
    const QByteArray name = QFile::encodeName(path);
    ASSERT_EQ(::chmod(name.constData(), 0640), 0);
    Tags::write(metadata, path);
    struct stat found = {};
    ASSERT_EQ(::stat(name.constData(), &found), 0);
    EXPECT_EQ(found.st_mode & 0777U, 0640U);
}

TEST_F(TagWriter, aMissingFileIsTheSystemsError)
{
    EXPECT_EQ(test::errorOf([this] { Tags::write({}, folder.path(u"gone.mp3"_s)); }), ENOENT);
    EXPECT_EQ(test::errorOf([this] { Tags::write({}, folder.path()); }), EISDIR);
}

TEST_F(TagWriter, aFullDiskInTheMiddleOfATagLeavesTheFileAsItWas)
{
    const QByteArray before = toneMp3();
    const QString path = song(before);
    const int answer = test::inChild([&path] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{.rlim_cur = 4096, .rlim_max = 4096};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        return test::errorOf([&path] { Tags::write(metadata, path); }) == EFBIG ? 0 : 1;
    });
    EXPECT_EQ(answer, 0);
    EXPECT_EQ(folder.read(u"song.mp3"_s), before);
    EXPECT_EQ(folder.names(), QStringList{u"song.mp3"_s});
}

} // namespace
} // namespace orvane
