#include "platform/desktop/Notifier.h"

#include "tests/platform/desktop/FakeNotifications.h"

#include <QTest>

#include <gmock/gmock.h>
#include <memory>
#include <optional>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

const QString notify = u"Notify"_s;

struct NotifierTest : testing::Test
{
    FakeNotifications service;
    Notifier notifier{testBus()};
    QStringList opened;

    NotifierTest()
    {
        notifier.onOpenFolder = [this](const QString& folder) { opened.append(folder); };
    }

    void show(const Notification& notification)
    {
        const int before = service.count(notify);
        notifier.show(notification);
        EXPECT_TRUE(QTest::qWaitFor([&] { return service.count(notify) > before; }));
        settle();
    }

    void click(uint id, const QString& action)
    {
        Q_EMIT service.ActionInvoked(id, action);
        settle();
    }
};

TEST_F(NotifierTest, sendsTheTextsForAnUnlimitedTimeAndWithoutActions)
{
    show({.title = u"Orvane"_s, .text = u"3 new tracks"_s, .folder = {}});
    EXPECT_EQ(service.last(notify), (QVariantList{u"Orvane"_s, 0u, u"orvane"_s, u"Orvane"_s, u"3 new tracks"_s,
                                                  QStringList(), QVariantMap(), -1}));
}

TEST_F(NotifierTest, offersToOpenTheFolderThatItHas)
{
    show({.title = u"Done"_s, .text = {}, .folder = u"/music"_s});
    EXPECT_EQ(service.last(notify).value(5).toStringList(), (QStringList{u"open-folder"_s, u"Open folder"_s}));
}

TEST_F(NotifierTest, replacesTheOneBefore)
{
    for (const QString& text : {u"first"_s, u"second"_s, u"third"_s})
        show({.title = u"Orvane"_s, .text = text, .folder = {}});
    QList<uint> replaced;
    for (const FakeService::Call& call : service.calls) {
        if (call.method == notify)
            replaced.append(call.arguments.value(1).toUInt());
    }
    EXPECT_EQ(replaced, (QList<uint>{0, 7, 7}));
}

TEST_F(NotifierTest, sendsOnlyTheLastOfThoseShownWhileAnAnswerIsUnderWay)
{
    show({.title = u"Orvane"_s, .text = u"first"_s, .folder = {}});
    service.keepsAnswers = true;
    show({.title = u"Orvane"_s, .text = u"second"_s, .folder = {}});
    notifier.show({.title = u"Orvane"_s, .text = u"third"_s, .folder = {}});
    notifier.show({.title = u"Orvane"_s, .text = u"fourth"_s, .folder = {}});
    settle();
    EXPECT_EQ(service.last(notify).value(4), u"second"_s);
    service.answerKept();
    ASSERT_TRUE(QTest::qWaitFor([&] { return service.count(notify) == 3; }));
    settle();
    EXPECT_EQ(service.count(notify), 3);
    EXPECT_EQ(service.last(notify).value(4), u"fourth"_s);
    EXPECT_EQ(service.last(notify).value(1), 7u);
}

TEST_F(NotifierTest, showsMarkupAsItStandsToAServiceThatReadsIt)
{
    service.capabilities = {u"body"_s, u"body-markup"_s};
    show({.title = u"<b>Title</b>"_s, .text = u"<a href='x'>R&B</a>"_s, .folder = {}});
    EXPECT_EQ(service.last(notify).value(3), u"<b>Title</b>"_s) << "a title is never markup";
    EXPECT_EQ(service.last(notify).value(4), u"&lt;a href='x'&gt;R&amp;B&lt;/a&gt;"_s);
}

TEST_F(NotifierTest, changesNoTextForAServiceThatReadsNoMarkup)
{
    service.capabilities = {u"body"_s};
    show({.title = u"Orvane"_s, .text = u"R&B <live>"_s, .folder = {}});
    EXPECT_EQ(service.last(notify).value(4), u"R&B <live>"_s);
}

TEST_F(NotifierTest, asksForTheServicesAbilitiesOnce)
{
    show({.title = u"Orvane"_s, .text = u"first"_s, .folder = {}});
    show({.title = u"Orvane"_s, .text = u"second"_s, .folder = {}});
    EXPECT_EQ(service.count(u"GetCapabilities"_s), 1);
}

TEST_F(NotifierTest, opensTheFolderOfTheNotificationThatIsClicked)
{
    show({.title = u"Done"_s, .text = {}, .folder = u"/music"_s});
    click(7, u"open-folder"_s);
    EXPECT_EQ(opened, QStringList{u"/music"_s});
}

TEST_F(NotifierTest, opensNothingForAnotherNotificationOrAnotherAction)
{
    show({.title = u"Done"_s, .text = {}, .folder = u"/music"_s});
    click(8, u"open-folder"_s);
    click(7, u"default"_s);
    EXPECT_TRUE(opened.isEmpty());
}

TEST_F(NotifierTest, opensTheFolderOfTheLatestNotificationOnly)
{
    show({.title = u"Done"_s, .text = {}, .folder = u"/first"_s});
    show({.title = u"Done"_s, .text = {}, .folder = u"/second"_s});
    click(7, u"open-folder"_s);
    show({.title = u"Done"_s, .text = {}, .folder = {}});
    click(7, u"open-folder"_s);
    EXPECT_EQ(opened, QStringList{u"/second"_s});
}

TEST_F(NotifierTest, doesNotMindAClickThatNobodyWaitsFor)
{
    notifier.onOpenFolder = nullptr;
    show({.title = u"Done"_s, .text = {}, .folder = u"/music"_s});
    click(7, u"open-folder"_s);
    EXPECT_TRUE(opened.isEmpty());
}

TEST_F(NotifierTest, goesOnAfterAServiceThatRefused)
{
    service.refuses = true;
    show({.title = u"Orvane"_s, .text = u"refused"_s, .folder = {}});
    service.refuses = false;
    show({.title = u"Orvane"_s, .text = u"shown"_s, .folder = {}});
    EXPECT_EQ(service.last(notify).value(4), u"shown"_s);
    EXPECT_EQ(service.last(notify).value(1), 0u);
}

TEST_F(NotifierTest, canGoWhileAnAnswerIsUnderWay)
{
    auto shortLived = std::make_unique<Notifier>(testBus());
    service.keepsAnswers = true;
    shortLived->show({.title = u"Orvane"_s, .text = u"last words"_s, .folder = {}});
    ASSERT_TRUE(QTest::qWaitFor([&] { return service.count(u"GetCapabilities"_s) == 1; }));
    shortLived.reset();
    service.answerKept();
    settle();
    EXPECT_EQ(service.count(notify), 0);
}

TEST(NotifierWithoutAService, showsNothingAndShowsAgainOnceThereIsOne)
{
    Notifier notifier(testBus());
    notifier.show({.title = u"Orvane"_s, .text = u"unseen"_s, .folder = {}});
    settle();
    FakeNotifications service;
    notifier.show({.title = u"Orvane"_s, .text = u"seen"_s, .folder = {}});
    ASSERT_TRUE(QTest::qWaitFor([&] { return service.count(notify) == 1; }));
    EXPECT_EQ(service.last(notify).value(4), u"seen"_s);
}

TEST(NotifierWithoutABus, showsNothing)
{
    Notifier notifier(unreachableBus());
    notifier.show({.title = u"Orvane"_s, .text = u"unseen"_s, .folder = u"/music"_s});
    settle();
    EXPECT_EQ(answersUnderWay(), 0);
}

} // namespace
} // namespace orvane::test
