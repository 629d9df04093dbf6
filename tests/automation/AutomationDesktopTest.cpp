#include "tests/automation/AutomationFixture.h"
#include "tests/suno/view/StandInDesktop.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QSignalSpy>

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

    /// What is asked for goes out asynchronously: a later question that is answered means that all before it were.
    void waitForTheBus()
    {
        const QDBusMessage ping = QDBusMessage::createMethodCall(u"org.freedesktop.Notifications"_s,
                                                                 u"/org/freedesktop/Notifications"_s, {}, u"Ping"_s);
        QDBusPendingCallWatcher watcher(desktop.bus().asyncCall(ping));
        QSignalSpy answered(&watcher, &QDBusPendingCallWatcher::finished);
        ASSERT_TRUE(answered.wait(30'000));
    }

    bool waitForShown()
    {
        return waitUntil([this] { return !desktop.shown.isEmpty(); });
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
        for (const Shown& shown : desktop.shown)
            texts.append(shown.text);
        return texts;
    }

    StandInDesktop desktop;
};

TEST_F(AutomationDesktopTest, theEndIsNotifiedOnceWithAWayToTheFolder)
{
    runToTheEnd();
    ASSERT_TRUE(waitForShown());
    waitForTheBus();
    EXPECT_EQ(desktop.shown, (QList<Shown>{{.title = u"Orvane"_s,
                                            .text = u"Finished — 1 done, 5 switched off."_s,
                                            .actions = {u"open-folder"_s, u"Open folder"_s}}}));
}

TEST_F(AutomationDesktopTest, anEndThatTheUserSeesIsNotNotified)
{
    run().isWatched = [] { return true; };
    acquaint();
    runToTheEnd();
    EXPECT_EQ(shownTexts(), QStringList{u"last"_s});
}

TEST_F(AutomationDesktopTest, anEndThatTheUserAskedForIsNotNotified)
{
    onLine = [this](const QString& line) {
        if (line == u"> Write tags: running")
            run().stop();
    };
    acquaint();
    runToTheEnd();
    EXPECT_EQ(shownTexts(), QStringList{u"last"_s});
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
    waitForTheBus();
    EXPECT_EQ(desktop.shown,
              (QList<Shown>{{.title = u"Orvane"_s, .text = u"2 new track(s) processed"_s, .actions = {}}}));
}

TEST_F(AutomationDesktopTest, aCheckThatFindsNothingIsNotNotified)
{
    QCoro::waitFor(watcher().adoptCurrentLibrary());
    acquaint();
    QCoro::waitFor(watcher().check());
    EXPECT_EQ(shownTexts(), QStringList{u"last"_s});
}

} // namespace
} // namespace orvane::test
