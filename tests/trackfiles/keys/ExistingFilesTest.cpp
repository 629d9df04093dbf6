#include "trackfiles/keys/TrackKeys.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>

namespace orvane {
namespace {

using namespace Qt::Literals::StringLiterals;

using Titles = QHash<QString, QString>;

class ExistingFilesTest : public testing::Test
{
protected:
    void put(const QStringList& names) const
    {
        for (const QString& name : names) {
            QFile file(folder.filePath(name));
            ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(name);
        }
    }

    Titles found() const { return ExistingFiles::byTitle(folder.path()); }

    QTemporaryDir folder;
};

TEST_F(ExistingFilesTest, anEmptyFolderGivesAnEmptyMapAndEveryBaseTheNumberedForm)
{
    EXPECT_EQ(found(), Titles());
    EXPECT_EQ(ExistingFiles::base(u"Song"_s, 0, found()), u"001 - Song"_s);
    EXPECT_EQ(ExistingFiles::base(u"Song"_s, 11, found()), u"012 - Song"_s);
    EXPECT_EQ(ExistingFiles::base(u"Song"_s, 1233, found()), u"1234 - Song"_s);
}

TEST_F(ExistingFilesTest, aFolderThatCannotBeReadCountsAsEmpty)
{
    put({u"Song.mp3"_s});
    EXPECT_EQ(ExistingFiles::byTitle(folder.filePath(u"absent"_s)), Titles());
    EXPECT_EQ(ExistingFiles::byTitle(folder.filePath(u"Song.mp3"_s)), Titles());
}

TEST_F(ExistingFilesTest, aTitleLeadsToTheBaseOfItsFiles)
{
    put({u"003 - Song.mp3"_s, u"003 - Song lyrics.txt"_s, u"003 - Song.lrc"_s, u"003 - Song.jpg"_s});
    EXPECT_EQ(found(), (Titles{{u"song"_s, u"003 - Song"_s}}));
}

TEST_F(ExistingFilesTest, twoFilesOfOneTitleGiveTheLexicallySmallerBase)
{
    put({u"012 - Song.mp3"_s, u"003 - Song.mp3"_s});
    EXPECT_EQ(found(), (Titles{{u"song"_s, u"003 - Song"_s}}));
}

TEST_F(ExistingFilesTest, aTitleThatDiffersOnlyInCaseGetsTheFilesOwnBase)
{
    put({u"007 - My SONG.mp3"_s});
    EXPECT_EQ(ExistingFiles::base(u"my song"_s, 41, found()), u"007 - My SONG"_s);
    EXPECT_EQ(ExistingFiles::base(u"MY Song"_s, 41, found()), u"007 - My SONG"_s);
    EXPECT_EQ(ExistingFiles::base(u"My Songs"_s, 41, found()), u"042 - My Songs"_s);
}

TEST_F(ExistingFilesTest, hiddenFilesAndWhatIsNoAssetAreSkipped)
{
    put({u".Hidden.mp3"_s, u"notes.pdf"_s, u"Song.mp3.part"_s, u"Tracklist"_s});
    EXPECT_EQ(found(), Titles());
}

TEST_F(ExistingFilesTest, anEmptyTitleIsSkipped)
{
    put({u"001 - .mp3"_s, u" lyrics.txt"_s});
    EXPECT_EQ(found(), Titles());
}

TEST_F(ExistingFilesTest, theFoldersOwnNameDecidesWhatIsAnAsset)
{
    ASSERT_TRUE(QDir(folder.path()).mkdir(u"Mastered"_s));
    put({u"Mastered/Song (Spotify).wav"_s, u"Mastered/Other.mp3"_s});
    const Titles expected{{u"song"_s, u"Song"_s}};
    EXPECT_EQ(ExistingFiles::byTitle(folder.filePath(u"Mastered"_s)), expected);
    EXPECT_EQ(ExistingFiles::byTitle(folder.filePath(u"Mastered/"_s)), expected);
}

TEST_F(ExistingFilesTest, aFolderWithAnAssetsNameIsAnItemLikeAnyOther)
{
    ASSERT_TRUE(QDir(folder.path()).mkdir(u"004 - Song.mp3"_s));
    EXPECT_EQ(found(), (Titles{{u"song"_s, u"004 - Song"_s}}));
}

TEST_F(ExistingFilesTest, aDecomposedNameIsFoundByItsComposedTitleAndKeepsItsSpelling)
{
    const QString onDisk = u"002 - Cafe\u0301"_s;
    put({onDisk + u".mp3"_s});
    EXPECT_EQ(found(), (Titles{{u"caf\u00e9"_s, onDisk}}));
    EXPECT_EQ(ExistingFiles::base(u"Caf\u00e9"_s, 9, found()), onDisk);
    EXPECT_EQ(ExistingFiles::base(u"Cafe\u0301"_s, 9, found()), onDisk);
}

TEST_F(ExistingFilesTest, aNameThatIsNoTextIsSkipped)
{
    const QByteArray path = QFile::encodeName(folder.path()) + "/001 - So\xff"
                                                               "ng.mp3";
    const int file = ::open(path.constData(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
    ASSERT_GE(file, 0);
    ::close(file);
    put({u"002 - \ufffd.mp3"_s});
    EXPECT_EQ(found(), (Titles{{u"\ufffd"_s, u"002 - \ufffd"_s}}));
}

TEST_F(ExistingFilesTest, titlesWithPlaceholdersStayAsTheyAre)
{
    EXPECT_EQ(ExistingFiles::base(u"100%1 %2 - x"_s, 4, {}), u"005 - 100%1 %2 - x"_s);
}

TEST_F(ExistingFilesTest, theOrderOfTheListingDoesNotMatter)
{
    QStringList names;
    for (int number = 1; number <= 60; ++number)
        names.append(u"%1 - Song.mp3"_s.arg(number, 3, 10, QChar(u'0')));
    std::reverse(names.begin(), names.end());
    put(names);
    EXPECT_EQ(found(), (Titles{{u"song"_s, u"001 - Song"_s}}));
}

} // namespace
} // namespace orvane
