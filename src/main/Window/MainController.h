#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <functional>
#include <optional>

class QStackedLayout;

namespace orvane {

class AutomaterTab;
class DownloaderTab;
class SunoTab;
class TabBar;
struct ProgramServices;

/// The window's content: the Suno pane, and beside it a column of tools behind a tab bar. Owns every tab and is the one
/// place where they are wired to each other.
class MainController : public QWidget
{
    Q_OBJECT

public:
    /// Width of the tools column, in points.
    static constexpr int panelWidth = 400;

    /// One tool: its title, its view, and what happens each time it is shown.
    struct Pane
    {
        QString title;
        QWidget* view = nullptr;
        std::function<void(QWidget*)> onShow;
    };

    /// The services outlive the controller.
    explicit MainController(ProgramServices& services, QWidget* parent = nullptr);

    const QList<Pane>& panes() const { return panes_; }

    QStringList paneTitles() const;
    int selected() const;

    SunoTab& suno() { return *suno_; }

    DownloaderTab& downloader() { return *downloader_; }

    AutomaterTab& automater() { return *automater_; }

    /// Selects a tool in the tab bar and shows it; an index outside the panes does nothing.
    void selectTab(int index);
    /// Shows one pane and hides the others; an index outside the panes does nothing.
    void apply(int index);
    /// Moves by `delta` tools, round the ends.
    void step(int delta);
    /// Presses the main button of the tool that is shown, if it has one.
    void doPrimaryAction();
    /// Brings the Suno pane back to its home page, as no tool so far holds a page of its own.
    void reloadCurrent();
    void reloadSuno();
    void zoomSuno(int delta);
    void resetSunoZoom();

Q_SIGNALS:
    /// How far the work is that a person waits for, from 0 to 1; absent when none goes.
    void progressChanged(std::optional<double> share);

private:
    void buildSuno();
    void buildDownloader();
    void buildAutomater();
    void buildPanes();
    void connectAutomater();
    void buildToolsColumn();
    void buildHalves();

    ProgramServices& services_;
    SunoTab* suno_;
    DownloaderTab* downloader_;
    AutomaterTab* automater_;
    QList<Pane> panes_;
    QWidget* rightStack_;
    TabBar* tabs_;
    QStackedLayout* stack_;
};

} // namespace orvane
