#include "main/Window/MainController.h"
#include "platform/web/WebPage.h"
#include "suno/view/SunoTab.h"
#include "tests/e2e/WorldTest.h"

#include <QSet>

#include <algorithm>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

const QString signedInPill = u"● Signed in — token captured automatically"_s;
const QString signedOutPill = u"○ Sign in on the left; the token is picked up on its own"_s;

class SessionTest : public WorldTest
{
protected:
    Session& session() { return world->services.session; }
};

TEST_F(SessionTest, signingInOnThePageGivesTheToken)
{
    open();
    EXPECT_EQ(world->pill(), signedOutPill);
    ASSERT_TRUE(world->signIn());
    EXPECT_TRUE(session().token().startsWith(u"stand-in-"));
    EXPECT_EQ(world->pill(), signedInPill);
    EXPECT_TRUE(world->logHas(u"Loaded 2 workspace(s) from Suno."_s));
}

TEST_F(SessionTest, aRunTakesUpEachNewTokenOfThePage)
{
    open(shortLibrary(14, 1)).service.setTokenLifetime(1500ms);
    ASSERT_TRUE(world->signIn());
    world->tick({});
    ASSERT_TRUE(world->capture());
    world->service.clearRequests();
    ASSERT_TRUE(world->startExport());
    // The pane asks every 20 seconds; here it asks all the time, so that the tokens may rotate as fast.
    ASSERT_TRUE(world->waitUntil([this] {
        world->pane().captureToken();
        return !session().downloadInProgress;
    }));
    EXPECT_TRUE(world->logHas(u"Found 14 tracks."_s));
    const QList<demo::SeenRequest> pages = world->feedRequests();
    ASSERT_GE(pages.size(), 14);
    for (const demo::SeenRequest& page : pages) {
        EXPECT_EQ(page.status, 200) << page.target.constData();
        EXPECT_TRUE(page.authorization.startsWith("Bearer stand-in-"));
    }
    EXPECT_NE(pages.first().authorization, pages.last().authorization);
}

TEST_F(SessionTest, signingOutOnThePageEmptiesTheTokenAtTheSecondEmptyAnswer)
{
    open();
    ASSERT_TRUE(world->signIn());
    QList<bool> hadToken;
    QObject::connect(&world->pane(), &SunoTab::captureEnded, &world->pane(),
                     [&] { hadToken.append(!session().token().isEmpty()); });
    ASSERT_TRUE(world->clickInPageUntil(u"#sign-out"_s, [this] { return world->pageHas(u"#sign-in"_s); }));
    ASSERT_TRUE(world->waitUntil([&] { return hadToken.size() == 1; }));
    ASSERT_TRUE(world->capture());
    EXPECT_EQ(hadToken, (QList<bool>{true, false}));
    EXPECT_EQ(world->pill(), signedOutPill);
}

TEST_F(SessionTest, signingOutOfTheProgramForgetsTheSite)
{
    open();
    ASSERT_TRUE(world->signIn());
    world->service.clearRequests();
    world->pane().signOut();
    EXPECT_EQ(session().token(), QString());
    EXPECT_EQ(world->pill(), signedOutPill);
    ASSERT_TRUE(world->waitUntil([this] { return world->pageHas(u"#sign-in"_s); }));
    const QList<demo::SeenRequest> seen = world->service.requests();
    const auto home = std::ranges::find(seen, QByteArray("/"), &demo::SeenRequest::target);
    ASSERT_NE(home, seen.end());
    EXPECT_EQ(home->cookie, "");
    EXPECT_EQ(session().openSunoURL, world->service.endpoints().sunoHome);
}

TEST_F(SessionTest, aRejectedSessionIsNamedAndTheRunEnds)
{
    open();
    ASSERT_TRUE(world->signIn());
    world->service.expireTokens();
    ASSERT_TRUE(world->startExport());
    ASSERT_TRUE(world->waitForEnd());
    EXPECT_TRUE(world->logHas(u"Suno rejected the session (HTTP 401). Open the Suno tab and sign in again."_s));
    EXPECT_EQ(world->assetRequests(), 0);
}

} // namespace
} // namespace orvane::test
