#pragma once

#include "platform/async/TaskScope.h"
#include "suno/view/SessionCapture.h"

#include <QTimer>
#include <QWidget>

#include <chrono>
#include <functional>

namespace orvane {

class Dialogs;
class Preferences;
class Session;
class WebPage;
class WebPane;
class WebProfile;
struct Endpoints;

/// The times of the Suno pane.
struct SunoTiming
{
    /// Between two captures, for as long as the tab lives.
    std::chrono::milliseconds captureInterval{20'000};
    /// From a finished load to a capture, so that a fresh sign-in shows without waiting for the next turn.
    std::chrono::milliseconds settling{1'500};
    /// For the home page to load.
    std::chrono::milliseconds homeTimeout{60'000};
    /// For the page to answer a capture; shorter than the interval.
    std::chrono::milliseconds captureTimeout{15'000};
};

/// The left half of the window: the Suno site, where the user signs in, and out of which the session token is taken.
class SunoTab : public QWidget
{
    Q_OBJECT

public:
    /// The preference that keeps the pane's zoom, a number.
    static const QString zoomKey;

    /// The profile, session, preferences and endpoints outlive the tab.
    SunoTab(WebProfile& profile, Session& session, Preferences& preferences, const Endpoints& endpoints,
            QWidget* parent = nullptr, const SunoTiming& timing = SunoTiming());
    ~SunoTab() override;

    /// Called once, after the first load has finished or failed.
    std::function<void()> onFirstLoad;

    /// Asks the page for its token, if the page is the site's own. One that is still asked is not asked again.
    void captureToken();
    void goHome();
    /// Moves `delta` steps from the step nearest to the present zoom, and stores it.
    void nudgeZoom(int delta);
    void setZoom(double zoom);
    /// The stored zoom, or the usual one.
    void applyStoredZoom();
    double zoom() const;

    /// Asks first, and signs out at the first button.
    void askToSignOut(Dialogs& dialogs);
    /// Forgets the token and every stored datum of the Suno site, then goes to the home page.
    void signOut();

    WebPage& page();

Q_SIGNALS:
    /// F6 in the page: the focus wants to go to the tools.
    void leaveRequested();
    /// The page has answered a capture, or will not any more; what it changed is in the session.
    void captureEnded();

private:
    void connectPage();
    void noteAddress();
    void reportFirstLoad();
    bool belongsToSite(const QString& host) const;
    QCoro::Task<> capture();
    void takeToken(const std::optional<QString>& answer);
    QCoro::Task<> forgetSite();

    WebProfile& profile_;
    Session& session_;
    Preferences& preferences_;
    const Endpoints& endpoints_;
    const SunoTiming timing_;
    WebPane* web_;
    QTimer timer_;
    SessionCapture capture_;
    bool capturing_ = false;
    bool signingOut_ = false;
    bool reportedFirstLoad_ = false;
    TaskScope tasks_;
};

} // namespace orvane
