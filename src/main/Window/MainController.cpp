#include "main/Window/MainController.h"

#include "automation/view/AutomaterTab.h"
#include "main/App/L10n.h"
#include "main/Chrome/PrimaryAction.h"
#include "main/Chrome/TabBar.h"
#include "main/Chrome/Theme.h"
#include "main/Window/ProgramServices.h"
#include "suno/view/DownloaderTab.h"
#include "suno/view/SunoTab.h"

#include <QDesktopServices>
#include <QHBoxLayout>
#include <QStackedLayout>
#include <QVBoxLayout>

namespace orvane {
namespace {

constexpr int downloaderPane = 0;

} // namespace

MainController::MainController(ProgramServices& services, QWidget* parent)
    : QWidget(parent)
    , services_(services)
{
    buildSuno();
    buildDownloader();
    buildAutomater();
    buildPanes();
    buildToolsColumn();
    buildHalves();
    connectAutomater();
    selectTab(downloaderPane);
}

void MainController::buildSuno()
{
    suno_ = new SunoTab(services_.profile, services_.session, services_.preferences, services_.endpoints, this);
}

void MainController::buildDownloader()
{
    const DownloaderServices forDownloader{
        .session = services_.session,
        .client = services_.client,
        .clock = services_.clock,
        .dialogs = services_.dialogs,
        .notifier = services_.notifier,
        .sleep = services_.sleep,
        .endpoints = services_.endpoints,
    };
    downloader_ = new DownloaderTab(forDownloader, this);
}

void MainController::buildAutomater()
{
    const AutomationServices forAutomater{
        .session = services_.session,
        .preferences = services_.preferences,
        .client = services_.client,
        .clock = services_.clock,
        .ticker = services_.ticker,
        .notifier = services_.notifier,
        .sleep = services_.sleep,
        .endpoints = services_.endpoints,
    };
    automater_ = new AutomaterTab(forAutomater, services_.dialogs, this);
}

void MainController::buildPanes()
{
    panes_ = {
        {.title = L10n::t(L10n::Key::tabDownloader), .view = downloader_, .onShow = [](QWidget*) {}},
        {.title = L10n::t(L10n::Key::tabAutomater),
         .view = automater_,
         .onShow = [this](QWidget*) { automater_->refresh(); }},
    };
}

void MainController::connectAutomater()
{
    const auto config = [this] { return std::optional(downloader_->pipelineConfig()); };
    Automater& automater = automater_->automater();
    automater.run().configProvider = config;
    automater.run().onOpenFolder = [](const QUrl& folder) { QDesktopServices::openUrl(folder); };
    automater_->goToTab = [this](int pane) { selectTab(pane); };
    automater_->setPrerequisites(makePrerequisites(services_.session, config, downloaderPane));
    connect(automater_, &AutomaterTab::progressChanged, this, &MainController::progressChanged);
    automater.resumeWatching();
}

void MainController::buildToolsColumn()
{
    rightStack_ = new QWidget(this);
    rightStack_->setFixedWidth(panelWidth);
    tabs_ = new TabBar(paneTitles(), rightStack_);
    tabs_->onSelect = [this](int index) { apply(index); };
    auto* column = new QVBoxLayout(rightStack_);
    column->setContentsMargins({});
    column->setSpacing(0);
    auto* aroundTabs = new QHBoxLayout;
    aroundTabs->setContentsMargins(Theme::Space::medium, Theme::Space::medium, Theme::Space::medium, 0);
    aroundTabs->addWidget(tabs_);
    column->addLayout(aroundTabs);
    stack_ = new QStackedLayout;
    for (const Pane& pane : panes_)
        stack_->addWidget(pane.view);
    column->addLayout(stack_, 1);
}

void MainController::buildHalves()
{
    auto* halves = new QHBoxLayout(this);
    halves->setContentsMargins({});
    halves->setSpacing(0);
    halves->addWidget(suno_, 1);
    halves->addWidget(rightStack_);
    connect(suno_, &SunoTab::leaveRequested, this, [this] { stack_->currentWidget()->setFocus(Qt::TabFocusReason); });
}

QStringList MainController::paneTitles() const
{
    QStringList titles;
    for (const Pane& pane : panes_)
        titles.append(pane.title);
    return titles;
}

int MainController::selected() const
{
    return stack_->currentIndex();
}

void MainController::selectTab(int index)
{
    tabs_->select(index);
    apply(index);
}

void MainController::apply(int index)
{
    if (index < 0 || index >= panes_.size())
        return;
    stack_->setCurrentIndex(index);
    panes_[index].onShow(panes_[index].view);
}

void MainController::step(int delta)
{
    const int count = static_cast<int>(panes_.size());
    if (count > 0)
        selectTab((selected() + delta + count) % count);
}

void MainController::doPrimaryAction()
{
    if (auto* action = dynamic_cast<PrimaryAction*>(stack_->currentWidget()))
        action->performPrimaryAction();
}

void MainController::reloadCurrent()
{
    reloadSuno();
}

void MainController::reloadSuno()
{
    suno_->goHome();
}

void MainController::zoomSuno(int delta)
{
    suno_->nudgeZoom(delta);
}

void MainController::resetSunoZoom()
{
    suno_->setZoom(1.0);
}

} // namespace orvane
