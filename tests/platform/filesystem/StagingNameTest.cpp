#include "platform/filesystem/AtomicFile.h"
#include "platform/filesystem/StagingLeftovers.h"

#include <gmock/gmock.h>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(TemporarySibling, standsInTheSameFolderHiddenAndEndsInNew)
{
    EXPECT_EQ(temporarySibling(u"/music/Song.wav"_s), u"/music/.Song.wav.new"_s);
    EXPECT_EQ(temporarySibling(u"/music.d/Song"_s), u"/music.d/.Song.new"_s);
    EXPECT_EQ(temporarySibling(u"Song.wav"_s), u".Song.wav.new"_s);
    EXPECT_EQ(temporarySibling(u"/Song.wav"_s), u"/.Song.wav.new"_s);
}

class StagingName : public testing::TestWithParam<QString>
{
};

using OurStagingName = StagingName;
using ForeignName = StagingName;

TEST_P(OurStagingName, isAStagingName)
{
    EXPECT_TRUE(isStagingName(GetParam())) << qPrintable(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Names, OurStagingName,
                         testing::Values(u"001 - Song.mp3.part"_s, u"Song.png.part"_s, u"Song.jpg.part"_s,
                                         u"Song.webp.part"_s, u"two\nlines.mp3.part"_s, u".Song.wav.new"_s,
                                         u".Song.mp4.new"_s, u".Tracklist.txt.new"_s, u".Song.lrc.new"_s,
                                         u"..hidden.flac.new"_s, u".Song.mp3.tagging"_s, u".SONG.MP3.tagging"_s));

TEST_P(ForeignName, isNone)
{
    EXPECT_FALSE(isStagingName(GetParam())) << qPrintable(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Names, ForeignName,
                         testing::Values(u"Song.mp3"_s, u"film.mkv.part"_s, u"archive.part"_s, u".mp3.part"_s,
                                         u"Song.mp3.part2"_s, u"Song.mp3.tagging"_s, u".notes.txt.tagging"_s,
                                         u".mp3.tagging"_s, u"Song.MP3.part"_s, u"Song.wav.new"_s, u".bashrc.new"_s,
                                         u".wav.new"_s, u".Song.wav.new.bak"_s, u".new"_s, u".part"_s, QString()));

} // namespace
} // namespace orvane::test
