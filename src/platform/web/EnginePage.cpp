#include "platform/web/EnginePage.h"

#include "platform/web/WebPage.h"

#include <QWebEngineCertificateError>
#include <QWebEngineClientCertificateSelection>
#include <QWebEngineFileSystemAccessRequest>
#include <QWebEngineFullScreenRequest>
#include <QWebEngineQuotaRequest>
#include <QWebEngineRegisterProtocolHandlerRequest>

namespace orvane {

EnginePage::EnginePage(QWebEngineProfile& profile, WebPage& owner)
    : QWebEnginePage(&profile)
    , owner_(owner)
{
    refuseRequests();
}

void EnginePage::refuseRequests()
{
    connect(this, &QWebEnginePage::featurePermissionRequested, this, [this](const QUrl& origin, Feature feature) {
        setFeaturePermission(origin, feature, PermissionDeniedByUser);
    });
    connect(this, &QWebEnginePage::certificateError, this,
            [](QWebEngineCertificateError error) { error.rejectCertificate(); });
    connect(this, &QWebEnginePage::fullScreenRequested, this,
            [](QWebEngineFullScreenRequest request) { request.reject(); });
    connect(this, &QWebEnginePage::fileSystemAccessRequested, this,
            [](QWebEngineFileSystemAccessRequest request) { request.reject(); });
    connect(this, &QWebEnginePage::registerProtocolHandlerRequested, this,
            [](QWebEngineRegisterProtocolHandlerRequest request) { request.reject(); });
    connect(this, &QWebEnginePage::quotaRequested, this, [](QWebEngineQuotaRequest request) { request.reject(); });
    connect(this, &QWebEnginePage::selectClientCertificate, this,
            [](QWebEngineClientCertificateSelection selection) { selection.selectNone(); });
}

QWebEnginePage* EnginePage::createWindow(WebWindowType)
{
    WebPage* opened = owner_.windowOpener ? owner_.windowOpener() : nullptr;
    return opened ? &opened->enginePage() : nullptr;
}

bool EnginePage::acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame)
{
    if (!owner_.navigationPolicy)
        return QWebEnginePage::acceptNavigationRequest(url, type, isMainFrame);
    return owner_.navigationPolicy({.url = url, .isMainFrame = isMainFrame});
}

void EnginePage::javaScriptAlert(const QUrl& origin, const QString& message)
{
    if (owner_.alertHandler)
        owner_.alertHandler(message);
    else
        QWebEnginePage::javaScriptAlert(origin, message);
}

bool EnginePage::javaScriptConfirm(const QUrl& origin, const QString& message)
{
    return owner_.confirmHandler ? owner_.confirmHandler(message) : QWebEnginePage::javaScriptConfirm(origin, message);
}

void EnginePage::javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString&, int, const QString&)
{
    // A page may print its session there, and our standard error ends up in logs and reports.
}

} // namespace orvane
