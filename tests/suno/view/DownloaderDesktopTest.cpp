#include "main/Chrome/AccentButton.h"
#include "main/Chrome/Badge.h"
#include "tests/suno/view/DownloaderFixture.h"
#include "tests/suno/view/StandInDesktop.h"

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The tab on a desktop that shows notifications and keeps the machine awake.
class DownloaderDesktopTest : public DownloaderFixture
{
protected:
    DownloaderDesktopTest()
    {
        makeTab(desktop.bus());
        signIn();
    }

    ~DownloaderDesktopTest() override { tab.reset(); }

    bool isAwakeMarked() const { return !part<Badge>(u"awakeMark"_s)->isHidden(); }

    StandInDesktop desktop;
};

TEST_F(DownloaderDesktopTest, theEndIsNotifiedOnceWithAWayToTheFolder)
{
    runToTheEnd();
    ASSERT_TRUE(waitUntil([this] { return !desktop.shown.isEmpty(); }));
    ASSERT_TRUE(desktop.settle());
    EXPECT_EQ(desktop.shown, (QList<StandInDesktop::Shown>{{.title = u"Orvane"_s,
                                                            .text = u"Done — 7 tracks saved."_s,
                                                            .actions = {u"open-folder"_s, u"Open folder"_s}}}));
}

TEST_F(DownloaderDesktopTest, theActionOpensTheFolderOfTheRunAlsoWhenTheDestinationHasMoved)
{
    runToTheEnd();
    ASSERT_TRUE(waitUntil([this] { return !desktop.shown.isEmpty(); }));
    ASSERT_TRUE(desktop.settle());
    session.setDestination(QUrl::fromLocalFile(home.filePath(u"Elsewhere"_s)));
    QStringList opened;
    notifier->onOpenFolder = [&](const QString& path) { opened.append(path); };
    desktop.chooseAction(1, u"open-folder"_s);
    ASSERT_TRUE(waitUntil([&] { return !opened.isEmpty(); }));
    EXPECT_EQ(opened, QStringList{folder()});
}

TEST_F(DownloaderDesktopTest, anEndThatTheUserSeesIsNotNotified)
{
    tab->show();
    tab->activateWindow();
    ASSERT_TRUE(waitUntil([this] { return tab->isActiveWindow(); }));
    ASSERT_TRUE(desktop.acquaint(*notifier));
    runToTheEnd();
    EXPECT_EQ(desktop.textsUntilNow(*notifier), QStringList{u"last"_s});
}

TEST_F(DownloaderDesktopTest, anEndThatTheUserAskedForIsNotNotified)
{
    ASSERT_TRUE(desktop.acquaint(*notifier));
    startAndHold();
    tab->toggleRun();
    ASSERT_TRUE(waitForIdle());
    EXPECT_EQ(desktop.textsUntilNow(*notifier), QStringList{u"last"_s});
}

TEST_F(DownloaderDesktopTest, aFailureIsNotifiedInItsOwnWords)
{
    session.setToken(u"worthless"_s);
    runToTheEnd();
    ASSERT_TRUE(waitUntil([this] { return !desktop.shown.isEmpty(); }));
    EXPECT_EQ(desktop.shown.first().text,
              u"Suno rejected the session (HTTP 401). Open the Suno tab and sign in again."_s);
}

TEST_F(DownloaderDesktopTest, theMachineIsKeptAwakeForTheRunAndAMarkShowsIt)
{
    EXPECT_FALSE(isAwakeMarked());
    startAndHold();
    ASSERT_TRUE(waitUntil([this] { return isAwakeMarked(); }));
    EXPECT_EQ(desktop.awakeFor, QList<QString>{u"Saving your Suno library"_s});
    tab->toggleRun();
    ASSERT_TRUE(waitForIdle());
    EXPECT_FALSE(isAwakeMarked());
    ASSERT_TRUE(desktop.settle());
    EXPECT_TRUE(desktop.awakeFor.isEmpty());
}

TEST_F(DownloaderDesktopTest, aTabThatIsClosedInTheMiddleLetsTheMachineSleep)
{
    ASSERT_TRUE(desktop.acquaint(*notifier));
    startAndHold();
    ASSERT_TRUE(waitUntil([this] { return isAwakeMarked(); }));
    tab.reset();
    ASSERT_TRUE(desktop.settle());
    EXPECT_TRUE(desktop.awakeFor.isEmpty());
    EXPECT_EQ(desktop.textsUntilNow(*notifier), QStringList{u"last"_s});
}

TEST_F(DownloaderDesktopTest, aRunThatIsRefusedKeepsNothingAwake)
{
    session.automationInProgress = true;
    tab->toggleRun();
    ASSERT_TRUE(desktop.settle());
    EXPECT_TRUE(desktop.awakeFor.isEmpty());
}

} // namespace
} // namespace orvane::test
