#include "platform/desktop/SoleInstance.h"

#include "tests/support/TestFolder.h"

#include <QFileInfo>
#include <QLocalSocket>
#include <QSignalSpy>
#include <QTest>

#include <future>
#include <gtest/gtest.h>
#include <optional>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;
using Standing = SoleInstance::Standing;

constexpr std::chrono::milliseconds aMinute = 60s;

class SoleInstanceTest : public testing::Test
{
protected:
    /// A start that asks on a thread of its own, as one in another process would.
    std::future<Standing> start(const QByteArray& activation = {})
    {
        const auto ask = [path = kept, activation] { return SoleInstance(path).take(activation, aMinute); };
        return std::async(std::launch::async, ask);
    }

    /// How it stands, while the event loop here answers it.
    static Standing standing(std::future<Standing>& asking)
    {
        const auto known = [&asking] { return asking.wait_for(0s) == std::future_status::ready; };
        if (!QTest::qWaitFor(known, static_cast<int>(aMinute.count())))
            ADD_FAILURE() << "the start is still asking";
        return asking.get();
    }

    Standing standingOfLaterStart(const QByteArray& activation = {})
    {
        std::future<Standing> asking = start(activation);
        return standing(asking);
    }

    /// Says something to the first that listens; gives what it answers before it hangs up.
    static QByteArray say(const SoleInstance& first, const QByteArray& words)
    {
        QLocalSocket socket;
        socket.connectToServer(first.socketPath());
        socket.write(words);
        EXPECT_TRUE(QTest::qWaitFor([&socket] { return socket.state() == QLocalSocket::UnconnectedState; }));
        return socket.readAll();
    }

    TestFolder folder;
    const QString kept = folder.path(u"data/orvane/web"_s);
};

TEST_F(SoleInstanceTest, theFirstStartGoesOnAndALaterOneCallsIt)
{
    SoleInstance first(kept);
    const QSignalSpy called(&first, &SoleInstance::called);
    ASSERT_EQ(first.take({}, 0ms), Standing::First);
    EXPECT_EQ(standingOfLaterStart(), Standing::Second);
    EXPECT_EQ(standingOfLaterStart(), Standing::Second);
    EXPECT_EQ(called.count(), 2);
}

TEST_F(SoleInstanceTest, theCallBringsTheDesktopsLeaveToComeForward)
{
    SoleInstance first(kept);
    const QSignalSpy called(&first, &SoleInstance::called);
    ASSERT_EQ(first.take({}, 0ms), Standing::First);
    EXPECT_EQ(standingOfLaterStart("token\nof 1"), Standing::Second);
    ASSERT_EQ(called.count(), 1);
    EXPECT_EQ(called.first().first().toByteArray(), "token of 1");
}

TEST_F(SoleInstanceTest, ofManyStartsAtOnceOneGoesOn)
{
    std::vector<std::unique_ptr<SoleInstance>> starts;
    int first = 0;
    for (int number = 0; number < 5; ++number) {
        starts.push_back(std::make_unique<SoleInstance>(kept));
        first += starts.back()->take({}, 0ms) == Standing::First;
    }
    EXPECT_EQ(first, 1);
}

TEST_F(SoleInstanceTest, programsWithFoldersOfTheirOwnDoNotHinderEachOther)
{
    SoleInstance one(kept);
    SoleInstance other(folder.path(u"data/orvane-demo/web"_s));
    EXPECT_EQ(one.take({}, 0ms), Standing::First);
    EXPECT_EQ(other.take({}, 0ms), Standing::First);
    EXPECT_NE(one.socketPath(), other.socketPath());
}

TEST_F(SoleInstanceTest, aProgramThatHasEndedHindersNobodyAndLeavesNothing)
{
    const QString socket = [this] {
        SoleInstance first(kept);
        EXPECT_EQ(first.take({}, 0ms), Standing::First);
        EXPECT_TRUE(QFileInfo::exists(first.socketPath()));
        EXPECT_TRUE(QFileInfo::exists(kept + u".lock"_s));
        return first.socketPath();
    }();
    EXPECT_FALSE(QFileInfo::exists(socket));
    EXPECT_FALSE(QFileInfo::exists(kept + u".lock"_s));
    EXPECT_EQ(SoleInstance(kept).take({}, 0ms), Standing::First);
}

TEST_F(SoleInstanceTest, whatAKilledProgramLeavesBehindIsTakenOver)
{
    const auto beKilled = [this] {
        auto* killed = new SoleInstance(kept);
        return killed->take({}, 0ms) == Standing::First ? 7 : 1;
    };
    ASSERT_EQ(inChild(beKilled), 7);
    ASSERT_TRUE(QFileInfo::exists(kept + u".lock"_s));
    SoleInstance first(kept);
    ASSERT_TRUE(QFileInfo::exists(first.socketPath()));
    EXPECT_EQ(first.take({}, 0ms), Standing::First);
    EXPECT_EQ(standingOfLaterStart(), Standing::Second);
}

TEST_F(SoleInstanceTest, aLockIsNotStaleForItsAge)
{
    SoleInstance first(kept);
    ASSERT_EQ(first.take({}, 0ms), Standing::First);
    QFile lock(kept + u".lock"_s);
    ASSERT_TRUE(lock.open(QFile::ReadWrite));
    ASSERT_TRUE(lock.setFileTime(QDateTime::currentDateTime().addDays(-30), QFile::FileModificationTime));
    EXPECT_EQ(standingOfLaterStart(), Standing::Second);
}

TEST_F(SoleInstanceTest, oneThatDoesNotAnswerIsNotWaitedForLongerThanAsked)
{
    SoleInstance first(kept);
    ASSERT_EQ(first.take({}, 0ms), Standing::First);
    // Nothing here runs the loop that would answer.
    EXPECT_EQ(SoleInstance(kept).take({}, 0ms), Standing::Unanswered);
}

TEST_F(SoleInstanceTest, aStartThatMeetsTheEndOfTheFirstTakesItsPlace)
{
    std::optional<SoleInstance> first(kept);
    ASSERT_EQ(first->take({}, 0ms), Standing::First);
    std::future<Standing> asking = start();
    first.reset();
    EXPECT_EQ(standing(asking), Standing::First);
}

TEST_F(SoleInstanceTest, whereNoLockCanBeWrittenAProgramStartsAllTheSame)
{
    folder.write(u"data"_s, "a file where the folder would be");
    SoleInstance first(kept);
    EXPECT_EQ(first.take({}, 0ms), Standing::First);
    // And there too only the first goes on.
    EXPECT_EQ(standingOfLaterStart(), Standing::Second);
}

TEST_F(SoleInstanceTest, whatIsNoCallIsNotAnswered)
{
    SoleInstance first(kept);
    const QSignalSpy called(&first, &SoleInstance::called);
    ASSERT_EQ(first.take({}, 0ms), Standing::First);
    EXPECT_EQ(say(first, "GET / HTTP/1.1\r\n"), "");
    EXPECT_EQ(say(first, "come forward " + QByteArray(100'000, 'x')), "");
    EXPECT_EQ(called.count(), 0);
    EXPECT_EQ(say(first, "come forward \n"), "coming\n");
    EXPECT_EQ(called.count(), 1);
}

TEST_F(SoleInstanceTest, onlyItsUserReachesIt)
{
    SoleInstance first(kept);
    ASSERT_EQ(first.take({}, 0ms), Standing::First);
    const QFile::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    EXPECT_FALSE(QFileInfo(first.socketPath()).permissions() & others);
    EXPECT_FALSE(QFileInfo(folder.path(u"data/orvane"_s)).permissions() & others);
}

} // namespace
} // namespace orvane::test
