#pragma once

#include <QKeySequence>
#include <QList>
#include <QStringList>

#include <functional>

class QMenuBar;
class QWidget;

namespace orvane {

/// What the menu's items do. Each is answered by the window's delegate.
struct MenuActions
{
    std::function<void()> about;
    std::function<void()> openSite;
    std::function<void()> quit;
    std::function<void()> chooseDestination;
    std::function<void()> revealDestination;
    std::function<void(int index)> showTab;
    std::function<void(int delta)> stepTab;
    std::function<void()> primaryAction;
    std::function<void()> reloadCurrent;
    std::function<void()> reloadSuno;
    std::function<void(int delta)> zoomSuno;
    std::function<void()> resetSunoZoom;
    std::function<void()> openTutorials;
    /// The index of the selected pane, asked when the View menu opens.
    std::function<int()> selectedTab;
};

/// The menu bar.
namespace MainMenu {

/// Builds it as a child of `window`, whose edit and window items it serves. `appName` fills the titles that name the
/// program, `tabs` are the titles of the panes in order; the first nine have a number key.
QMenuBar* build(const QString& appName, const QStringList& tabs, const MenuActions& actions, QWidget* window);

} // namespace MainMenu
} // namespace orvane
