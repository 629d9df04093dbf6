#include "tests/automation/view/AutomaterWorld.h"

namespace orvane::test {

AutomaterWorld::AutomaterWorld(const Endpoints& addresses)
    : endpoints(addresses)
{
    session.setDestination(QUrl::fromLocalFile(folder()));
}

void AutomaterWorld::launch()
{
    const AutomationServices services{.session = session,
                                      .preferences = preferences,
                                      .client = client,
                                      .clock = clock,
                                      .ticker = ticker,
                                      .notifier = notifier,
                                      .sleep = sleep,
                                      .endpoints = endpoints};
    tab.reset();
    tab = std::make_unique<AutomaterTab>(services, dialogs);
    const auto config = [this] {
        return std::optional(PipelineConfig{
            .workspace = workspace, .assets = assets, .destination = session.destination(), .token = session.token()});
    };
    AutomaterRun& run = tab->automater().run();
    run.configProvider = config;
    run.onOpenFolder = [this](const QUrl& opened) { openedFolders.append(opened); };
    tab->goToTab = [this](int pane) { panes.append(pane); };
    tab->setPrerequisites(makePrerequisites(session, config, 0));
    QObject::connect(tab.get(), &AutomaterTab::progressChanged, tab.get(),
                     [this](std::optional<double> share) { shares.append(share); });
    tab->automater().resumeWatching();
    tab->refresh();
}

void AutomaterWorld::select(const QString& name)
{
    session.setSelection(TrackRef{.name = name, .audio = QUrl::fromLocalFile(folder() + u'/' + name)});
}

} // namespace orvane::test
