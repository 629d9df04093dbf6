#pragma once

#include "main/Window/QuitGuard.h"

#include <QByteArray>
#include <QObject>

#include <functional>

class QMainWindow;

namespace orvane {

class MainController;
struct ProgramServices;

/// Builds the window, answers its menu and guards the way out.
class AppDelegate : public QObject
{
    Q_OBJECT

public:
    /// The services outlive the delegate.
    explicit AppDelegate(ProgramServices& services, QObject* parent = nullptr);
    ~AppDelegate() override;

    /// When set, the program starts itself anew at the moment it ends.
    static bool relaunchAfterQuit;

    /// How the program is started anew.
    std::function<void()> startAnew;

    /// Makes the window and shows it.
    void applicationDidFinishLaunching();

    /// Brings the window before the user, also out of the task bar. `activation` is the token of the desktop that
    /// allows it, and may be empty.
    void comeForward(const QByteArray& activation);

    /// The quit guard: asks while a download or a run is going. True when the program may end.
    bool applicationShouldTerminate();

    /// Starts the program anew if that was asked for; called when the main loop has ended.
    void applicationWillTerminate();

    QMainWindow* window() { return window_; }

    MainController* controller() { return controller_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildWindow();
    void buildMenu();
    void showCentred();
    void showAbout();
    void chooseDestination();

    ProgramServices& services_;
    QuitGuard quitGuard_;
    QMainWindow* window_ = nullptr;
    MainController* controller_ = nullptr;
};

} // namespace orvane
