#include "automation/Prerequisite.h"

#include "main/App/Preferences.h"
#include "main/App/Session.h"
#include "tests/support/TestFolder.h"

#include <QDir>
#include <QFile>

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class PrerequisitesTest : public testing::Test
{
protected:
    PrerequisitesTest()
    {
        session.setDestination(QUrl::fromLocalFile(folder.path(u"deep/Export"_s)));
        whole = makePrerequisites(
            session, [this] { return std::optional(config); }, 3);
    }

    bool allMet(RunSource source) const
    {
        const auto isMet = [](const Prerequisite& prerequisite) { return prerequisite.isMet(); };
        const QList<Prerequisite> live = livePrerequisites(whole, source);
        return std::all_of(live.begin(), live.end(), isMet);
    }

    TestFolder folder;
    Preferences preferences{folder.path(u"preferences.json"_s)};
    Session session{preferences};
    PipelineConfig config;
    QList<Prerequisite> whole;
};

TEST_F(PrerequisitesTest, areThreeInThisOrderWithTheseRemedies)
{
    ASSERT_EQ(whole.size(), 3);
    EXPECT_EQ(whole[0].title, u"Signed in to Suno"_s);
    EXPECT_EQ(whole[0].fix, u"Sign in on the left"_s);
    EXPECT_EQ(whole[0].tab, std::nullopt);
    EXPECT_TRUE(whole[0].onlyWhenDownloading);
    EXPECT_EQ(whole[1].title, u"Somewhere to save"_s);
    EXPECT_EQ(whole[1].fix, u"Choose a folder"_s);
    EXPECT_EQ(whole[1].tab, 3);
    EXPECT_FALSE(whole[1].onlyWhenDownloading);
    EXPECT_EQ(whole[2].title, u"Something to download"_s);
    EXPECT_EQ(whole[2].fix, u"Pick assets"_s);
    EXPECT_EQ(whole[2].tab, 3);
    EXPECT_TRUE(whole[2].onlyWhenDownloading);
}

TEST_F(PrerequisitesTest, theFirstIsMetWithAToken)
{
    EXPECT_FALSE(whole[0].isMet());
    EXPECT_EQ(whole[0].detail(), u"no session yet"_s);
    session.setToken(u"token"_s);
    EXPECT_TRUE(whole[0].isMet());
    EXPECT_EQ(whole[0].detail(), u"session captured"_s);
}

TEST_F(PrerequisitesTest, theSecondMakesTheFolderWithThoseAboveIt)
{
    EXPECT_TRUE(whole[1].isMet());
    EXPECT_TRUE(QDir(folder.path(u"deep/Export"_s)).exists());
}

TEST_F(PrerequisitesTest, theSecondShowsTheNameOfTheFolderNotItsPath)
{
    EXPECT_EQ(whole[1].detail(), u"Export"_s);
    session.setDestination(QUrl::fromLocalFile(folder.path(u"Other/"_s)));
    EXPECT_EQ(whole[1].detail(), u"Other"_s);
}

TEST_F(PrerequisitesTest, aFileInTheWayFailsTheSecond)
{
    folder.write(u"deep"_s, "x");
    EXPECT_FALSE(whole[1].isMet());
}

TEST_F(PrerequisitesTest, aReadOnlyDestinationFailsTheSecondWhateverTheSource)
{
    const QString path = folder.path(u"locked"_s);
    ASSERT_TRUE(QDir().mkpath(path));
    ASSERT_EQ(::chmod(QFile::encodeName(path).constData(), 0555), 0);
    ASSERT_EQ(::chmod(QFile::encodeName(folder.path()).constData(), 0755), 0);
    const int met = inChild([&path] {
        becomeUnprivileged();
        return Prerequisites::canSaveIn(path) ? 1 : 0;
    });
    EXPECT_EQ(met, 0);
    for (const RunSource source : allRunSources) {
        const QList<Prerequisite> live = livePrerequisites(whole, source);
        const auto isIt = [](const Prerequisite& prerequisite) { return prerequisite.title == u"Somewhere to save"; };
        EXPECT_TRUE(std::any_of(live.begin(), live.end(), isIt));
    }
}

TEST_F(PrerequisitesTest, theThirdIsMetWithSomethingTicked)
{
    EXPECT_FALSE(whole[2].isMet());
    EXPECT_EQ(whole[2].detail(), u"nothing ticked"_s);
    config.assets = {Asset::lyrics, Asset::audio, Asset::lrc, Asset::artwork};
    EXPECT_TRUE(whole[2].isMet());
    EXPECT_EQ(whole[2].detail(), u"artwork, audio, lrc, lyrics"_s);
}

TEST_F(PrerequisitesTest, aFolderRunWithNoTokenPasses)
{
    config.assets = {Asset::audio};
    EXPECT_FALSE(allMet(RunSource::download));
    EXPECT_TRUE(allMet(RunSource::folder));
    EXPECT_TRUE(allMet(RunSource::selection));
}

TEST_F(PrerequisitesTest, tickingNoAssetsBlocksADownloadRunButNotAFolderRun)
{
    session.setToken(u"token"_s);
    EXPECT_FALSE(allMet(RunSource::download));
    EXPECT_TRUE(allMet(RunSource::folder));
    config.assets = {Asset::lrc};
    EXPECT_TRUE(allMet(RunSource::download));
}

TEST_F(PrerequisitesTest, areMetWithoutAConfigurationOnlyWhereNothingIsDownloaded)
{
    session.setToken(u"token"_s);
    whole = makePrerequisites(
        session, [] { return std::optional<PipelineConfig>(); }, 0);
    EXPECT_FALSE(allMet(RunSource::download));
    EXPECT_TRUE(allMet(RunSource::folder));
}

} // namespace
} // namespace orvane::test
