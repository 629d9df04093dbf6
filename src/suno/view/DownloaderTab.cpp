#include "suno/view/DownloaderTab.h"

#include "main/App/L10n.h"
#include "main/App/Session.h"
#include "main/Chrome/AccentButton.h"
#include "main/Chrome/CardView.h"
#include "main/Chrome/Dialogs.h"
#include "main/Chrome/ElidedLabel.h"
#include "main/Chrome/StatusPill.h"
#include "main/Chrome/Theme.h"
#include "main/Chrome/ToolColumn.h"
#include "platform/async/Clock.h"
#include "platform/desktop/Notifier.h"
#include "platform/desktop/SleepInhibitor.h"
#include "suno/view/AssetPicker.h"
#include "suno/view/ProgressCard.h"
#include "suno/view/WorkspacePicker.h"

#include <QDir>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

DownloaderTab::DownloaderTab(const DownloaderServices& services, QWidget* parent)
    : QWidget(parent)
    , services_(services)
    , engine_(services.client, services.clock, services.endpoints)
    , export_(services.session, engine_, services.clock)
{
    setMinimumWidth(ToolColumn::leastWidth);
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins({});
    whole->addWidget(buildColumn());
    connectSession();
    connectExport();
    log(L10n::t(L10n::Key::readyStart), LogLevel::info);
    showDestination();
    refreshToken();
}

DownloaderTab::~DownloaderTab()
{
    export_.disconnect(this);
    services_.session.disconnect(this);
    engine_.stop();
    if (export_.isRunning())
        services_.sleep.release();
}

QWidget* DownloaderTab::buildColumn()
{
    auto* column = new ToolColumn;
    for (QWidget* row : {buildSessionCard(), buildAssets(), buildSaveLocation(), buildStartButton()})
        column->add(row);
    column->add(buildProgress(), ToolColumn::Height::rest);
    return column;
}

QWidget* DownloaderTab::buildSessionCard()
{
    statusPill_ = new StatusPill;
    statusPill_->setObjectName(u"statusPill"_s);
    workspaces_ = new WorkspacePicker(services_.session, services_.endpoints.sunoSiteDomain);
    return CardView::titled(L10n::t(L10n::Key::session), {statusPill_, workspaces_});
}

QWidget* DownloaderTab::buildAssets()
{
    assets_ = new AssetPicker;
    return CardView::titled(L10n::t(L10n::Key::assets), {assets_});
}

QWidget* DownloaderTab::buildSaveLocation()
{
    destLabel_ = new ElidedLabel;
    destLabel_->setObjectName(u"destLabel"_s);
    auto* button = new QPushButton(L10n::t(L10n::Key::chooseFolder));
    button->setObjectName(u"chooseFolder"_s);
    connect(button, &QPushButton::clicked, this, &DownloaderTab::chooseFolder);

    auto* row = new QWidget;
    auto* across = new QHBoxLayout(row);
    across->setContentsMargins({});
    across->setSpacing(Theme::Space::medium);
    across->addWidget(destLabel_, 1);
    across->addWidget(button);
    return CardView::titled(L10n::t(L10n::Key::saveLocation), {row});
}

QWidget* DownloaderTab::buildStartButton()
{
    startButton_ = new AccentButton(L10n::t(L10n::Key::startExport));
    startButton_->setObjectName(u"startButton"_s);
    connect(startButton_, &QPushButton::clicked, this, &DownloaderTab::toggleRun);
    return startButton_;
}

QWidget* DownloaderTab::buildProgress()
{
    progress_ = new ProgressCard;
    return progress_;
}

void DownloaderTab::connectSession()
{
    connect(&services_.session, &Session::tokenChanged, this, &DownloaderTab::refreshToken);
    connect(&services_.session, &Session::destinationChanged, this, &DownloaderTab::showDestination);
    connect(&services_.sleep, &SleepInhibitor::holdingChanged, progress_, &ProgressCard::setAwake);
}

void DownloaderTab::connectExport()
{
    connect(&export_, &LibraryExport::logged, this, &DownloaderTab::log);
    connect(&export_, &LibraryExport::progressed, this,
            [this](const ExportProgress& progress) { progress_->show(progress); });
    connect(&export_, &LibraryExport::runningChanged, this, &DownloaderTab::showRunning);
    connect(&export_, &LibraryExport::ended, this, &DownloaderTab::announce);
}

PipelineConfig DownloaderTab::pipelineConfig() const
{
    return {.workspace = selectedWorkspaceID().value_or(QString()),
            .assets = assets_->ticked(),
            .destination = services_.session.destination(),
            .token = services_.session.token()};
}

std::optional<QString> DownloaderTab::selectedWorkspaceID() const
{
    return workspaces_->selectedWorkspaceID();
}

void DownloaderTab::refreshToken()
{
    if (services_.session.token().isEmpty()) {
        statusPill_->setStatus(u"○ Sign in on the left; the token is picked up on its own"_s, Theme::textMuted);
        return;
    }
    statusPill_->setStatus(u"● Signed in — token captured automatically"_s, Theme::ok);
    loadWorkspaces();
}

void DownloaderTab::loadWorkspaces()
{
    const QString token = services_.session.token();
    if (token.isEmpty() || loadingWorkspaces_)
        return;
    loadingWorkspaces_ = true;
    scope_.add(readWorkspaces(token));
}

QCoro::Task<> DownloaderTab::readWorkspaces(QString token)
{
    const QList<Workspace> found = co_await engine_.fetchWorkspaces(token);
    loadingWorkspaces_ = false;
    if (found.isEmpty())
        co_return;
    known_ = found;
    rebuildWorkspaceMenu();
    log(L10n::t(L10n::Key::log51, {QString::number(found.size())}), LogLevel::info);
}

void DownloaderTab::rebuildWorkspaceMenu()
{
    workspaces_->rebuild(known_);
}

void DownloaderTab::chooseFolder()
{
    if (const auto folder = services_.dialogs.chooseFolder(this, services_.session.destination()))
        services_.session.setDestination(*folder);
}

void DownloaderTab::showDestination()
{
    destLabel_->setText(QDir::toNativeSeparators(services_.session.destination().toLocalFile()));
}

void DownloaderTab::toggleRun()
{
    export_.toggle({.workspace = selectedWorkspaceID().value_or(QString()), .assets = assets_->ticked()});
}

void DownloaderTab::showRunning(bool running)
{
    startButton_->setText(L10n::t(running ? L10n::Key::stop : L10n::Key::startExport));
    startButton_->setDanger(running);
    progress_->setRunning(running);
    if (running)
        services_.sleep.hold(u"Saving your Suno library"_s);
    else
        services_.sleep.release();
}

void DownloaderTab::announce(const ExportResult& result)
{
    if (!result.wasStopped && !isActiveWindow())
        services_.notifier.show({.title = u"Orvane"_s, .text = result.sentence, .folder = result.folder});
}

void DownloaderTab::log(const QString& message, LogLevel level)
{
    progress_->log(services_.clock.now().time(), message, level);
}

void DownloaderTab::keyPressEvent(QKeyEvent* event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!isReturn || event->modifiers() & ~Qt::KeypadModifier || event->isAutoRepeat())
        return QWidget::keyPressEvent(event);
    // A button that has the focus is what the user means; and a run of hours is not stopped by a stray key.
    if (auto* button = qobject_cast<QPushButton*>(focusWidget()))
        button->click();
    else if (!export_.isRunning())
        performPrimaryAction();
}

} // namespace orvane
