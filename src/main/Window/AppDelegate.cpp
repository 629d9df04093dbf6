#include "main/Window/AppDelegate.h"

#include "main/App/AppInfo.h"
#include "main/App/L10n.h"
#include "main/Chrome/Theme.h"
#include "main/Window/MainController.h"
#include "main/Window/MainMenu.h"
#include "main/Window/ProgramServices.h"
#include "main/Window/WindowTitle.h"
#include "suno/view/SunoTab.h"

#include <QApplication>
#include <QDesktopServices>
#include <QEvent>
#include <QMainWindow>
#include <QMenuBar>
#include <QProcess>
#include <QScreen>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString programName = u"Orvane"_s;
constexpr QSize initialContent{1320, 860};
constexpr QSize leastContent{802, 520};

} // namespace

bool AppDelegate::relaunchAfterQuit = false;

AppDelegate::AppDelegate(ProgramServices& services, QObject* parent)
    : QObject(parent)
    , startAnew([] { QProcess::startDetached(QCoreApplication::applicationFilePath(), {}); })
    , services_(services)
    , quitGuard_(services.session, services.dialogs, relaunchAfterQuit)
{
}

AppDelegate::~AppDelegate()
{
    delete window_;
}

void AppDelegate::applicationDidFinishLaunching()
{
    services_.notifier.onOpenFolder = [](const QString& folder) {
        QDesktopServices::openUrl(QUrl::fromLocalFile(folder));
    };
    buildWindow();
    buildMenu();
    showCentred();
}

void AppDelegate::buildWindow()
{
    window_ = new QMainWindow;
    window_->setWindowTitle(programName);
    window_->installEventFilter(this);
    controller_ = new MainController(services_, window_);
    controller_->setMinimumSize(leastContent);
    window_->setCentralWidget(controller_);
    connect(controller_, &MainController::progressChanged, window_, [this](std::optional<double> share) {
        window_->setWindowTitle(windowTitle(programName, share));
        services_.taskbar.show(share);
    });
}

void AppDelegate::buildMenu()
{
    const MenuActions actions{
        .about = [this] { showAbout(); },
        .openSite = [this] { QDesktopServices::openUrl(services_.endpoints.productSite); },
        .quit = [this] { window_->close(); },
        .chooseDestination = [this] { chooseDestination(); },
        .revealDestination = [this] { QDesktopServices::openUrl(services_.session.destination()); },
        .showTab = [this](int index) { controller_->selectTab(index); },
        .stepTab = [this](int delta) { controller_->step(delta); },
        .primaryAction = [this] { controller_->doPrimaryAction(); },
        .reloadCurrent = [this] { controller_->reloadCurrent(); },
        .reloadSuno = [this] { controller_->reloadSuno(); },
        .zoomSuno = [this](int delta) { controller_->zoomSuno(delta); },
        .resetSunoZoom = [this] { controller_->resetSunoZoom(); },
        .openTutorials =
            [this] { QDesktopServices::openUrl(services_.endpoints.productSite.resolved(QUrl(u"tutorials/"_s))); },
        .selectedTab = [this] { return controller_->selected(); },
    };
    window_->setMenuBar(MainMenu::build(programName, controller_->paneTitles(), actions, window_));
}

void AppDelegate::showCentred()
{
    const QSize menu(0, window_->menuBar()->sizeHint().height());
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    window_->resize((initialContent + menu).boundedTo(screen.size()).expandedTo(leastContent));
    QRect frame = window_->frameGeometry();
    frame.moveCenter(screen.center());
    window_->move(frame.topLeft());
    window_->show();
    window_->raise();
    window_->activateWindow();
}

void AppDelegate::showAbout()
{
    services_.dialogs.tell(window_, programName + u' ' + AppInfo::version(), u"GPL-3.0-or-later"_s);
}

void AppDelegate::chooseDestination()
{
    const auto folder = services_.dialogs.chooseFolder(window_, services_.session.destination());
    if (folder)
        services_.session.setDestination(*folder);
}

void AppDelegate::comeForward(const QByteArray& activation)
{
    // The platform plugin of Wayland takes the token from there.
    if (!activation.isEmpty())
        qputenv("XDG_ACTIVATION_TOKEN", activation);
    window_->setWindowState(window_->windowState() & ~Qt::WindowMinimized);
    window_->show();
    window_->raise();
    window_->activateWindow();
    // Where the desktop does not let it come forward, its entry in the task bar asks for attention.
    QApplication::alert(window_);
}

bool AppDelegate::applicationShouldTerminate()
{
    return quitGuard_.mayQuit(window_);
}

void AppDelegate::applicationWillTerminate()
{
    if (!relaunchAfterQuit)
        return;
    services_.preferences.flush();
    startAnew();
}

bool AppDelegate::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == window_ && event->type() == QEvent::Close && !applicationShouldTerminate()) {
        event->ignore();
        return true;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace orvane
