#include "main/Window/QuitGuard.h"

#include "main/App/Preferences.h"
#include "main/App/Session.h"
#include "tests/support/RecordingDialogs.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class QuitGuard : public testing::Test
{
protected:
    QTemporaryDir home;
    Preferences preferences{home.filePath(u"preferences.json"_s)};
    Session session{preferences};
    RecordingDialogs dialogs;
    bool relaunchAfterQuit = false;
    orvane::QuitGuard guard{session, dialogs, relaunchAfterQuit};
};

TEST_F(QuitGuard, anIdleProgramQuitsWithoutAQuestion)
{
    relaunchAfterQuit = true;
    EXPECT_TRUE(guard.mayQuit());
    EXPECT_TRUE(dialogs.questions.isEmpty());
    EXPECT_TRUE(relaunchAfterQuit);
}

TEST_F(QuitGuard, aDownloadIsAskedAbout)
{
    session.downloadInProgress = true;
    guard.mayQuit();
    ASSERT_EQ(dialogs.questions.size(), 1);
    const Question& question = dialogs.questions.first();
    EXPECT_EQ(question.text, u"A download is still running."_s);
    EXPECT_EQ(question.informativeText,
              u"Files already saved will be kept, and starting again picks up where it left off."_s);
    EXPECT_EQ(question.firstButton, u"Quit anyway"_s);
    EXPECT_EQ(question.secondButton, u"Keep downloading"_s);
}

TEST_F(QuitGuard, anAutomationRunIsAskedAbout)
{
    session.automationInProgress = true;
    guard.mayQuit();
    ASSERT_EQ(dialogs.questions.size(), 1);
    const Question& question = dialogs.questions.first();
    EXPECT_EQ(question.text, u"An automation run is still going."_s);
    EXPECT_EQ(question.informativeText,
              u"Files already saved will be kept, and starting again picks up where it left off."_s);
    EXPECT_EQ(question.firstButton, u"Quit anyway"_s);
    EXPECT_EQ(question.secondButton, u"Keep running"_s);
}

TEST_F(QuitGuard, withBothRunsGoingOnlyTheDownloadIsAskedAbout)
{
    session.downloadInProgress = true;
    session.automationInProgress = true;
    guard.mayQuit();
    ASSERT_EQ(dialogs.questions.size(), 1);
    EXPECT_EQ(dialogs.questions.first().text, u"A download is still running."_s);
}

TEST_F(QuitGuard, theFirstButtonQuitsAndKeepsARelaunchThatWasAskedFor)
{
    session.downloadInProgress = true;
    relaunchAfterQuit = true;
    dialogs.answer = true;
    EXPECT_TRUE(guard.mayQuit());
    EXPECT_TRUE(relaunchAfterQuit);
}

TEST_F(QuitGuard, theSecondButtonStaysAndForgetsTheRelaunch)
{
    session.automationInProgress = true;
    relaunchAfterQuit = true;
    dialogs.answer = false;
    EXPECT_FALSE(guard.mayQuit());
    EXPECT_FALSE(relaunchAfterQuit);
}

TEST_F(QuitGuard, aSecondQuitWhileTheQuestionIsOpenIsRefusedWithoutAnotherQuestion)
{
    session.downloadInProgress = true;
    relaunchAfterQuit = true;
    dialogs.answer = true;
    bool second = true;
    dialogs.whileAsking = [&] { second = guard.mayQuit(); };
    EXPECT_TRUE(guard.mayQuit());
    EXPECT_FALSE(second);
    EXPECT_EQ(dialogs.questions.size(), 1);
    EXPECT_TRUE(relaunchAfterQuit);
}

} // namespace
} // namespace orvane::test
