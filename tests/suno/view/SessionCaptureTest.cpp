#include "suno/view/SessionCapture.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace orvane {
namespace {

class SessionCaptureTest : public testing::Test
{
protected:
    /// Gives the capture an answer and does with the token what it says.
    void answer(const std::optional<QString>& text)
    {
        if (const std::optional<QString> changed = capture.take(text, token)) {
            token = *changed;
            ++announced;
        }
    }

    SessionCapture capture;
    QString token = u"old"_s;
    int announced = 0;
};

} // namespace

TEST_F(SessionCaptureTest, asksInTheseWords)
{
    EXPECT_EQ(SessionCapture::script,
              u"try { return await window.Clerk.session.getToken(); } catch (e) { return ''; }"_s);
}

TEST_F(SessionCaptureTest, asksOnTheSiteAndBelowItOnly)
{
    const auto asked = [](const QString& url) { return SessionCapture::mayAsk(QUrl(url), u"site.example"_s); };
    EXPECT_TRUE(asked(u"https://site.example/"_s));
    EXPECT_TRUE(asked(u"https://www.Site.example/create"_s));
    EXPECT_FALSE(asked(u"https://evilsite.example/"_s));
    EXPECT_FALSE(asked(u"https://site.example.evil.example/"_s));
    EXPECT_FALSE(asked(u"https://accounts.other.example/?next=https://site.example/"_s));
    EXPECT_FALSE(asked(u"about:blank"_s));
    EXPECT_FALSE(asked(u""_s));
}

TEST_F(SessionCaptureTest, aNewTokenIsStoredAndAnnounced)
{
    answer(u"new"_s);
    EXPECT_EQ(token, u"new"_s);
    EXPECT_EQ(announced, 1);
}

TEST_F(SessionCaptureTest, theSameTokenIsNotAnnouncedAgain)
{
    answer(u"old"_s);
    EXPECT_EQ(announced, 0);
}

TEST_F(SessionCaptureTest, oneEmptyAnswerAndThenATokenChangeNothing)
{
    answer(u""_s);
    EXPECT_EQ(capture.emptyCaptures(), 1);
    answer(u"old"_s);
    EXPECT_EQ(capture.emptyCaptures(), 0);
    EXPECT_EQ(token, u"old"_s);
    EXPECT_EQ(announced, 0);
}

TEST_F(SessionCaptureTest, twoEmptyAnswersInARowEmptyTheTokenOnce)
{
    answer(u""_s);
    EXPECT_EQ(token, u"old"_s);
    answer(u""_s);
    EXPECT_EQ(token, u""_s);
    EXPECT_EQ(announced, 1);
    answer(u""_s);
    EXPECT_EQ(announced, 1);
    EXPECT_EQ(capture.emptyCaptures(), 3);
}

TEST_F(SessionCaptureTest, emptyAnswersWithATokenBetweenThemAreNotInARow)
{
    answer(u""_s);
    answer(u"old"_s);
    answer(u""_s);
    EXPECT_EQ(token, u"old"_s);
}

TEST_F(SessionCaptureTest, aFailedCallLeavesTheCounterToo)
{
    answer(u""_s);
    answer(std::nullopt);
    EXPECT_EQ(capture.emptyCaptures(), 1);
    EXPECT_EQ(token, u"old"_s);
    answer(u""_s);
    EXPECT_EQ(token, u""_s);
}

TEST_F(SessionCaptureTest, aTokenThatComesBackIsAnnouncedAgain)
{
    answer(u""_s);
    answer(u""_s);
    answer(u"old"_s);
    EXPECT_EQ(token, u"old"_s);
    EXPECT_EQ(announced, 2);
}

} // namespace orvane
