#pragma once

#include "platform/web/ScriptOutcome.h"

#include <QJsonObject>
#include <QObject>
#include <QTimer>
#include <QUrl>
#include <qcoro/qcorotask.h>

#include <chrono>
#include <functional>
#include <memory>

class QWebEngineDownloadRequest;
class QWebEngineLoadingInfo;
class QWebEnginePage;

namespace orvane {

class EnginePage;
class WebProfile;

/// Whose scripts a user script runs among: the page's own, or apart from them on the same document.
enum class ScriptWorld
{
    page,
    application
};

/// When a user script runs: before the document's first script, or when the document has been read.
enum class InjectionPoint
{
    documentCreation,
    documentReady
};

/// A navigation that is about to begin.
struct Navigation
{
    QUrl url;
    bool isMainFrame = true;
};

/// Why a load did not come to its end.
struct LoadFailure
{
    QString text;
    /// It was stopped by the user, the page, or a download, and not by a fault.
    bool cancelled = false;
};

/// One web page, with or without a pane that shows it. Main thread only; deleted before its profile.
class WebPage : public QObject
{
    Q_OBJECT

public:
    explicit WebPage(WebProfile& profile, QObject* parent = nullptr);
    ~WebPage() override;

    /// Loads `url`. A load that has not finished after `timeout` is stopped and has failed.
    void load(const QUrl& url, std::chrono::milliseconds timeout = std::chrono::seconds(60));
    /// Shows `html` as if it had come from `address`; nothing goes over the network for it.
    void show(const QString& html, const QUrl& address);
    void reload();
    void stop();

    /// The address of the document that is there; empty before the first. A load that has begun does not show here
    /// before its document comes.
    QUrl url() const;

    /// 1 is the page's natural size. Held over every navigation; bounded by what the engine can do, 0.25 to 5.
    double zoom() const { return zoom_; }

    void setZoom(double zoom);

    /// Runs `body` as the body of an asynchronous function among the page's own scripts, with `arguments` as constants
    /// of their names, and waits for what it returns. It runs only in a document of the origin that `url` names at the
    /// moment of the call. The outcome comes over the event loop, also when the page is deleted meanwhile.
    QCoro::Task<ScriptOutcome> callAsync(QString body, QJsonObject arguments = {},
                                         std::chrono::milliseconds timeLimit = std::chrono::seconds(30));
    /// Runs a script among the page's own and asks for no answer.
    void run(const QString& script);

    /// Has a script run in the main frame of every document from now on.
    void addUserScript(const QString& source, ScriptWorld world, InjectionPoint point);

    /// Whether a navigation may go on; all may where there is none.
    std::function<bool(const Navigation&)> navigationPolicy;
    /// Called for each download; one that it does not accept is dropped, as all are where there is none.
    std::function<void(QWebEngineDownloadRequest&)> downloadHandler;
    /// Gives the page, of the same profile, for a window that this one opens; nullptr and no function refuse it.
    std::function<WebPage*()> windowOpener;
    /// In place of the engine's own dialogs.
    std::function<void(const QString& message)> alertHandler;
    std::function<bool(const QString& message)> confirmHandler;

    QWebEnginePage& enginePage();

    WebProfile& profile() { return profile_; }

Q_SIGNALS:
    /// A load has begun.
    void started();
    /// The document of `url` has taken the last one's place. The engine of this age announces no commit, but changes
    /// its address exactly then, as was seen: after redirects, before the content is there, and not for a load that is
    /// stopped before it answers. It stays silent where the address stays (a reload), and speaks also when a page
    /// changes its own address in place, and for the engine's page about a load that failed.
    void committed(const QUrl& url);
    /// The load came to its end; an answer with an error status that brought a document of its own is one too.
    void finished();
    void failed(const orvane::LoadFailure& failure);
    /// The process that draws the page died; `reload` starts another.
    void stoppedWorking();
    /// The page asked for its window to be closed.
    void closeRequested();

private:
    void connectLoading();
    void takeLoading(const QWebEngineLoadingInfo& info);
    void endLoad();
    void fail(const LoadFailure& failure);
    void runOutOfTime();
    void takeStop(const QString& reason);
    void applyZoom();

    WebProfile& profile_;
    std::unique_ptr<EnginePage> page_;
    QTimer timeout_;
    double zoom_ = 1;
    bool loading_ = false;
    /// Asked to load, and the engine has not begun: what it tells of an end is of the page before.
    bool beforeStart_ = false;
    bool overdue_ = false;
    bool dead_ = false;
};

} // namespace orvane
