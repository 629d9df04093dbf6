#pragma once

#include <QWidget>

#include <functional>

namespace orvane {

class Preferences;
class Session;
class WebProfile;
struct Endpoints;

/// The left half of the window: the Suno site, where the user signs in, and out of which the session token is taken.
class SunoTab : public QWidget
{
    Q_OBJECT

public:
    /// The profile, session, preferences and endpoints outlive the tab.
    SunoTab(WebProfile& profile, Session& session, Preferences& preferences, const Endpoints& endpoints,
            QWidget* parent = nullptr);
    ~SunoTab() override;

    /// Called once, after the first load has finished or failed.
    std::function<void()> onFirstLoad;

    void captureToken();
    void goHome();
    void nudgeZoom(int delta);
    void setZoom(double zoom);
    void applyStoredZoom();

    /// Forgets the token and every stored datum of the Suno site, then goes to the home page.
    void signOut();

private:
    class Implementation;
    Implementation* implementation_;
};

} // namespace orvane
