#include "main/Window/MainMenu.h"

#include "main/App/Endpoints.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

const QStringList threeTabs{u"Downloader"_s, u"Files"_s, u"Namer"_s};
const QStringList elevenTabs{u"one"_s,   u"two"_s,   u"three"_s, u"four"_s, u"five"_s,  u"six"_s,
                             u"seven"_s, u"eight"_s, u"nine"_s,  u"ten"_s,  u"eleven"_s};

/// An item as a person reads it: its title and its key.
QString lineOf(const QAction* action)
{
    if (action->isSeparator())
        return u"---"_s;
    const QString key = action->shortcut().toString(QKeySequence::PortableText);
    return key.isEmpty() ? action->text() : action->text() + u" | "_s + key;
}

QStringList linesOf(const QMenu* menu)
{
    QStringList lines;
    for (const QAction* action : menu->actions())
        lines.append(lineOf(action));
    return lines;
}

/// Takes every key and keeps it, as the web page does.
class KeyTaker : public QWidget
{
public:
    using QWidget::QWidget;

    QStringList taken;

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        if (event->key() == Qt::Key_Control || event->key() == Qt::Key_Shift)
            return;
        taken.append(QKeySequence(event->keyCombination()).toString(QKeySequence::PortableText));
    }
};

class MainMenu : public testing::Test
{
protected:
    /// A window with the menu for these tabs, in front and with the keyboard.
    void open(const QStringList& tabs = threeTabs)
    {
        bar = orvane::MainMenu::build(u"Orvane"_s, tabs, actions(), &window);
        window.setMenuBar(bar);
        window.setCentralWidget(new QWidget);
        window.show();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    template <typename Widget>
    Widget* focused()
    {
        auto* widget = new Widget(window.centralWidget());
        widget->show();
        widget->setFocus();
        return widget;
    }

    QMenu* menu(const QString& title) const
    {
        for (const QAction* action : bar->actions()) {
            if (action->text() == title)
                return action->menu();
        }
        return nullptr;
    }

    QAction* item(const QString& menuTitle, const QString& title) const
    {
        for (QAction* action : menu(menuTitle)->actions()) {
            if (action->text() == title)
                return action;
        }
        ADD_FAILURE() << "no item " << title.toStdString();
        return nullptr;
    }

    void choose(const QString& menuTitle, const QString& title) const { item(menuTitle, title)->trigger(); }

    MenuActions actions()
    {
        const auto note = [this](const QString& name) { return [this, name] { called.append(name); }; };
        const auto noteNumber = [this](const QString& name) {
            return [this, name](int number) { called.append(name + u' ' + QString::number(number)); };
        };
        return {.about = note(u"about"_s),
                .openSite = note(u"openSite"_s),
                .quit = note(u"quit"_s),
                .chooseDestination = note(u"chooseDestination"_s),
                .revealDestination = note(u"revealDestination"_s),
                .showTab = noteNumber(u"showTab"_s),
                .stepTab = noteNumber(u"stepTab"_s),
                .primaryAction = note(u"primaryAction"_s),
                .reloadCurrent = note(u"reloadCurrent"_s),
                .reloadSuno = note(u"reloadSuno"_s),
                .zoomSuno = noteNumber(u"zoomSuno"_s),
                .resetSunoZoom = note(u"resetSunoZoom"_s),
                .openTutorials = note(u"openTutorials"_s),
                .selectedTab = [this] { return selected; }};
    }

    QMainWindow window;
    QMenuBar* bar = nullptr;
    QStringList called;
    int selected = 0;
    const QString site = Endpoints::production().productDomain;
};

TEST_F(MainMenu, hasItsMenusInOrder)
{
    open();
    QStringList titles;
    for (const QAction* action : bar->actions())
        titles.append(action->text());
    EXPECT_EQ(titles, (QStringList{u"Orvane"_s, u"Edit"_s, u"File"_s, u"View"_s, u"Help"_s, u"Window"_s}));
}

TEST_F(MainMenu, hasItsItemsSeparatorsAndKeysInOrder)
{
    open();
    const QList<std::pair<QString, QStringList>> expected{
        {u"Orvane"_s, {u"About Orvane"_s, u"---"_s, u"Open "_s + site + u"…"_s, u"---"_s, u"Quit Orvane | Ctrl+Q"_s}},
        {u"Edit"_s,
         {u"Undo | Ctrl+Z"_s, u"Redo | Ctrl+Shift+Z"_s, u"---"_s, u"Cut | Ctrl+X"_s, u"Copy | Ctrl+C"_s,
          u"Paste | Ctrl+V"_s, u"Select All | Ctrl+A"_s}},
        {u"File"_s, {u"Choose Save Folder… | Ctrl+O"_s, u"Show Save Folder in Finder | Ctrl+Shift+O"_s}},
        {u"View"_s,
         {u"Downloader | Ctrl+1"_s, u"Files | Ctrl+2"_s, u"Namer | Ctrl+3"_s, u"---"_s, u"Next Tab | Ctrl+Shift+]"_s,
          u"Previous Tab | Ctrl+Shift+["_s, u"---"_s, u"Do It | Ctrl+Return"_s, u"---"_s, u"Reload | Ctrl+R"_s,
          u"Reload Suno"_s, u"---"_s, u"Zoom Suno In | Ctrl+Shift++"_s, u"Zoom Suno Out | Ctrl+-"_s,
          u"Suno Actual Size | Ctrl+0"_s}},
        {u"Help"_s, {u"Orvane Tutorials…"_s, site + u"…"_s}},
        {u"Window"_s, {u"Minimise | Ctrl+M"_s, u"Zoom"_s, u"---"_s, u"Close | Ctrl+W"_s}},
    };
    for (const auto& [title, lines] : expected)
        EXPECT_EQ(linesOf(menu(title)).join(u'\n').toStdString(), lines.join(u'\n').toStdString());
}

TEST_F(MainMenu, onlyTheFirstNineTabsHaveANumberKey)
{
    open(elevenTabs);
    EXPECT_EQ(linesOf(menu(u"View"_s)).first(11),
              (QStringList{u"one | Ctrl+1"_s, u"two | Ctrl+2"_s, u"three | Ctrl+3"_s, u"four | Ctrl+4"_s,
                           u"five | Ctrl+5"_s, u"six | Ctrl+6"_s, u"seven | Ctrl+7"_s, u"eight | Ctrl+8"_s,
                           u"nine | Ctrl+9"_s, u"ten"_s, u"eleven"_s}));
}

TEST_F(MainMenu, everyItemCallsItsAction)
{
    open();
    const QList<std::tuple<QString, QString, QString>> expected{
        {u"Orvane"_s, u"About Orvane"_s, u"about"_s},
        {u"Orvane"_s, u"Open "_s + site + u"…"_s, u"openSite"_s},
        {u"Orvane"_s, u"Quit Orvane"_s, u"quit"_s},
        {u"File"_s, u"Choose Save Folder…"_s, u"chooseDestination"_s},
        {u"File"_s, u"Show Save Folder in Finder"_s, u"revealDestination"_s},
        {u"View"_s, u"Next Tab"_s, u"stepTab 1"_s},
        {u"View"_s, u"Previous Tab"_s, u"stepTab -1"_s},
        {u"View"_s, u"Do It"_s, u"primaryAction"_s},
        {u"View"_s, u"Reload"_s, u"reloadCurrent"_s},
        {u"View"_s, u"Reload Suno"_s, u"reloadSuno"_s},
        {u"View"_s, u"Zoom Suno In"_s, u"zoomSuno 1"_s},
        {u"View"_s, u"Zoom Suno Out"_s, u"zoomSuno -1"_s},
        {u"View"_s, u"Suno Actual Size"_s, u"resetSunoZoom"_s},
        {u"Help"_s, u"Orvane Tutorials…"_s, u"openTutorials"_s},
        {u"Help"_s, site + u"…"_s, u"openSite"_s},
    };
    for (const auto& [menuTitle, title, call] : expected) {
        called.clear();
        choose(menuTitle, title);
        EXPECT_EQ(called, QStringList{call}) << title.toStdString();
    }
}

TEST_F(MainMenu, everyTabItemShowsItsTab)
{
    open(elevenTabs);
    for (const QString& tab : elevenTabs)
        choose(u"View"_s, tab);
    QStringList expected;
    for (int index = 0; index < elevenTabs.size(); ++index)
        expected.append(u"showTab "_s + QString::number(index));
    EXPECT_EQ(called, expected);
}

TEST_F(MainMenu, keysReachTheirItemsFromAnyFocus)
{
    open(elevenTabs);
    auto* page = focused<KeyTaker>();
    QTest::keyClick(page, Qt::Key_O, Qt::ControlModifier);
    QTest::keyClick(page, Qt::Key_9, Qt::ControlModifier);
    QTest::keyClick(page, Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(called, (QStringList{u"chooseDestination"_s, u"showTab 8"_s, u"primaryAction"_s}));
}

TEST_F(MainMenu, theSelectedTabIsTickedWhenTheViewMenuOpens)
{
    open();
    const auto ticked = [this] {
        Q_EMIT menu(u"View"_s)->aboutToShow();
        QStringList titles;
        for (const QAction* action : menu(u"View"_s)->actions()) {
            if (action->isChecked())
                titles.append(action->text());
        }
        return titles;
    };
    EXPECT_EQ(ticked(), QStringList{u"Downloader"_s});
    selected = 2;
    EXPECT_EQ(ticked(), QStringList{u"Namer"_s});
    choose(u"View"_s, u"Files"_s);
    EXPECT_EQ(ticked(), QStringList{u"Namer"_s}) << "choosing an item ticks nothing by itself";
}

TEST_F(MainMenu, editItemsActOnTheFocusedField)
{
    open();
    auto* field = focused<QLineEdit>();
    QTest::keyClicks(field, u"la la"_s);
    choose(u"Edit"_s, u"Select All"_s);
    EXPECT_EQ(field->selectedText(), u"la la"_s);
    choose(u"Edit"_s, u"Cut"_s);
    EXPECT_EQ(field->text(), QString());
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"la la"_s);
    choose(u"Edit"_s, u"Paste"_s);
    choose(u"Edit"_s, u"Paste"_s);
    EXPECT_EQ(field->text(), u"la lala la"_s);
    choose(u"Edit"_s, u"Undo"_s);
    EXPECT_EQ(field->text(), u"la la"_s);
    choose(u"Edit"_s, u"Redo"_s);
    EXPECT_EQ(field->text(), u"la lala la"_s);
    field->setSelection(0, 2);
    choose(u"Edit"_s, u"Copy"_s);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"la"_s);
    EXPECT_EQ(field->text(), u"la lala la"_s);
}

TEST_F(MainMenu, editItemsReachTheFieldAroundTheFocus)
{
    open();
    auto* field = focused<QLineEdit>();
    field->setText(u"words"_s);
    auto* inner = new QWidget(field);
    inner->setFocusPolicy(Qt::StrongFocus);
    inner->show();
    inner->setFocus();
    ASSERT_EQ(QApplication::focusWidget(), inner);
    choose(u"Edit"_s, u"Select All"_s);
    EXPECT_EQ(field->selectedText(), u"words"_s);
}

TEST_F(MainMenu, editItemsWithNothingToEditDoNothing)
{
    open();
    focused<KeyTaker>();
    QGuiApplication::clipboard()->setText(u"kept"_s);
    for (QAction* action : menu(u"Edit"_s)->actions())
        action->trigger();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"kept"_s);
}

TEST_F(MainMenu, editKeysAreLeftToWhoeverHasTheFocus)
{
    open();
    auto* page = focused<KeyTaker>();
    const QSignalSpy triggered(menu(u"Edit"_s), &QMenu::triggered);
    for (const Qt::Key key : {Qt::Key_Z, Qt::Key_X, Qt::Key_C, Qt::Key_V, Qt::Key_A})
        QTest::keyClick(page, key, Qt::ControlModifier);
    QTest::keyClick(page, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(triggered.isEmpty());
    EXPECT_EQ(page->taken,
              (QStringList{u"Ctrl+Z"_s, u"Ctrl+X"_s, u"Ctrl+C"_s, u"Ctrl+V"_s, u"Ctrl+A"_s, u"Ctrl+Shift+Z"_s}));
}

TEST_F(MainMenu, windowItemsServeTheWindow)
{
    open();
    choose(u"Window"_s, u"Zoom"_s);
    EXPECT_TRUE(window.isMaximized());
    choose(u"Window"_s, u"Zoom"_s);
    EXPECT_FALSE(window.isMaximized());
    choose(u"Window"_s, u"Minimise"_s);
    EXPECT_TRUE(window.isMinimized());
    window.showNormal();
    choose(u"Window"_s, u"Close"_s);
    EXPECT_FALSE(window.isVisible());
}

} // namespace
} // namespace orvane::test
