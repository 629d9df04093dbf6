#include "main/Window/AppDelegate.h"

#include "main/App/AppInfo.h"
#include "main/Window/MainController.h"
#include "suno/view/SunoTab.h"
#include "tests/e2e/WorldTest.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class AppDelegateTest : public WorldTest
{
protected:
    ~AppDelegateTest() override { AppDelegate::relaunchAfterQuit = false; }

    void choose(const QString& title)
    {
        const QList<QAction*> items = world->delegate.window()->menuBar()->findChildren<QAction*>();
        for (QAction* item : items) {
            if (item->text() == title)
                return item->trigger();
        }
        ADD_FAILURE() << "no item " << title.toStdString();
    }

    bool isOpen() { return world->delegate.window()->isVisible(); }
};

TEST_F(AppDelegateTest, theWindowOpensWithItsTitleAndItsLeastSize)
{
    open();
    EXPECT_TRUE(isOpen());
    EXPECT_EQ(world->delegate.window()->windowTitle(), u"Orvane"_s);
    EXPECT_EQ(world->controller().minimumSize(), QSize(802, 520));
}

TEST_F(AppDelegateTest, withBothRunsGoingItAsksAboutTheDownloadOnly)
{
    open().services.session.downloadInProgress = true;
    world->services.session.automationInProgress = true;
    EXPECT_FALSE(world->delegate.applicationShouldTerminate());
    ASSERT_EQ(world->dialogs.questions.size(), 1);
    EXPECT_EQ(world->dialogs.questions.first().text, u"A download is still running."_s);
}

TEST_F(AppDelegateTest, aCancelledQuitForgetsTheRelaunch)
{
    open().services.session.automationInProgress = true;
    AppDelegate::relaunchAfterQuit = true;
    EXPECT_FALSE(world->delegate.applicationShouldTerminate());
    EXPECT_FALSE(AppDelegate::relaunchAfterQuit);
}

TEST_F(AppDelegateTest, aRelaunchThatWasAskedForComesAtTheEndAndFindsWhatWasSet)
{
    int starts = 0;
    open().delegate.startAnew = [this, &starts] {
        ++starts;
        const Preferences found(folder.path(u"preferences.json"_s));
        EXPECT_EQ(found.text(u"appLanguage"_s), u"de"_s);
    };
    world->services.preferences.set(u"appLanguage"_s, u"de"_s);
    world->delegate.applicationWillTerminate();
    EXPECT_EQ(starts, 0) << "nobody asked for it";
    AppDelegate::relaunchAfterQuit = true;
    world->delegate.applicationWillTerminate();
    EXPECT_EQ(starts, 1);
}

TEST_F(AppDelegateTest, aLaterStartBringsTheWindowBackFromTheTaskBarAndBeforeOthers)
{
    QMainWindow* const window = open().delegate.window();
    QWidget other;
    other.show();
    other.activateWindow();
    window->showMinimized();
    ASSERT_TRUE(world->waitUntil([&] { return window->isMinimized() && !window->isActiveWindow(); }));
    world->delegate.comeForward({});
    EXPECT_TRUE(world->waitUntil([&] { return !window->isMinimized() && window->isActiveWindow(); }));
    EXPECT_TRUE(isOpen());
}

TEST_F(AppDelegateTest, aMaximisedWindowStaysSoWhenItComesForward)
{
    QMainWindow* const window = open().delegate.window();
    window->showMaximized();
    world->delegate.comeForward({});
    EXPECT_TRUE(window->isMaximized());
}

TEST_F(AppDelegateTest, anIdleWindowClosesWithoutAQuestion)
{
    open().delegate.window()->close();
    EXPECT_FALSE(isOpen());
    EXPECT_TRUE(world->dialogs.questions.isEmpty());
}

TEST_F(AppDelegateTest, quittingFromTheMenuIsGuardedToo)
{
    open().services.session.downloadInProgress = true;
    choose(u"Quit Orvane"_s);
    EXPECT_TRUE(isOpen());
    EXPECT_EQ(world->dialogs.questions.size(), 1);
    world->dialogs.answer = true;
    choose(u"Quit Orvane"_s);
    EXPECT_FALSE(isOpen());
}

TEST_F(AppDelegateTest, aChosenFolderBecomesTheDestinationWithoutAGuardsQuestion)
{
    open().services.session.downloadInProgress = true;
    const QUrl before = world->services.session.destination();
    world->dialogs.folder = QUrl::fromLocalFile(folder.path(u"elsewhere"_s));
    choose(u"Choose Save Folder…"_s);
    EXPECT_EQ(world->dialogs.startingPoints, QList<QUrl>{before});
    EXPECT_EQ(world->services.session.destination(), *world->dialogs.folder);
    EXPECT_TRUE(world->dialogs.told.isEmpty());
    EXPECT_TRUE(world->dialogs.questions.isEmpty());
}

TEST_F(AppDelegateTest, aClosedFolderPanelKeepsTheDestination)
{
    const QUrl before = open().services.session.destination();
    choose(u"Choose Save Folder…"_s);
    EXPECT_EQ(world->dialogs.startingPoints, QList<QUrl>{before});
    EXPECT_EQ(world->services.session.destination(), before);
}

TEST_F(AppDelegateTest, aboutSaysTheVersion)
{
    open();
    choose(u"About Orvane"_s);
    EXPECT_EQ(world->dialogs.told, (QList<Told>{{u"Orvane "_s + AppInfo::version(), u"GPL-3.0-or-later"_s}}));
}

TEST_F(AppDelegateTest, zoomItemsReachThePageAndArePutDown)
{
    SunoTab& pane = open().pane();
    ASSERT_EQ(pane.zoom(), 0.8);
    choose(u"Zoom Suno In"_s);
    EXPECT_EQ(pane.zoom(), 0.85);
    choose(u"Zoom Suno Out"_s);
    choose(u"Zoom Suno Out"_s);
    EXPECT_EQ(pane.zoom(), 0.75);
    choose(u"Suno Actual Size"_s);
    EXPECT_EQ(pane.zoom(), 1.0);
    EXPECT_EQ(world->services.preferences.number(SunoTab::zoomKey), 1.0);
}

TEST_F(AppDelegateTest, editItemsActOnThePageThatHasTheFocus)
{
    open();
    ASSERT_TRUE(world->waitUntil([this] { return world->pageHas(u"#sign-in"_s); }));
    world->pane().setFocus();
    ASSERT_TRUE(world->waitUntil([this] {
        const QWidget* focus = QApplication::focusWidget();
        return focus && world->pane().isAncestorOf(focus);
    }));
    QGuiApplication::clipboard()->setText(u"before"_s);
    const auto copied = [this] {
        choose(u"Select All"_s);
        choose(u"Copy"_s);
        return world->person.waitUntil(
            [] { return QGuiApplication::clipboard()->text().contains(u"This page stands in for the service."); },
            std::chrono::seconds(1));
    };
    EXPECT_TRUE(world->waitUntil(copied));
}

} // namespace
} // namespace orvane::test
