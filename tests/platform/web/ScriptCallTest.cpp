#include "platform/web/WebPage.h"
#include "platform/web/WebProfile.h"
#include "tests/platform/web/PageServer.h"

#include <QJsonArray>
#include <QWebEnginePage>
#include <qcoro/qcorotask.h>

#include <csignal>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace orvane {
namespace {

using Kind = ScriptOutcome::Kind;
using test::call;

class ScriptCall : public testing::Test
{
protected:
    ScriptCall()
    {
        server.serve("/plain", "<title>plain</title>");
        server.serve("/other", "<title>other</title>");
    }

    /// Calls in a page of `html`.
    ScriptOutcome callIn(const QByteArray& html, const QString& body)
    {
        server.serve("/hostile", html);
        EXPECT_TRUE(test::load(page, server.url(u"/hostile"_s)));
        return call(page, body);
    }

    ScriptOutcome callInPlain(const QString& body, const QJsonObject& arguments = {})
    {
        EXPECT_TRUE(test::load(page, server.url(u"/plain"_s)));
        return call(page, body, arguments);
    }

    /// What a call comes to that was out when `happening` happened.
    ScriptOutcome callDuring(const std::function<void()>& happening)
    {
        std::optional<ScriptOutcome> outcome;
        const auto follow = [](WebPage& where, std::optional<ScriptOutcome>& result) -> QCoro::Task<> {
            const QString body = u"window.begun = true; await new Promise(() => {});"_s;
            result = co_await where.callAsync(body, QJsonObject(), 1min);
        };
        const QCoro::Task<> task = follow(page, outcome);
        EXPECT_TRUE(call(page, u"return window.begun;"_s).value.toBool());
        happening();
        EXPECT_TRUE(test::eventually([&] { return outcome.has_value(); }));
        return outcome.value_or(ScriptOutcome{.kind = Kind::timedOut});
    }

    test::PageServer server;
    WebProfile profile{QString()};
    WebPage page{profile};
};

} // namespace

TEST_F(ScriptCall, givesWhatTheScriptReturns)
{
    EXPECT_EQ(callInPlain(u"return document.title;"_s).text(), u"plain"_s);
    EXPECT_EQ(call(page, u"return 5;"_s).value, QJsonValue(5));
    EXPECT_EQ(call(page, u"return '5';"_s).text(), u"5"_s);
    EXPECT_EQ(call(page, u"return '';"_s).text(), u""_s);
    EXPECT_EQ(call(page, u"return null;"_s).value, QJsonValue(QJsonValue::Null));
    EXPECT_EQ(call(page, u"return true;"_s).value, QJsonValue(true));
    EXPECT_EQ(call(page, u"return [1, 'b', {c: null}];"_s).value,
              QJsonValue(QJsonArray{1, u"b"_s, QJsonObject{{u"c"_s, QJsonValue::Null}}}));
    const ScriptOutcome nothing = call(page, u"// only a remark"_s);
    EXPECT_TRUE(nothing.isValue());
    EXPECT_TRUE(nothing.value.isUndefined());
}

TEST_F(ScriptCall, waitsForAPromise)
{
    const ScriptOutcome outcome =
        callInPlain(u"const first = await new Promise(done => setTimeout(() => done('late'), 20));"
                    "return new Promise(done => setTimeout(() => done(first + 'r'), 20));"_s);
    EXPECT_EQ(outcome.text(), u"later"_s);
}

TEST_F(ScriptCall, aThrowFailsWithItsMessage)
{
    const ScriptOutcome outcome = callInPlain(u"throw new Error('no luck');"_s);
    EXPECT_EQ(outcome.kind, Kind::failed);
    EXPECT_EQ(outcome.message, u"no luck"_s);
    EXPECT_EQ(call(page, u"throw 'a text';"_s).message, u"a text"_s);
    EXPECT_EQ(call(page, u"return Promise.reject(new Error('refused'));"_s).message, u"refused"_s);
    EXPECT_EQ(call(page, u"throw { get message() { throw 1; } };"_s).kind, Kind::failed);
    EXPECT_EQ(call(page, u"throw undefined;"_s).kind, Kind::failed);
    EXPECT_EQ(call(page, u"return 10n;"_s).kind, Kind::failed);
    EXPECT_EQ(call(page, u"this is no script"_s).kind, Kind::failed);
}

TEST_F(ScriptCall, passesArgumentsAsTheyAre)
{
    const QString title = u"\"quotes\" 'and' \\ `${1}` </script>\u2028\n%1 é 🎵"_s;
    const ScriptOutcome outcome =
        callInPlain(u"return [title, count, list.length, map.a];"_s, {{u"title"_s, title},
                                                                      {u"count"_s, 3},
                                                                      {u"list"_s, QJsonArray{1, 2}},
                                                                      {u"map"_s, QJsonObject{{u"a"_s, false}}}});
    EXPECT_EQ(outcome.value, QJsonValue(QJsonArray{title, 3, 2, false}));
}

TEST_F(ScriptCall, carriesTheBytesOfATrack)
{
    const QString bytes(12'000'000, u'A');
    EXPECT_EQ(callInPlain(u"return bytes.length;"_s, {{u"bytes"_s, bytes}}).value, QJsonValue(12'000'000));
}

TEST_F(ScriptCall, runsAmongThePagesOwnScripts)
{
    EXPECT_EQ(callIn("<script>let answer = 'mine'; var value = 1, call = 2, error = 3, record = 4;</script>",
                     u"return answer + value + call + error + record + (this === window);"_s)
                  .text(),
              u"mine1234true"_s);
}

TEST_F(ScriptCall, callsAtTheSameTimeGetTheirOwnAnswers)
{
    ASSERT_TRUE(test::load(page, server.url(u"/plain"_s)));
    const auto both = [](WebPage& where) -> QCoro::Task<QString> {
        QCoro::Task<ScriptOutcome> slow =
            where.callAsync(u"await new Promise(done => setTimeout(done, 50)); return 'slow';"_s, {}, 1min);
        QCoro::Task<ScriptOutcome> quick = where.callAsync(u"return 'quick';"_s, {}, 1min);
        const ScriptOutcome second = co_await quick;
        const ScriptOutcome first = co_await slow;
        co_return first.value.toString() + second.value.toString();
    };
    EXPECT_EQ(QCoro::waitFor(both(page)), u"slowquick"_s);
}

TEST_F(ScriptCall, leavesNothingBehindInThePage)
{
    ASSERT_TRUE(callInPlain(u"window.names = Object.getOwnPropertyNames(window).length;"_s).isValue());
    call(page, u"return 1;"_s);
    call(page, u"throw 1;"_s);
    call(page, u"await new Promise(() => {});"_s, {}, 50ms);
    // The call that counts is there while it counts; `names` itself came with the first, which was there as well.
    EXPECT_EQ(call(page, u"return Object.getOwnPropertyNames(window).length - window.names;"_s).value, QJsonValue(1));
}

TEST_F(ScriptCall, aPageThatNeverAnswersIsGivenUp)
{
    ASSERT_TRUE(test::load(page, server.url(u"/plain"_s)));
    EXPECT_EQ(call(page, u"await new Promise(() => {});"_s, {}, 50ms).kind, Kind::timedOut);
    EXPECT_EQ(call(page, u"return 1;"_s).value, QJsonValue(1));
}

TEST_F(ScriptCall, aPageThatHangsIsGivenUp)
{
    ASSERT_TRUE(test::load(page, server.url(u"/plain"_s, u"hang.localhost"_s)));
    EXPECT_EQ(call(page, u"for (;;) {}"_s, {}, 200ms).kind, Kind::timedOut);
    EXPECT_EQ(call(page, u"return 1;"_s, {}, 200ms).kind, Kind::timedOut);
    ::kill(pid_t(page.enginePage().renderProcessPid()), SIGKILL);
}

TEST_F(ScriptCall, aPageThatLeavesAnswersForTheCall)
{
    ASSERT_TRUE(test::load(page, server.url(u"/plain"_s)));
    EXPECT_EQ(callDuring([this] { page.load(server.url(u"/other"_s)); }).kind, Kind::pageWentAway);
    EXPECT_EQ(callDuring([this] { page.load(server.url(u"/other"_s, u"localhost"_s)); }).kind, Kind::pageWentAway);
    EXPECT_EQ(callDuring([this] { page.reload(); }).kind, Kind::pageWentAway);
}

TEST_F(ScriptCall, anAddressThatChangesInPlaceKeepsTheCall)
{
    const ScriptOutcome outcome =
        callInPlain(u"history.pushState({}, '', '/elsewhere'); await new Promise(done => setTimeout(done, 50));"
                    "return location.pathname;"_s);
    EXPECT_EQ(outcome.text(), u"/elsewhere"_s);
}

TEST_F(ScriptCall, aProcessThatDiesAnswersForTheCall)
{
    ASSERT_TRUE(test::load(page, server.url(u"/plain"_s, u"dying.localhost"_s)));
    const pid_t process = pid_t(page.enginePage().renderProcessPid());
    EXPECT_EQ(callDuring([process] { ::kill(process, SIGKILL); }).kind, Kind::pageWentAway);
    EXPECT_EQ(call(page, u"return 1;"_s).kind, Kind::pageWentAway);
    ASSERT_TRUE(test::load(page, server.url(u"/plain"_s)));
    EXPECT_EQ(call(page, u"return 1;"_s).value, QJsonValue(1));
}

TEST_F(ScriptCall, aPageThatIsDeletedAnswersForTheCall)
{
    auto doomed = std::make_unique<WebPage>(profile);
    ASSERT_TRUE(test::load(*doomed, server.url(u"/plain"_s)));
    QCoro::Task<ScriptOutcome> task = doomed->callAsync(u"await new Promise(() => {});"_s, {}, 1min);
    doomed.reset();
    EXPECT_EQ(QCoro::waitFor(std::move(task)).kind, Kind::pageWentAway);
}

TEST_F(ScriptCall, nothingRunsInADocumentThatIsNotOfTheAddress)
{
    // The address is the site's, the document is the engine's own page about a load that failed.
    server.serve("/cut", test::Page{.body = {}, .silent = true});
    EXPECT_FALSE(test::load(page, QUrl(u"http://127.0.0.1:1/"_s)));
    ASSERT_EQ(page.url().host(), u"127.0.0.1"_s);
    EXPECT_EQ(call(page, u"return 'ran';"_s).kind, Kind::pageWentAway);
}

TEST_F(ScriptCall, aPageBeforeItsFirstDocumentAnswers)
{
    EXPECT_NE(call(page, u"return 1;"_s).kind, Kind::timedOut);
}

TEST_F(ScriptCall, aPageThatRedefinesTheLanguageCannotHarmAText)
{
    const QByteArray hostile = "<script>JSON.stringify = () => { throw 1; }; JSON.parse = null; window.Promise = null;"
                               "String.prototype.toString = () => 'x'; Object.defineProperty = null;"
                               "Object.prototype.answer = 'tforged'; Array.prototype[Symbol.iterator] = null;"
                               "Object.defineProperty(String.prototype, 'length', {get: () => 0});"
                               "</script>";
    EXPECT_EQ(callIn(hostile, u"return text;"_s.replace(u"text"_s, u"'mine'"_s)).text(), u"mine"_s);
    EXPECT_EQ(call(page, u"return [1];"_s).kind, Kind::failed);
}

TEST_F(ScriptCall, aPageThatForgesJsonGivesOutsideDataAndNoMore)
{
    EXPECT_EQ(callIn("<script>JSON.stringify = () => '{broken'</script>", u"return [1];"_s).kind, Kind::failed);
    EXPECT_EQ(callIn("<script>JSON.stringify = () => '1],[2'</script>", u"return [1];"_s).kind, Kind::failed);
    EXPECT_TRUE(callIn("<script>JSON.stringify = () => 7</script>", u"return [1];"_s).value.isUndefined());
}

TEST_F(ScriptCall, aPageThatMeddlesWithItsRecordSpoilsOnlyThat)
{
    // Messages and not a timer: the timers of a page that nobody sees are held back.
    const auto meddling = [](const QByteArray& deed) {
        return "<script>const { port1, port2 } = new MessageChannel(); port1.onmessage = () => {"
               " for (const name of Object.getOwnPropertyNames(window)) if (/^call[0-9a-f]{32}$/.test(name)) { " +
               deed + " } port2.postMessage(0); }; port2.postMessage(0);</script>";
    };
    const QString waiting = u"await new Promise(done => setTimeout(done, 60000));"_s;
    EXPECT_EQ(callIn(meddling("window[name].answer = 'tfirst'; window[name].answer = 'tsecond';"), waiting).text(),
              u"second"_s);
    EXPECT_EQ(callIn(meddling("window[name] = null;"), waiting).kind, Kind::failed);
    EXPECT_EQ(callIn(meddling("window[name] = {get answer() { throw 1; }};"), waiting).kind, Kind::failed);
    EXPECT_EQ(callIn(meddling("window[name] = {answer: {toString() { return 'tx'; }}};"), waiting).kind, Kind::failed);
    EXPECT_EQ(callIn(meddling("window[name] = {answer: 't' + 'x'.repeat(1e8)};"), waiting).kind, Kind::failed);
    EXPECT_EQ(callIn(meddling("delete window[name];"), waiting).kind, Kind::pageWentAway);
    EXPECT_EQ(callInPlain(u"return 1;"_s).value, QJsonValue(1));
}

TEST_F(ScriptCall, anAnswerOfAHundredMegabytesStaysInThePage)
{
    EXPECT_EQ(callInPlain(u"return 'x'.repeat(100e6);"_s).kind, Kind::failed);
    EXPECT_EQ(call(page, u"return ['x'.repeat(100e6)];"_s).kind, Kind::failed);
    EXPECT_EQ(call(page, u"return 'x'.repeat(4e6);"_s).value.toString().size(), 4'000'000);
}

} // namespace orvane
