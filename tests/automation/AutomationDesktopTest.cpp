#include "tests/automation/AutomationFixture.h"
#include "tests/suno/view/StandInDesktop.h"

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using Shown = StandInDesktop::Shown;

/// The automater on a desktop that shows notifications and keeps the machine awake.
class AutomationDesktopTest : public AutomationFixture
{
protected:
    AutomationDesktopTest()
    {
        useDesktop(desktop.bus());
        choices = {.source = RunSource::folder, .tag = true};
        write(u"Hill.mp3"_s, recording());
    }

    ~AutomationDesktopTest() override { automater.reset(); }

    bool waitForShown()
    {
        return waitUntil([this] { return !desktop.shown.isEmpty(); });
    }

    StandInDesktop desktop;
};

TEST_F(AutomationDesktopTest, theEndIsNotifiedOnceWithAWayToTheFolder)
{
    runToTheEnd();
    ASSERT_TRUE(waitForShown());
    ASSERT_TRUE(desktop.settle());
    EXPECT_EQ(desktop.shown, (QList<Shown>{{.title = u"Orvane"_s,
                                            .text = u"Finished — 1 done, 5 switched off."_s,
                                            .actions = {u"open-folder"_s, u"Open folder"_s}}}));
}

TEST_F(AutomationDesktopTest, anEndThatTheUserSeesIsNotNotified)
{
    run().isWatched = [] { return true; };
    ASSERT_TRUE(desktop.acquaint(*notifier));
    runToTheEnd();
    EXPECT_EQ(desktop.textsUntilNow(*notifier), QStringList{u"last"_s});
}

TEST_F(AutomationDesktopTest, anEndThatTheUserAskedForIsNotNotified)
{
    onLine = [this](const QString& line) {
        if (line == u"> Write tags: running")
            run().stop();
    };
    ASSERT_TRUE(desktop.acquaint(*notifier));
    runToTheEnd();
    EXPECT_EQ(desktop.textsUntilNow(*notifier), QStringList{u"last"_s});
}

TEST_F(AutomationDesktopTest, theMachineIsKeptAwakeFromTheStartToTheEnd)
{
    bool wasAwake = false;
    onLine = [&](const QString& line) {
        if (line == u"> Write tags: running")
            wasAwake = waitUntil([this] { return desktop.awakeFor == QStringList{u"Running the Automater"_s}; });
    };
    runToTheEnd();
    EXPECT_TRUE(wasAwake);
    EXPECT_TRUE(waitUntil([this] { return desktop.awakeFor.isEmpty(); }));
}

TEST_F(AutomationDesktopTest, whatTheWatcherFoundIsNotifiedOnce)
{
    choices.tag = false;
    QCoro::waitFor(watcher().check());
    ASSERT_TRUE(waitForShown());
    ASSERT_TRUE(desktop.settle());
    EXPECT_EQ(desktop.shown,
              (QList<Shown>{{.title = u"Orvane"_s, .text = u"2 new track(s) processed"_s, .actions = {}}}));
}

TEST_F(AutomationDesktopTest, aCheckThatFindsNothingIsNotNotified)
{
    QCoro::waitFor(watcher().adoptCurrentLibrary());
    ASSERT_TRUE(desktop.acquaint(*notifier));
    QCoro::waitFor(watcher().check());
    EXPECT_EQ(desktop.textsUntilNow(*notifier), QStringList{u"last"_s});
}

} // namespace
} // namespace orvane::test
