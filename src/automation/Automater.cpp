#include "automation/Automater.h"

namespace orvane {

using namespace Qt::Literals::StringLiterals;

Automater::Automater(const AutomationServices& services)
    : run_(services)
    , watcher_(services)
{
    watcher_.onLog = [this](const QString& message, LogLevel level) { Q_EMIT run_.logged(message, level); };
    watcher_.onNewTracks = [this](QList<Clip> clips) { return run_.runNewTracks(std::move(clips)); };
    watcher_.workspaceProvider = [this] {
        const auto config = run_.configProvider ? run_.configProvider() : std::nullopt;
        return config.value_or(PipelineConfig()).workspace;
    };
}

Automater::~Automater()
{
    run_.blockSignals(true);
    run_.onOpenFolder = nullptr;
    run_.stop();
}

void Automater::resumeWatching()
{
    if (watcher_.isEnabled())
        watcher_.start();
}

QString Automater::watchStatus() const
{
    return watcher_.isEnabled() ? u"Watching — "_s + watcher_.summary() : u"Not watching."_s;
}

} // namespace orvane
