#pragma once

#include "automation/PipelineConfig.h"
#include "main/App/Endpoints.h"
#include "suno/Engine.h"

#include <QWidget>

#include <optional>

namespace orvane {

class Clock;
class Dialogs;
class Notifier;
class Session;
class SleepInhibitor;

/// Everything that the Downloader works with; all of it outlives the tab.
struct DownloaderServices
{
    Session& session;
    HttpClient& client;
    Clock& clock;
    Dialogs& dialogs;
    Notifier& notifier;
    SleepInhibitor& sleep;
    Endpoints endpoints;
};

/// The first tool: what to read, what to save and where, and the batch export.
class DownloaderTab : public QWidget
{
    Q_OBJECT

public:
    explicit DownloaderTab(const DownloaderServices& services, QWidget* parent = nullptr);
    ~DownloaderTab() override;

    PipelineConfig pipelineConfig() const;
    std::optional<QString> selectedWorkspaceID() const;

    void refreshToken();
    void loadWorkspaces();
    void chooseFolder();
    void toggleRun();

private:
    class Implementation;
    Implementation* implementation_;
};

} // namespace orvane
