#include "main/Window/MainMenu.h"

#include "main/App/L10n.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QMetaMethod>

#include <vector>

namespace orvane {

using namespace Qt::Literals::StringLiterals;
using L10n::Key;

namespace {

constexpr int numberedTabs = 9;

/// One line of a menu: an item, or a separator where it has no title.
struct Item
{
    QString title;
    QKeySequence key;
    std::function<void()> action;
};

const Item separator{};

/// Items of the edit and window menus show their key and leave it to whoever has the focus, which knows it already.
enum class Keys
{
    active,
    shown
};

QMenu* addMenu(QMenuBar* bar, const QString& title, const std::vector<Item>& items, Keys keys)
{
    QMenu* menu = bar->addMenu(title);
    for (const Item& item : items) {
        if (item.title.isEmpty()) {
            menu->addSeparator();
            continue;
        }
        QAction* action = menu->addAction(item.title);
        action->setShortcut(item.key);
        if (keys == Keys::shown)
            action->setShortcutContext(Qt::WidgetShortcut);
        QObject::connect(action, &QAction::triggered, menu, item.action);
    }
    return menu;
}

/// Sends an edit command, the signature of a slot, to the focused widget, or to the first of its parents that knows it.
void edit(const char* command)
{
    for (QWidget* widget = QApplication::focusWidget(); widget; widget = widget->parentWidget()) {
        const int method = widget->metaObject()->indexOfMethod(command);
        if (method >= 0) {
            widget->metaObject()->method(method).invoke(widget, Qt::DirectConnection);
            return;
        }
    }
}

Item editItem(Key title, QKeyCombination key, const char* command)
{
    return {L10n::t(title), QKeySequence(key), [command] { edit(command); }};
}

std::vector<Item> tabItems(const QStringList& tabs, const std::function<void(int)>& showTab)
{
    std::vector<Item> items;
    for (int index = 0; index < tabs.size(); ++index) {
        const QKeySequence key =
            index < numberedTabs ? QKeySequence(Qt::CTRL | Qt::Key(Qt::Key_1 + index)) : QKeySequence();
        items.push_back({tabs[index], key, [showTab, index] { showTab(index); }});
    }
    return items;
}

std::vector<Item> viewItems(const QStringList& tabs, const MenuActions& actions)
{
    std::vector<Item> items = tabItems(tabs, actions.showTab);
    const std::vector<Item> rest = {
        separator,
        {L10n::t(Key::menuNextTab), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_BracketRight),
         [step = actions.stepTab] { step(+1); }},
        {L10n::t(Key::menuPreviousTab), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_BracketLeft),
         [step = actions.stepTab] { step(-1); }},
        separator,
        {L10n::t(Key::menuDoIt), QKeySequence(Qt::CTRL | Qt::Key_Return), actions.primaryAction},
        separator,
        {L10n::t(Key::menuReload), QKeySequence(Qt::CTRL | Qt::Key_R), actions.reloadCurrent},
        {L10n::t(Key::menuReloadSuno), {}, actions.reloadSuno},
        separator,
        {L10n::t(Key::menuZoomIn), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Plus),
         [zoom = actions.zoomSuno] { zoom(+1); }},
        {L10n::t(Key::menuZoomOut), QKeySequence(Qt::CTRL | Qt::Key_Minus), [zoom = actions.zoomSuno] { zoom(-1); }},
        {L10n::t(Key::menuActualSize), QKeySequence(Qt::CTRL | Qt::Key_0), actions.resetSunoZoom},
    };
    items.insert(items.end(), rest.begin(), rest.end());
    return items;
}

void tickSelectedTab(QMenu* view, int tabs, const std::function<int()>& selectedTab)
{
    for (int index = 0; index < tabs; ++index)
        view->actions().at(index)->setCheckable(true);
    QObject::connect(view, &QMenu::aboutToShow, view, [view, tabs, selectedTab] {
        for (int index = 0; index < tabs; ++index)
            view->actions().at(index)->setChecked(index == selectedTab());
    });
}

void toggleMaximized(QWidget* window)
{
    if (window->isMaximized())
        window->showNormal();
    else
        window->showMaximized();
}

} // namespace

QMenuBar* MainMenu::build(const QString& appName, const QStringList& tabs, const MenuActions& actions, QWidget* window)
{
    auto* bar = new QMenuBar(window);
    addMenu(bar, appName,
            {{L10n::t(Key::menuAbout, {appName}), {}, actions.about},
             separator,
             {L10n::t(Key::menuOpenSite), {}, actions.openSite},
             separator,
             {L10n::t(Key::menuQuit, {appName}), QKeySequence(Qt::CTRL | Qt::Key_Q), actions.quit}},
            Keys::active);
    addMenu(bar, L10n::t(Key::menuEdit),
            {editItem(Key::menuUndo, Qt::CTRL | Qt::Key_Z, "undo()"),
             editItem(Key::menuRedo, Qt::CTRL | Qt::SHIFT | Qt::Key_Z, "redo()"), separator,
             editItem(Key::menuCut, Qt::CTRL | Qt::Key_X, "cut()"),
             editItem(Key::menuCopy, Qt::CTRL | Qt::Key_C, "copy()"),
             editItem(Key::menuPaste, Qt::CTRL | Qt::Key_V, "paste()"),
             editItem(Key::menuSelectAll, Qt::CTRL | Qt::Key_A, "selectAll()")},
            Keys::shown);
    addMenu(
        bar, L10n::t(Key::menuFile),
        {{L10n::t(Key::menuChooseFolder), QKeySequence(Qt::CTRL | Qt::Key_O), actions.chooseDestination},
         {L10n::t(Key::menuRevealFolder), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_O), actions.revealDestination}},
        Keys::active);
    QMenu* view = addMenu(bar, L10n::t(Key::menuView), viewItems(tabs, actions), Keys::active);
    tickSelectedTab(view, static_cast<int>(tabs.size()), actions.selectedTab);
    addMenu(bar, L10n::t(Key::menuHelp),
            {{L10n::t(Key::menuTutorials), {}, actions.openTutorials}, {L10n::t(Key::menuSite), {}, actions.openSite}},
            Keys::active);
    addMenu(bar, L10n::t(Key::menuWindow),
            {{L10n::t(Key::menuMinimise), QKeySequence(Qt::CTRL | Qt::Key_M), [window] { window->showMinimized(); }},
             {L10n::t(Key::menuZoom), {}, [window] { toggleMaximized(window); }},
             separator,
             {L10n::t(Key::menuClose), QKeySequence(Qt::CTRL | Qt::Key_W), [window] { window->close(); }}},
            Keys::active);
    return bar;
}

} // namespace orvane
