#include "platform/web/ScriptCall.h"

#include "platform/web/ScriptSource.h"

#include <QPointer>
#include <QWebEnginePage>
#include <QWebEngineScript>

#include <algorithm>

namespace orvane {
namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds firstInterval = 5ms;
constexpr std::chrono::milliseconds longestInterval = 100ms;
/// A document that is swapped out while it is asked never answers; the next one is asked after this long.
constexpr std::chrono::milliseconds patience = 1s;

} // namespace

ScriptCall::ScriptCall(QWebEnginePage& page, std::chrono::milliseconds timeLimit, QObject* parent)
    : QObject(parent)
    , page_(page)
    , name_(ScriptSource::freshName())
    , interval_(firstInterval)
{
    limit_.setSingleShot(true);
    limit_.setInterval(timeLimit);
    nextPoll_.setSingleShot(true);
    connect(&limit_, &QTimer::timeout, this, &ScriptCall::runOutOfTime);
    connect(&nextPoll_, &QTimer::timeout, this, &ScriptCall::poll);
    connect(&page, &QWebEnginePage::renderProcessTerminated, this, [this] { settle({}); });
    // The document that was asked may be gone; the one that came says so at once.
    connect(&page, &QWebEnginePage::loadFinished, this, &ScriptCall::poll);
}

ScriptCall::~ScriptCall()
{
    settle({});
}

QFuture<ScriptOutcome> ScriptCall::start(const QString& body, const QJsonObject& arguments)
{
    promise_.start();
    limit_.start();
    nextPoll_.start(patience);
    const QString source = ScriptSource::start(name_, page_.url(), body, arguments);
    const auto answered = [call = QPointer(this)](const QVariant& answer) {
        if (call)
            call->takeStart(answer);
    };
    page_.runJavaScript(source, QWebEngineScript::MainWorld, answered);
    return promise_.future();
}

void ScriptCall::takeStart(const QVariant& answer)
{
    if (settled_)
        return;
    if (answer.metaType().id() != QMetaType::Bool)
        settle({.kind = ScriptOutcome::Kind::failed, .message = QStringLiteral("The script could not be run.")});
    else if (!answer.toBool())
        settle({});
    else
        poll();
}

void ScriptCall::poll()
{
    if (settled_)
        return;
    nextPoll_.start(patience);
    const auto answered = [call = QPointer(this)](const QVariant& answer) {
        if (call)
            call->take(answer);
    };
    page_.runJavaScript(ScriptSource::poll(name_), QWebEngineScript::MainWorld, answered);
}

void ScriptCall::take(const QVariant& answer)
{
    if (settled_)
        return;
    if (const std::optional<ScriptOutcome> outcome = ScriptSource::read(answer)) {
        settle(*outcome);
        return;
    }
    nextPoll_.start(interval_);
    interval_ = std::min(interval_ * 2, longestInterval);
}

void ScriptCall::runOutOfTime()
{
    // The record goes, so that a late answer stays behind in the page.
    page_.runJavaScript(QStringLiteral("delete window.") + name_, QWebEngineScript::MainWorld);
    settle({.kind = ScriptOutcome::Kind::timedOut});
}

void ScriptCall::settle(const ScriptOutcome& outcome)
{
    if (settled_)
        return;
    settled_ = true;
    limit_.stop();
    nextPoll_.stop();
    promise_.addResult(outcome);
    promise_.finish();
    deleteLater();
}

} // namespace orvane
