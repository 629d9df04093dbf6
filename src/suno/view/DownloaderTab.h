#pragma once

#include "automation/PipelineConfig.h"
#include "main/App/Endpoints.h"
#include "main/Chrome/PrimaryAction.h"
#include "platform/async/TaskScope.h"
#include "suno/Engine.h"
#include "suno/LibraryExport.h"

#include <QWidget>

#include <optional>

namespace orvane {

class AccentButton;
class AssetPicker;
class Clock;
class Dialogs;
class ElidedLabel;
class Notifier;
class ProgressCard;
class Session;
class SleepInhibitor;
class StatusPill;
class WorkspacePicker;

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
class DownloaderTab : public QWidget, public PrimaryAction
{
    Q_OBJECT

public:
    explicit DownloaderTab(const DownloaderServices& services, QWidget* parent = nullptr);
    ~DownloaderTab() override;

    PipelineConfig pipelineConfig() const;
    /// Absent for the whole library.
    std::optional<QString> selectedWorkspaceID() const;

    /// Shows whether there is a token, and with one reads the list of projects.
    void refreshToken();
    void loadWorkspaces();
    void rebuildWorkspaceMenu();
    void chooseFolder();
    /// Starts an export, or stops the one that runs.
    void toggleRun();

    void performPrimaryAction() override { toggleRun(); }

    /// Adds a line with the time of this moment to the log.
    void log(const QString& message, LogLevel level);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QWidget* buildColumn();
    QWidget* buildSessionCard();
    QWidget* buildAssets();
    QWidget* buildSaveLocation();
    QWidget* buildStartButton();
    QWidget* buildProgress();
    void connectSession();
    void connectExport();

    QCoro::Task<> readWorkspaces(QString token);
    void showDestination();
    void showRunning(bool running);
    void announce(const ExportResult& result);

    const DownloaderServices services_;
    StatusPill* statusPill_ = nullptr;
    WorkspacePicker* workspaces_ = nullptr;
    AssetPicker* assets_ = nullptr;
    ElidedLabel* destLabel_ = nullptr;
    AccentButton* startButton_ = nullptr;
    ProgressCard* progress_ = nullptr;

    QList<Workspace> known_;
    bool loadingWorkspaces_ = false;
    Engine engine_;
    LibraryExport export_;
    TaskScope scope_;
};

} // namespace orvane
