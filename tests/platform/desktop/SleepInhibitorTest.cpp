#include "platform/desktop/SleepInhibitor.h"

#include "tests/platform/desktop/FakeLogind.h"
#include "tests/platform/desktop/FakeScreenSaver.h"

#include <QSignalSpy>
#include <QTest>

#include <gmock/gmock.h>
#include <memory>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

const QString inhibit = u"Inhibit"_s;
const QString unInhibit = u"UnInhibit"_s;
const QString reason = u"Downloading the library"_s;

struct SleepInhibitorTest : testing::Test
{
    std::unique_ptr<SleepInhibitor> inhibitor = std::make_unique<SleepInhibitor>(testBus(), testBus());
    QSignalSpy changes{inhibitor.get(), &SleepInhibitor::holdingChanged};

    void hold()
    {
        inhibitor->hold(reason);
        EXPECT_TRUE(QTest::qWaitFor([&] { return inhibitor->isHolding(); }));
    }

    static void waitForCall(const FakeService& service, const QString& method, int count = 1)
    {
        ASSERT_TRUE(QTest::qWaitFor([&] { return service.count(method) == count; })) << qPrintable(method);
    }

    QList<bool> announced() const
    {
        QList<bool> states;
        for (const QVariantList& change : changes)
            states.append(change.first().toBool());
        return states;
    }
};

struct SleepThroughLogind : SleepInhibitorTest
{
    FakeLogind logind;
    FakeScreenSaver screenSaver;
};

TEST_F(SleepThroughLogind, blocksSleepInTheUsersWords)
{
    hold();
    EXPECT_EQ(logind.last(inhibit), (QVariantList{u"sleep"_s, u"Orvane"_s, reason, u"block"_s}));
    EXPECT_EQ(logind.locksHeld(), 1);
    EXPECT_EQ(announced(), QList<bool>{true});
    EXPECT_TRUE(screenSaver.calls.isEmpty());
}

TEST_F(SleepThroughLogind, holdsOnlyOnceTheServiceHasAnswered)
{
    logind.keepsAnswers = true;
    inhibitor->hold(reason);
    waitForCall(logind, inhibit);
    settle();
    EXPECT_FALSE(inhibitor->isHolding());
    EXPECT_EQ(changes.count(), 0);
    logind.answerKept();
    EXPECT_TRUE(QTest::qWaitFor([&] { return inhibitor->isHolding(); }));
}

TEST_F(SleepThroughLogind, letsGoAtTheRelease)
{
    hold();
    inhibitor->release();
    EXPECT_FALSE(inhibitor->isHolding());
    EXPECT_EQ(announced(), (QList<bool>{true, false}));
    EXPECT_TRUE(QTest::qWaitFor([&] { return logind.locksHeld() == 0; }));
    settle();
    EXPECT_TRUE(screenSaver.calls.isEmpty());
}

TEST_F(SleepThroughLogind, letsGoWhenItIsDestroyed)
{
    hold();
    inhibitor.reset();
    EXPECT_TRUE(QTest::qWaitFor([&] { return logind.locksHeld() == 0; }));
}

TEST_F(SleepThroughLogind, asksOnlyOnceWhileItHolds)
{
    inhibitor->hold(reason);
    inhibitor->hold(u"another reason"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return inhibitor->isHolding(); }));
    inhibitor->hold(u"a third"_s);
    settle();
    EXPECT_EQ(logind.count(inhibit), 1);
}

TEST_F(SleepThroughLogind, holdsAgainAfterARelease)
{
    hold();
    inhibitor->release();
    hold();
    EXPECT_EQ(logind.count(inhibit), 2);
    EXPECT_TRUE(QTest::qWaitFor([&] { return logind.locksHeld() == 1; }));
}

TEST_F(SleepThroughLogind, doesNothingAtAReleaseWithoutAHold)
{
    inhibitor->release();
    settle();
    EXPECT_EQ(changes.count(), 0);
    EXPECT_TRUE(logind.calls.isEmpty());
}

TEST_F(SleepThroughLogind, letsGoOfAnAnswerThatComesAfterTheRelease)
{
    logind.keepsAnswers = true;
    inhibitor->hold(reason);
    waitForCall(logind, inhibit);
    inhibitor->release();
    logind.answerKept();
    EXPECT_TRUE(QTest::qWaitFor([&] { return logind.locksHeld() == 0; }));
    EXPECT_FALSE(inhibitor->isHolding());
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(SleepThroughLogind, letsGoOfAnAnswerThatComesAfterItsEnd)
{
    logind.keepsAnswers = true;
    inhibitor->hold(reason);
    waitForCall(logind, inhibit);
    inhibitor.reset();
    logind.answerKept();
    EXPECT_TRUE(QTest::qWaitFor([&] { return logind.locksHeld() == 0; }));
}

TEST_F(SleepThroughLogind, keepsOnlyTheAnswerToTheLatestHold)
{
    logind.keepsAnswers = true;
    inhibitor->hold(reason);
    waitForCall(logind, inhibit);
    inhibitor->release();
    inhibitor->hold(u"again"_s);
    waitForCall(logind, inhibit, 2);
    logind.answerKept();
    EXPECT_TRUE(QTest::qWaitFor([&] { return inhibitor->isHolding(); }));
    EXPECT_TRUE(QTest::qWaitFor([&] { return logind.locksHeld() == 1; }));
    EXPECT_EQ(announced(), QList<bool>{true});
}

TEST_F(SleepThroughLogind, asksTheScreenSaverWhereItIsRefused)
{
    logind.refuses = true;
    hold();
    EXPECT_EQ(screenSaver.last(inhibit), (QVariantList{u"Orvane"_s, reason}));
}

TEST_F(SleepThroughLogind, asksNobodyElseForARefusalThatComesAfterTheRelease)
{
    logind.refuses = true;
    inhibitor->hold(reason);
    inhibitor->release();
    waitForCall(logind, inhibit);
    settle();
    EXPECT_TRUE(screenSaver.calls.isEmpty());
}

struct SleepThroughScreenSaver : SleepInhibitorTest
{
    FakeScreenSaver screenSaver;
};

TEST_F(SleepThroughScreenSaver, givesItsCookieBackAtTheRelease)
{
    hold();
    EXPECT_EQ(screenSaver.last(inhibit), (QVariantList{u"Orvane"_s, reason}));
    inhibitor->release();
    waitForCall(screenSaver, unInhibit);
    EXPECT_EQ(screenSaver.last(unInhibit), QVariantList{0u}) << "nought is a cookie like any other";
    EXPECT_EQ(announced(), (QList<bool>{true, false}));
}

TEST_F(SleepThroughScreenSaver, givesEachCookieBackOnce)
{
    hold();
    inhibitor->release();
    inhibitor->release();
    hold();
    inhibitor.reset();
    waitForCall(screenSaver, unInhibit, 2);
    settle();
    EXPECT_EQ(screenSaver.count(unInhibit), 2);
    EXPECT_EQ(screenSaver.last(unInhibit), QVariantList{1u});
}

TEST_F(SleepThroughScreenSaver, givesBackACookieThatComesAfterTheRelease)
{
    screenSaver.keepsAnswers = true;
    inhibitor->hold(reason);
    waitForCall(screenSaver, inhibit);
    inhibitor->release();
    settle();
    EXPECT_EQ(screenSaver.count(unInhibit), 0);
    screenSaver.answerKept();
    waitForCall(screenSaver, unInhibit);
    EXPECT_FALSE(inhibitor->isHolding());
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(SleepThroughScreenSaver, givesBackACookieThatComesAfterItsEnd)
{
    screenSaver.keepsAnswers = true;
    inhibitor->hold(reason);
    waitForCall(screenSaver, inhibit);
    inhibitor.reset();
    screenSaver.answerKept();
    waitForCall(screenSaver, unInhibit);
}

TEST_F(SleepThroughScreenSaver, givesBackTheCookieOfAHoldThatAnotherFollowed)
{
    screenSaver.keepsAnswers = true;
    inhibitor->hold(reason);
    waitForCall(screenSaver, inhibit);
    inhibitor->release();
    inhibitor->hold(reason);
    waitForCall(screenSaver, inhibit, 2);
    screenSaver.answerKept();
    waitForCall(screenSaver, unInhibit);
    EXPECT_EQ(screenSaver.last(unInhibit), QVariantList{0u});
    EXPECT_TRUE(QTest::qWaitFor([&] { return inhibitor->isHolding(); }));
}

TEST_F(SleepThroughScreenSaver, isAskedAtOnceWhereThereIsNoSystemBus)
{
    SleepInhibitor alone(unreachableBus(), testBus());
    alone.hold(reason);
    EXPECT_TRUE(QTest::qWaitFor([&] { return alone.isHolding(); }));
}

TEST_F(SleepInhibitorTest, withoutAnyServiceHoldsNothingAndFailsNothing)
{
    inhibitor->hold(reason);
    settle();
    EXPECT_FALSE(inhibitor->isHolding());
    inhibitor->release();
    settle();
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(SleepInhibitorTest, withoutAnyBusHoldsNothingAndFailsNothing)
{
    SleepInhibitor alone(unreachableBus(), unreachableBus());
    alone.hold(reason);
    settle();
    EXPECT_FALSE(alone.isHolding());
    EXPECT_EQ(answersUnderWay(), 0);
    alone.release();
}

} // namespace
} // namespace orvane::test
