#pragma once

#include <QWebEnginePage>

namespace orvane {

class WebPage;

/// The engine's page with the answers of the house: no permission, no certificate that does not hold, no full screen,
/// nothing of the page's console on our standard error.
class EnginePage final : public QWebEnginePage
{
    Q_OBJECT

public:
    EnginePage(QWebEngineProfile& profile, WebPage& owner);

protected:
    QWebEnginePage* createWindow(WebWindowType type) override;
    bool acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame) override;
    void javaScriptAlert(const QUrl& origin, const QString& message) override;
    bool javaScriptConfirm(const QUrl& origin, const QString& message) override;
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString& message, int line,
                                  const QString& source) override;

private:
    void refuseRequests();

    WebPage& owner_;
};

} // namespace orvane
