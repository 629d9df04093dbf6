#include "suno/view/SunoTab.h"

#include "demonstration/service/StandInService.h"
#include "main/App/Endpoints.h"
#include "main/App/Preferences.h"
#include "main/App/Session.h"
#include "platform/web/WebPage.h"
#include "platform/web/WebPane.h"
#include "platform/web/WebPopup.h"
#include "platform/web/WebProfile.h"
#include "tests/platform/web/PageServer.h"
#include "tests/support/RecordingDialogs.h"
#include "tests/support/TestFolder.h"

#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <QWebEnginePage>
#include <QWebEngineView>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace orvane {
namespace {

using test::call;
using test::eventually;

/// Captures only when a test asks for one.
constexpr SunoTiming onDemand{.captureInterval = 1h, .settling = 1h};

/// A page whose session answers with what `window.token` holds.
QByteArray pageWithToken(const QByteArray& token)
{
    return "<title>site</title><script>window.asked = 0; window.token = " + token +
           "; window.Clerk = {session: {getToken: async () => { ++window.asked; return window.token; }}};</script>";
}

/// Clicks on an element of the page, if it is there by now.
void clickOn(QPointer<QWidget> pane, WebPage& page, const QString& id)
{
    const double zoom = page.zoom();
    const ScriptOutcome place = call(page,
                                     u"const box = document.getElementById(id).getBoundingClientRect();"
                                     "return [box.x + box.width / 2, box.y + box.height / 2];"_s,
                                     {{u"id"_s, id}});
    // The page may have closed its window meanwhile.
    QWidget* target = pane ? pane->findChild<QWebEngineView*>()->focusProxy() : nullptr;
    if (!place.isValue() || !target)
        return;
    const QPointF point(place.value[0].toDouble() * zoom, place.value[1].toDouble() * zoom);
    QTest::mouseClick(target, Qt::LeftButton, Qt::NoModifier, point.toPoint());
}

class SunoTabTest : public testing::Test
{
protected:
    SunoTabTest()
    {
        server.serve("/", pageWithToken("'first'"));
        server.serve("/silent", test::Page{.body = {}, .silent = true});
        endpoints.sunoHome = server.url(u"/"_s, u"suno.localhost"_s);
        endpoints.sunoSiteDomain = u"suno.localhost"_s;
    }

    SunoTab& open(const SunoTiming& timing = onDemand)
    {
        tab = std::make_unique<SunoTab>(profile, session, preferences, endpoints, nullptr, timing);
        return *tab;
    }

    /// A tab whose home page is there.
    SunoTab& openHome(const SunoTiming& timing = onDemand)
    {
        QSignalSpy finished(&open(timing).page(), &WebPage::finished);
        EXPECT_TRUE(eventually([&] { return !finished.isEmpty(); }));
        return *tab;
    }

    void setToken(const QString& literal)
    {
        EXPECT_TRUE(call(tab->page(), u"window.token = "_s + literal + u';').isValue());
    }

    /// Captures once, to its end.
    void capture()
    {
        QSignalSpy ended(tab.get(), &SunoTab::captureEnded);
        tab->captureToken();
        ASSERT_TRUE(eventually([&] { return ended.size() == 1; }));
    }

    int asked() { return call(tab->page(), u"return window.asked;"_s).value.toInt(); }

    test::PageServer server;
    test::TestFolder folder;
    Preferences preferences{folder.path(u"preferences.json"_s)};
    Session session{preferences};
    Endpoints endpoints;
    WebProfile profile{QString()};
    std::unique_ptr<SunoTab> tab;
    QSignalSpy announced{&session, &Session::tokenChanged};
};

} // namespace

TEST_F(SunoTabTest, hasTheTimesOfTheProduct)
{
    EXPECT_EQ(SunoTiming().captureInterval, 20s);
    EXPECT_EQ(SunoTiming().settling, 1500ms);
    EXPECT_EQ(SunoTiming().homeTimeout, 60s);
    EXPECT_LT(SunoTiming().captureTimeout, SunoTiming().captureInterval);
}

TEST_F(SunoTabTest, loadsTheHomePageAndSaysWhatItShows)
{
    EXPECT_EQ(session.openSunoURL, std::nullopt);
    openHome();
    EXPECT_EQ(session.openSunoURL, endpoints.sunoHome);
    call(tab->page(), u"history.pushState({}, '', '/song/7');"_s);
    EXPECT_TRUE(eventually([&] { return session.openSunoURL == server.url(u"/song/7"_s, u"suno.localhost"_s); }));
}

TEST_F(SunoTabTest, theAddressIsKnownBeforeThePageIsWhole)
{
    server.serve("/", "<title>slow</title><img src='/silent'>");
    open();
    EXPECT_TRUE(eventually([&] { return session.openSunoURL == endpoints.sunoHome; }));
    EXPECT_TRUE(tab->page().enginePage().isLoading());
}

TEST_F(SunoTabTest, aFinishedLoadIsFollowedByACapture)
{
    openHome({.captureInterval = 1h, .settling = 20ms});
    EXPECT_TRUE(eventually([&] { return session.token() == u"first"; }));
    EXPECT_EQ(announced.size(), 1);
}

TEST_F(SunoTabTest, capturesAgainAndAgain)
{
    openHome({.captureInterval = 20ms, .settling = 1h});
    ASSERT_TRUE(eventually([&] { return session.token() == u"first"; }));
    setToken(u"'second'"_s);
    ASSERT_TRUE(eventually([&] { return session.token() == u"second"; }));
    EXPECT_EQ(announced.size(), 2);
    setToken(u"''"_s);
    ASSERT_TRUE(eventually([&] { return session.token().isEmpty(); }));
    EXPECT_EQ(announced.size(), 3);
}

TEST_F(SunoTabTest, theSameTokenIsNotAnnouncedAgain)
{
    openHome();
    capture();
    capture();
    EXPECT_EQ(session.token(), u"first"_s);
    EXPECT_EQ(announced.size(), 1);
}

TEST_F(SunoTabTest, oneEmptyAnswerIsBorne)
{
    openHome();
    capture();
    setToken(u"''"_s);
    capture();
    setToken(u"'first'"_s);
    capture();
    setToken(u"''"_s);
    capture();
    EXPECT_EQ(session.token(), u"first"_s);
    EXPECT_EQ(announced.size(), 1);
}

TEST_F(SunoTabTest, twoEmptyAnswersEmptyTheTokenOnce)
{
    openHome();
    capture();
    setToken(u"''"_s);
    capture();
    capture();
    EXPECT_EQ(session.token(), u""_s);
    EXPECT_EQ(announced.size(), 2);
    capture();
    EXPECT_EQ(announced.size(), 2);
}

TEST_F(SunoTabTest, aThrowInThePageIsAnEmptyAnswer)
{
    openHome();
    session.setToken(u"kept"_s);
    call(tab->page(), u"window.token = Promise.reject(new Error('no session')); window.token.catch(() => {});"_s);
    capture();
    EXPECT_EQ(session.token(), u"kept"_s);
    capture();
    EXPECT_EQ(session.token(), u""_s);
}

TEST_F(SunoTabTest, anAnswerThatIsNoTextChangesNothing)
{
    openHome();
    session.setToken(u"kept"_s);
    for (const QString& literal : {u"null"_s, u"undefined"_s, u"5"_s, u"{}"_s, u"['a']"_s, u"10n"_s}) {
        setToken(literal);
        capture();
    }
    setToken(u"''"_s);
    capture();
    EXPECT_EQ(session.token(), u"kept"_s);
    EXPECT_EQ(announced.size(), 1);
}

TEST_F(SunoTabTest, onAForeignHostNothingIsAsked)
{
    openHome();
    session.setToken(u"kept"_s);
    setToken(u"''"_s);
    capture();
    ASSERT_TRUE(test::load(tab->page(), server.url(u"/"_s, u"accounts.localhost"_s)));
    for (int times = 0; times < 3; ++times)
        tab->captureToken();
    EXPECT_EQ(asked(), 0);
    EXPECT_EQ(session.token(), u"kept"_s);
    // The counter stood still too: one more empty answer on the site is the second in a row.
    ASSERT_TRUE(test::load(tab->page(), endpoints.sunoHome));
    setToken(u"''"_s);
    capture();
    EXPECT_EQ(session.token(), u""_s);
}

TEST_F(SunoTabTest, belowTheSiteIsTheSite)
{
    openHome();
    ASSERT_TRUE(test::load(tab->page(), server.url(u"/"_s, u"www.suno.localhost"_s)));
    capture();
    EXPECT_EQ(session.token(), u"first"_s);
}

TEST_F(SunoTabTest, twoCapturesNeverOverlap)
{
    openHome();
    setToken(u"new Promise(done => { window.answer = done; })"_s);
    tab->captureToken();
    ASSERT_TRUE(eventually([&] { return asked() == 1; }));
    for (int times = 0; times < 5; ++times)
        tab->captureToken();
    EXPECT_EQ(asked(), 1);
    call(tab->page(), u"window.answer('late');"_s);
    ASSERT_TRUE(eventually([&] { return session.token() == u"late"; }));
    setToken(u"'next'"_s);
    capture();
    EXPECT_EQ(session.token(), u"next"_s);
}

TEST_F(SunoTabTest, aPageThatNeverAnswersDoesNotEndTheCaptures)
{
    openHome({.captureInterval = 1h, .settling = 1h, .captureTimeout = 50ms});
    setToken(u"new Promise(() => {})"_s);
    capture();
    setToken(u"'again'"_s);
    capture();
    EXPECT_EQ(session.token(), u"again"_s);
}

TEST_F(SunoTabTest, theFirstLoadIsReportedOnceWhenItFinishes)
{
    int reported = 0;
    open().onFirstLoad = [&] { ++reported; };
    ASSERT_TRUE(eventually([&] { return reported == 1; }));
    EXPECT_FALSE(tab->onFirstLoad);
    ASSERT_TRUE(test::load(tab->page(), endpoints.sunoHome));
    EXPECT_EQ(reported, 1);
}

TEST_F(SunoTabTest, theFirstLoadIsReportedOnceWhenItFails)
{
    endpoints.sunoHome = QUrl(u"http://suno.localhost:1/"_s);
    int reported = 0;
    open().onFirstLoad = [&] { ++reported; };
    ASSERT_TRUE(eventually([&] { return reported == 1; }));
    tab->onFirstLoad = [&] { ++reported; };
    ASSERT_TRUE(test::load(tab->page(), server.url(u"/"_s, u"suno.localhost"_s)));
    EXPECT_EQ(reported, 1);
}

TEST_F(SunoTabTest, aHomePageThatTakesTooLongHasFailedAndIsNotTriedAgain)
{
    endpoints.sunoHome = server.url(u"/silent"_s, u"suno.localhost"_s);
    int reported = 0;
    open({.captureInterval = 1h, .settling = 1h, .homeTimeout = 100ms}).onFirstLoad = [&] { ++reported; };
    ASSERT_TRUE(eventually([&] { return reported == 1; }));
    EXPECT_EQ(session.openSunoURL, std::nullopt);
    EXPECT_TRUE(eventually([&] { return !tab->page().enginePage().isLoading(); }));
    EXPECT_EQ(server.requests().size(), 1);
}

TEST_F(SunoTabTest, startsWithTheUsualZoomOrTheStoredOne)
{
    EXPECT_EQ(open().zoom(), 0.8);
    preferences.set(SunoTab::zoomKey, 1.1);
    EXPECT_EQ(open().zoom(), 1.1);
    preferences.set(SunoTab::zoomKey, u"1.1"_s);
    EXPECT_EQ(open().zoom(), 0.8);
    EXPECT_EQ(SunoTab::zoomKey, u"sunoZoom"_s);
}

TEST_F(SunoTabTest, aNudgeIsShownAndStored)
{
    preferences.set(SunoTab::zoomKey, 0.77);
    SunoTab& pane = openHome();
    pane.nudgeZoom(1);
    EXPECT_EQ(pane.zoom(), 0.8);
    EXPECT_EQ(preferences.number(SunoTab::zoomKey), 0.8);
    EXPECT_TRUE(eventually([&] { return std::abs(pane.page().enginePage().zoomFactor() - 0.8) < 1e-6; }));
    pane.setZoom(1.25);
    pane.nudgeZoom(1);
    EXPECT_EQ(preferences.number(SunoTab::zoomKey), 1.25);
    pane.nudgeZoom(-100);
    EXPECT_EQ(preferences.number(SunoTab::zoomKey), 0.6);
}

TEST_F(SunoTabTest, aZoomThatIsSetIsStored)
{
    SunoTab& pane = open();
    pane.setZoom(1.0);
    EXPECT_EQ(pane.zoom(), 1.0);
    EXPECT_EQ(preferences.number(SunoTab::zoomKey), 1.0);
    preferences.set(SunoTab::zoomKey, 0.9);
    pane.applyStoredZoom();
    EXPECT_EQ(pane.zoom(), 0.9);
}

TEST_F(SunoTabTest, signingOutForgetsTheSiteAndGoesHome)
{
    server.serve("/", test::Page{.body = pageWithToken("'first'"), .headers = "Set-Cookie: session=one; HttpOnly\r\n"});
    openHome();
    capture();
    ASSERT_TRUE(test::load(tab->page(), server.url(u"/song"_s, u"suno.localhost"_s)));
    call(tab->page(), u"localStorage.setItem('key', 'kept');"_s);
    const qsizetype before = server.requests().size();
    QSignalSpy finished(&tab->page(), &WebPage::finished);
    tab->signOut();
    EXPECT_EQ(session.token(), u""_s);
    ASSERT_TRUE(eventually([&] {
        return session.openSunoURL == endpoints.sunoHome && !finished.isEmpty() &&
               !tab->page().enginePage().isLoading();
    }));
    ASSERT_EQ(server.requests().size(), before + 1);
    EXPECT_FALSE(server.requests().last().contains("Cookie:"));
    EXPECT_EQ(call(tab->page(), u"return localStorage.getItem('key');"_s).value, QJsonValue(QJsonValue::Null));
}

TEST_F(SunoTabTest, signingOutIsAskedAboutAndDoneAtTheFirstButton)
{
    openHome();
    capture();
    test::RecordingDialogs dialogs;
    tab->askToSignOut(dialogs);
    ASSERT_EQ(dialogs.questions.size(), 1);
    const Question& question = dialogs.questions.first();
    EXPECT_EQ(question.text, u"Sign out of Suno?"_s);
    EXPECT_EQ(question.informativeText,
              u"This clears the captured token and Suno's cookies, so the left-hand pane returns to the sign-in page. "
              "Downloaded files are not touched."_s);
    EXPECT_EQ(question.firstButton, u"Sign Out"_s);
    EXPECT_EQ(question.secondButton, u"Cancel"_s);
    EXPECT_EQ(session.token(), u"first"_s) << "not at the second button";
    dialogs.answer = true;
    tab->askToSignOut(dialogs);
    EXPECT_EQ(session.token(), u""_s);
}

TEST_F(SunoTabTest, aTokenThatArrivesWhileSigningOutComesTooLate)
{
    openHome();
    setToken(u"'stale'"_s);
    QSignalSpy ended(tab.get(), &SunoTab::captureEnded);
    QSignalSpy finished(&tab->page(), &WebPage::finished);
    tab->captureToken();
    tab->signOut();
    ASSERT_TRUE(eventually([&] { return ended.size() == 1 && finished.size() == 2; }));
    EXPECT_EQ(session.token(), u""_s);
    // And captures go on afterwards.
    capture();
    EXPECT_EQ(session.token(), u"first"_s);
}

TEST_F(SunoTabTest, aTabMayGoInTheMiddleOfACapture)
{
    openHome();
    setToken(u"new Promise(() => {})"_s);
    tab->captureToken();
    ASSERT_TRUE(eventually([&] { return asked() == 1; }));
    tab.reset();
    EXPECT_EQ(session.token(), u""_s);
}

TEST_F(SunoTabTest, aTabThatGoesInTheMiddleOfASignOutFinishesIt)
{
    server.serve("/", test::Page{.body = "home", .headers = "Set-Cookie: session=one\r\n"});
    openHome();
    tab->signOut();
    tab.reset();
    WebPage page(profile);
    server.serve("/after", "after");
    ASSERT_TRUE(test::load(page, server.url(u"/after"_s, u"suno.localhost"_s)));
    EXPECT_EQ(server.cookiesSentTo("/after"), "");
}

TEST_F(SunoTabTest, f6AsksToLeave)
{
    QSignalSpy left(&open(), &SunoTab::leaveRequested);
    Q_EMIT tab->findChild<WebPane*>()->leaveRequested();
    EXPECT_EQ(left.size(), 1);
}

TEST(SunoTabAtTheSite, aPersonSignsInInAnotherWindowAndOut)
{
    demo::StandInService service({.tracks = 3});
    const Endpoints endpoints = service.endpoints();
    const test::TestFolder folder;
    Preferences preferences(folder.path(u"preferences.json"_s));
    Session session(preferences);
    WebProfile profile{QString()};
    SunoTab tab(profile, session, preferences, endpoints, nullptr, {.captureInterval = 50ms, .settling = 20ms});
    tab.resize(920, 700);
    tab.show();
    const auto popUp = [&] { return tab.findChild<WebPopup*>(); };
    ASSERT_TRUE(eventually([&] {
        if (!popUp())
            clickOn(&tab, tab.page(), u"popup-sign-in"_s);
        return popUp() != nullptr;
    }));
    ASSERT_TRUE(eventually([&] {
        if (popUp())
            clickOn(popUp(), popUp()->page(), u"popup-go"_s);
        return !popUp() && !session.token().isEmpty();
    }));
    EXPECT_EQ(session.token(), service.currentToken());

    tab.signOut();
    EXPECT_EQ(session.token(), u""_s);
    EXPECT_TRUE(eventually(
        [&] { return call(tab.page(), u"return document.getElementById('sign-in') !== null;"_s).value.toBool(); }));
    EXPECT_EQ(session.token(), u""_s);
}

} // namespace orvane
