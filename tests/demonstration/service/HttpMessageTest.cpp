#include "demonstration/service/HttpMessage.h"

#include <gtest/gtest.h>

namespace orvane::demo {
namespace {

std::optional<Request> take(QByteArray bytes)
{
    bool isBad = false;
    return takeRequest(bytes, isBad);
}

TEST(HttpMessage, aRequestIsTakenOffTheFront)
{
    QByteArray buffer = "POST /a?b=c HTTP/1.1\r\nHost: h\r\ncontent-length: 4\r\n\r\nbodyGET ";
    bool isBad = false;
    const std::optional<Request> request = takeRequest(buffer, isBad);
    ASSERT_TRUE(request);
    EXPECT_EQ(request->method, "POST");
    EXPECT_EQ(request->target, "/a?b=c");
    EXPECT_EQ(request->body, "body");
    EXPECT_EQ(request->header("HOST"), "h");
    EXPECT_EQ(request->header("none"), "");
    EXPECT_EQ(buffer, "GET ");
}

TEST(HttpMessage, anIncompleteRequestWaits)
{
    const QByteArray whole = "POST / HTTP/1.1\r\nContent-Length: 4\r\n\r\nbody";
    for (qsizetype size = 0; size < whole.size(); ++size) {
        QByteArray buffer = whole.first(size);
        bool isBad = false;
        EXPECT_FALSE(takeRequest(buffer, isBad));
        EXPECT_FALSE(isBad);
        EXPECT_EQ(buffer.size(), size);
    }
    EXPECT_TRUE(take(whole));
}

TEST(HttpMessage, rubbishIsBad)
{
    for (const QByteArray& rubbish :
         {QByteArray("\r\n\r\n"), QByteArray("GET\r\n\r\n"), QByteArray("GET x HTTP/1.1\r\n\r\n"),
          QByteArray("GET / FTP/1.1\r\n\r\n"), QByteArray("GET / HTTP/1.1\r\nContent-Length: 2000000\r\n\r\n"),
          QByteArray("GET / HTTP/1.1\r\nContent-Length: -3\r\n\r\n"), QByteArray(largestRequest + 1, 'a')}) {
        QByteArray buffer = rubbish;
        bool isBad = false;
        EXPECT_FALSE(takeRequest(buffer, isBad));
        EXPECT_TRUE(isBad) << rubbish.first(4).constData();
    }
}

TEST(HttpMessage, readsPathQueryAndCookies)
{
    const std::optional<Request> request =
        take("GET /a%20b?page=2&project_id=x%26y HTTP/1.1\r\nCookie: a=b; __client=v=w ;x\r\n\r\n");
    ASSERT_TRUE(request);
    EXPECT_EQ(request->path(), QStringLiteral("/a b"));
    EXPECT_EQ(request->query(QStringLiteral("page")), QStringLiteral("2"));
    EXPECT_EQ(request->query(QStringLiteral("project_id")), QStringLiteral("x&y"));
    EXPECT_EQ(request->query(QStringLiteral("none")), QString());
    EXPECT_EQ(request->cookie("a"), "b");
    EXPECT_EQ(request->cookie("__client"), "v=w");
    EXPECT_EQ(request->cookie("x"), "");
}

} // namespace
} // namespace orvane::demo
