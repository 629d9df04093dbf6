#include "main/Chrome/AccentButton.h"
#include "main/Chrome/Badge.h"
#include "tests/suno/view/DownloaderFixture.h"
#include "tests/suno/view/StandInDesktop.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>

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

    /// What is asked for goes out asynchronously: a later question that is answered means that all before it were.
    void waitForTheBus()
    {
        QDBusMessage ping = QDBusMessage::createMethodCall(u"org.freedesktop.Notifications"_s,
                                                           u"/org/freedesktop/Notifications"_s, {}, u"Ping"_s);
        QDBusPendingCallWatcher watcher(desktop.bus().asyncCall(ping));
        QSignalSpy answered(&watcher, &QDBusPendingCallWatcher::finished);
        ASSERT_TRUE(answered.wait(30'000));
    }

    void tell(const QString& text)
    {
        notifier->show({.title = u"Test"_s, .text = text, .folder = {}});
        ASSERT_TRUE(waitUntil([&] { return !desktop.shown.isEmpty() && desktop.shown.last().text == text; }));
        waitForTheBus();
    }

    /// The notifier has asked what the desktop can do, so that what it is to show goes out at once.
    void acquaint()
    {
        tell(u"first"_s);
        desktop.shown.clear();
    }

    /// What was shown since, in the order in which it was to be.
    QStringList shownTexts()
    {
        tell(u"last"_s);
        QStringList texts;
        for (const StandInDesktop::Shown& shown : desktop.shown)
            texts.append(shown.text);
        return texts;
    }

    StandInDesktop desktop;
};

TEST_F(DownloaderDesktopTest, theEndIsNotifiedOnceWithAWayToTheFolder)
{
    runToTheEnd();
    ASSERT_TRUE(waitUntil([this] { return !desktop.shown.isEmpty(); }));
    waitForTheBus();
    EXPECT_EQ(desktop.shown, (QList<StandInDesktop::Shown>{{.title = u"Orvane"_s,
                                                            .text = u"Done — 7 tracks saved."_s,
                                                            .actions = {u"open-folder"_s, u"Open folder"_s}}}));
}

TEST_F(DownloaderDesktopTest, theActionOpensTheFolderOfTheRunAlsoWhenTheDestinationHasMoved)
{
    runToTheEnd();
    ASSERT_TRUE(waitUntil([this] { return !desktop.shown.isEmpty(); }));
    waitForTheBus();
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
    acquaint();
    runToTheEnd();
    EXPECT_EQ(shownTexts(), QStringList{u"last"_s});
}

TEST_F(DownloaderDesktopTest, anEndThatTheUserAskedForIsNotNotified)
{
    acquaint();
    startAndHold();
    tab->toggleRun();
    ASSERT_TRUE(waitForIdle());
    EXPECT_EQ(shownTexts(), QStringList{u"last"_s});
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
    waitForTheBus();
    EXPECT_TRUE(desktop.awakeFor.isEmpty());
}

TEST_F(DownloaderDesktopTest, aTabThatIsClosedInTheMiddleLetsTheMachineSleep)
{
    acquaint();
    startAndHold();
    ASSERT_TRUE(waitUntil([this] { return isAwakeMarked(); }));
    tab.reset();
    waitForTheBus();
    EXPECT_TRUE(desktop.awakeFor.isEmpty());
    EXPECT_EQ(shownTexts(), QStringList{u"last"_s});
}

TEST_F(DownloaderDesktopTest, aRunThatIsRefusedKeepsNothingAwake)
{
    session.automationInProgress = true;
    tab->toggleRun();
    waitForTheBus();
    EXPECT_TRUE(desktop.awakeFor.isEmpty());
}

} // namespace
} // namespace orvane::test
