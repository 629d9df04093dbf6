#include "tests/demonstration/service/StandInFixture.h"

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class Site : public StandIn
{
protected:
    /// The cookie line of a visitor who has signed in.
    QByteArray signedInCookies() const
    {
        QByteArray line;
        for (const QByteArray& cookie : ask(port, "/sign-in", {{"Content-Length", "0"}}, "POST").values("Set-Cookie"))
            line += (line.isEmpty() ? "" : "; ") + cookie.split(';').first();
        return line;
    }
};

TEST_F(Site, invitesToSignInAndThenShowsTheLibrary)
{
    const RawAnswer before = ask(port, "/");
    EXPECT_TRUE(before.body.contains("id=\"sign-in\"") && before.body.contains("id=\"popup-sign-in\""));
    EXPECT_TRUE(before.body.contains("Suno (stand-in)"));
    EXPECT_FALSE(before.body.contains("class=\"card\""));
    const RawAnswer after = ask(port, "/", {{"Cookie", signedInCookies()}});
    EXPECT_TRUE(after.body.contains("id=\"sign-out\""));
    EXPECT_EQ(after.body.count("class=\"card\""), 16);
    EXPECT_TRUE(after.body.contains("href=\"/project/" + service.projectId(0).toLatin1()));
}

TEST_F(Site, givesATokenToWhomIsSignedInAndNothingToOthers)
{
    EXPECT_EQ(ask(port, "/token").body, "");
    EXPECT_EQ(ask(port, "/token", {{"Cookie", "__client=forged.forged"}}).body, "");
    const RawAnswer token = ask(port, "/token", {{"Cookie", signedInCookies()}});
    EXPECT_EQ(token.status(), 200);
    EXPECT_EQ(token.body, service.currentToken().toLatin1());
    EXPECT_TRUE(token.values("Set-Cookie").value(0).startsWith("__session=" + token.body));
}

TEST_F(Site, aCookieLineOfTheSiteOpensTheApi)
{
    EXPECT_EQ(ask(port, "/api/feed/v2?page=1", {{"Cookie", signedInCookies()}}).status(), 200);
}

TEST_F(Site, aSignInOutlivesTheService)
{
    const demo::StandInService next(shortLibrary());
    const auto nextPort = static_cast<quint16>(next.endpoints().sunoHome.port());
    EXPECT_TRUE(ask(nextPort, "/", {{"Cookie", signedInCookies()}}).body.contains("id=\"sign-out\""));
}

TEST_F(Site, signingOutTakesTheCookiesAway)
{
    const QList<QByteArray> cookies = ask(port, "/sign-out", {{"Content-Length", "0"}}, "POST").values("Set-Cookie");
    ASSERT_EQ(cookies.size(), 2);
    EXPECT_TRUE(cookies[0].startsWith("__client=;") && cookies[0].contains("Max-Age=0"));
    EXPECT_TRUE(cookies[1].startsWith("__session=;") && cookies[1].contains("Max-Age=0"));
}

TEST_F(Site, titlesCannotBecomeMarkup)
{
    const RawAnswer home = ask(port, "/", {{"Cookie", signedInCookies()}});
    EXPECT_FALSE(home.body.contains("<b>bold</b>"));
    EXPECT_TRUE(home.body.contains("&lt;b&gt;bold&lt;/b&gt;"));
    EXPECT_FALSE(home.body.contains('\x01'));
}

TEST_F(Site, aProjectsPageShowsItsTracks)
{
    const RawAnswer project = ask(port, "/project/" + service.projectId(1).toLatin1(), {{"Cookie", signedInCookies()}});
    EXPECT_EQ(project.body.count("class=\"card\""), 8);
    EXPECT_TRUE(project.body.contains("8 tracks"));
}

TEST_F(Site, moreCardsFollowOnRequestUntilTheEnd)
{
    demo::LibraryOptions options = shortLibrary();
    options.tracks = 30;
    service.setLibrary(options);
    const RawHeaders cookies{{"Cookie", signedInCookies()}};
    const RawAnswer home = ask(port, "/", cookies);
    EXPECT_EQ(home.body.count("class=\"card\""), 24);
    EXPECT_TRUE(home.body.contains(R"(data-next="/cards?page=2&amp;project_id=")"));
    const RawAnswer more = ask(port, "/cards?page=2&project_id=", cookies);
    EXPECT_EQ(more.body.count("class=\"card\""), 6);
    EXPECT_EQ(more.values("X-Next"), QList<QByteArray>{""});
}

TEST_F(Site, itsFilesAreServedAndNoOthers)
{
    EXPECT_EQ(ask(port, "/style.css").values("Content-Type"), QList<QByteArray>{"text/css; charset=utf-8"});
    EXPECT_TRUE(ask(port, "/script.js").body.contains("window.Clerk"));
    EXPECT_TRUE(ask(port, "/mark.svg").body.startsWith("<svg"));
    EXPECT_EQ(ask(port, "/../site.qrc").status(), 404);
    EXPECT_EQ(ask(port, "/nothing").status(), 404);
}

TEST_F(Site, theWindowThatSignsInIsAPageOfItsOwn)
{
    EXPECT_TRUE(ask(port, "/popup-sign-in").body.contains("id=\"popup-go\""));
}

} // namespace
} // namespace orvane::test
