#include "platform/web/WebPage.h"

#include "platform/web/EnginePage.h"
#include "platform/web/ScriptCall.h"
#include "platform/web/WebProfile.h"

#include <QWebEngineDownloadRequest>
#include <QWebEngineLoadingInfo>
#include <QWebEngineProfile>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>
#include <qcoro/qcorofuture.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace orvane {
namespace {

constexpr double smallestZoom = 0.25;
constexpr double largestZoom = 5;

} // namespace

WebPage::WebPage(WebProfile& profile, QObject* parent)
    : QObject(parent)
    , profile_(profile)
    , page_(std::make_unique<EnginePage>(profile.engineProfile(), *this))
{
    profile_.add(*this);
    timeout_.setSingleShot(true);
    connect(&timeout_, &QTimer::timeout, this, &WebPage::runOutOfTime);
    connectLoading();
    connect(page_.get(), &QWebEnginePage::windowCloseRequested, this, &WebPage::closeRequested);
    connect(page_.get(), &QWebEnginePage::renderProcessTerminated, this,
            [this](QWebEnginePage::RenderProcessTerminationStatus status) {
                dead_ = true;
                if (status != QWebEnginePage::NormalTerminationStatus)
                    Q_EMIT stoppedWorking();
            });
    connect(&profile_.engineProfile(), &QWebEngineProfile::downloadRequested, this,
            [this](QWebEngineDownloadRequest* download) {
                if (download->page() == page_.get() && downloadHandler)
                    downloadHandler(*download);
            });
}

WebPage::~WebPage()
{
    qDeleteAll(findChildren<ScriptCall*>(Qt::FindDirectChildrenOnly));
    page_->disconnect(this);
    page_.reset();
    profile_.remove(*this);
}

void WebPage::connectLoading()
{
    connect(page_.get(), &QWebEnginePage::loadingChanged, this, &WebPage::takeLoading);
    connect(page_.get(), &QWebEnginePage::urlChanged, this, [this](const QUrl& url) {
        // The engine keeps a zoom with the process that draws, and another origin may get another process.
        applyZoom();
        profile_.noteVisit(url);
        Q_EMIT committed(url);
    });
}

void WebPage::load(const QUrl& url, std::chrono::milliseconds timeout)
{
    loading_ = true;
    beforeStart_ = true;
    overdue_ = false;
    timeout_.start(timeout);
    page_->load(url);
}

void WebPage::show(const QString& html, const QUrl& address)
{
    page_->setHtml(html, address);
}

void WebPage::reload()
{
    page_->triggerAction(QWebEnginePage::Reload);
}

void WebPage::stop()
{
    page_->triggerAction(QWebEnginePage::Stop);
}

QUrl WebPage::url() const
{
    return page_->url();
}

QWebEnginePage& WebPage::enginePage()
{
    return *page_;
}

void WebPage::setZoom(double zoom)
{
    zoom_ = std::clamp(zoom, smallestZoom, largestZoom);
    applyZoom();
}

void WebPage::applyZoom()
{
    page_->setZoomFactor(zoom_);
}

void WebPage::takeLoading(const QWebEngineLoadingInfo& info)
{
    if (info.status() != QWebEngineLoadingInfo::LoadStartedStatus && beforeStart_)
        return;
    switch (info.status()) {
    case QWebEngineLoadingInfo::LoadStartedStatus:
        loading_ = true;
        beforeStart_ = false;
        dead_ = false;
        Q_EMIT started();
        return;
    case QWebEngineLoadingInfo::LoadSucceededStatus:
        return endLoad();
    case QWebEngineLoadingInfo::LoadStoppedStatus:
        return takeStop(info.errorString());
    case QWebEngineLoadingInfo::LoadFailedStatus:
        break;
    }
    // An error status with a document of the site's own counts as loaded: the user reads what the site says.
    if (info.errorDomain() == QWebEngineLoadingInfo::HttpStatusCodeDomain && !info.isErrorPage())
        endLoad();
    else
        fail({.text = info.errorString(), .cancelled = false});
}

void WebPage::endLoad()
{
    if (!std::exchange(loading_, false))
        return;
    timeout_.stop();
    applyZoom();
    Q_EMIT finished();
}

void WebPage::fail(const LoadFailure& failure)
{
    if (!std::exchange(loading_, false))
        return;
    timeout_.stop();
    Q_EMIT failed(failure);
}

void WebPage::runOutOfTime()
{
    overdue_ = true;
    if (page_->isLoading())
        stop();
    else
        takeStop({});
}

void WebPage::takeStop(const QString& reason)
{
    if (std::exchange(overdue_, false))
        fail({.text = u"The page did not answer in time."_s, .cancelled = false});
    else
        fail({.text = reason, .cancelled = true});
}

QCoro::Task<ScriptOutcome> WebPage::callAsync(QString body, QJsonObject arguments, std::chrono::milliseconds timeLimit)
{
    if (dead_)
        co_return ScriptOutcome{};
    auto* call = new ScriptCall(*page_, timeLimit, this);
    const QFuture<ScriptOutcome> outcome = call->start(body, arguments);
    co_return co_await outcome;
}

void WebPage::run(const QString& script)
{
    page_->runJavaScript(script, QWebEngineScript::MainWorld);
}

void WebPage::addUserScript(const QString& source, ScriptWorld world, InjectionPoint point)
{
    QWebEngineScript script;
    script.setSourceCode(source);
    script.setWorldId(world == ScriptWorld::page ? QWebEngineScript::MainWorld : QWebEngineScript::ApplicationWorld);
    script.setInjectionPoint(point == InjectionPoint::documentCreation ? QWebEngineScript::DocumentCreation
                                                                       : QWebEngineScript::DocumentReady);
    script.setRunsOnSubFrames(false);
    page_->scripts().insert(script);
}

} // namespace orvane
