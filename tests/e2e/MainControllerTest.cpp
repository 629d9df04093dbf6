#include "main/Window/MainController.h"

#include "automation/view/AutomaterTab.h"
#include "main/Chrome/TabBar.h"
#include "platform/web/WebPage.h"
#include "suno/view/DownloaderTab.h"
#include "suno/view/SunoTab.h"
#include "tests/e2e/WorldTest.h"
#include "tests/platform/desktop/FakeTaskBar.h"

#include <QGuiApplication>
#include <QMainWindow>
#include <QTest>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class MainControllerTest : public WorldTest
{
protected:
    QWidget& toolsColumn() { return *world->controller().findChild<TabBar*>()->parentWidget(); }

    /// Gives the window's content this size.
    void resizeContent(const QSize& size)
    {
        QMainWindow* window = world->delegate.window();
        const QSize frame = window->size() - world->controller().size();
        window->resize(size + frame);
        ASSERT_TRUE(world->waitUntil([&] { return world->controller().size() == size; }));
    }
};

TEST_F(MainControllerTest, theToolsHaveTheirColumnAndTheSiteTheRest)
{
    open();
    for (const QSize size : {QSize(802, 520), QSize(1320, 860)}) {
        resizeContent(size);
        EXPECT_EQ(toolsColumn().geometry(), QRect(size.width() - 400, 0, 400, size.height()));
        EXPECT_EQ(world->pane().geometry(), QRect(0, 0, size.width() - 400, size.height()));
    }
}

TEST_F(MainControllerTest, theToolsStandInTheirOrder)
{
    EXPECT_EQ(open().controller().paneTitles(), (QStringList{u"Downloader"_s, u"Automater"_s}));
    EXPECT_EQ(world->controller().panes().first().view, &world->controller().downloader());
    EXPECT_EQ(world->controller().panes().last().view, &world->controller().automater());
    EXPECT_EQ(world->controller().selected(), 0);
}

TEST_F(MainControllerTest, anIndexOutsideThePanesChangesNothing)
{
    MainController& controller = open().controller();
    const int beyond = static_cast<int>(controller.panes().size());
    for (const int index : {-1, beyond, 99}) {
        controller.apply(index);
        EXPECT_EQ(controller.selected(), 0);
        controller.selectTab(index);
        EXPECT_EQ(controller.selected(), 0);
        EXPECT_TRUE(controller.downloader().isVisible());
        EXPECT_EQ(controller.findChild<TabBar*>()->selected(), 0);
    }
}

TEST_F(MainControllerTest, aStepGoesRoundTheEnds)
{
    MainController& controller = open().controller();
    const int last = static_cast<int>(controller.panes().size()) - 1;
    controller.step(-1);
    EXPECT_EQ(controller.selected(), last);
    EXPECT_EQ(controller.findChild<TabBar*>()->selected(), last);
    controller.step(+1);
    EXPECT_EQ(controller.selected(), 0);
    EXPECT_EQ(controller.findChild<TabBar*>()->selected(), 0);
}

TEST_F(MainControllerTest, doItPressesTheDownloadersButton)
{
    open().controller().doPrimaryAction();
    EXPECT_TRUE(world->logHas(u"No Suno session yet — open the Suno tab and sign in first."_s));
}

TEST_F(MainControllerTest, theAutomaterAsksTheDownloaderWhatToDoAndLeadsToIt)
{
    MainController& controller = open().controller();
    AutomaterRun& run = controller.automater().automater().run();
    ASSERT_TRUE(run.configProvider);
    EXPECT_EQ(run.configProvider(), controller.downloader().pipelineConfig());
    EXPECT_EQ(run.livePrerequisites().size(), 3);
    controller.step(-1);
    EXPECT_TRUE(controller.automater().isVisible());
    controller.automater().goToTab(0);
    EXPECT_TRUE(controller.downloader().isVisible());
}

TEST_F(MainControllerTest, theTitleSaysHowFarARunIs)
{
    AutomaterRun& run = open().controller().automater().automater().run();
    Q_EMIT run.runningChanged(true);
    Q_EMIT run.stageChanged(Stage::rename, StageState::running());
    EXPECT_EQ(world->delegate.window()->windowTitle(), u"33% — Orvane"_s);
    Q_EMIT run.runningChanged(false);
    EXPECT_EQ(world->delegate.window()->windowTitle(), u"Orvane"_s);
}

TEST_F(MainControllerTest, theTaskBarSaysHowFarARunIs)
{
    QGuiApplication::setDesktopFileName(u"example.orvane.Orvane"_s);
    FakeTaskBar taskBar;
    AutomaterRun& run = open().controller().automater().automater().run();
    Q_EMIT run.runningChanged(true);
    Q_EMIT run.stageChanged(Stage::rename, StageState::running());
    Q_EMIT run.runningChanged(false);
    const QString program = u"application://example.orvane.Orvane.desktop"_s;
    EXPECT_EQ(taskBar.told(),
              (QList<FakeTaskBar::Update>{{program, 0.0, true}, {program, 0.33, true}, {program, 0.0, false}}));
}

TEST_F(MainControllerTest, theKeyOfDoItReachesTheDownloader)
{
    open();
    world->delegate.window()->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(world->delegate.window()));
    world->control(u"chooseFolder"_s).setFocus();
    QTest::keyClick(&world->control(u"chooseFolder"_s), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_TRUE(world->logHas(u"No Suno session yet — open the Suno tab and sign in first."_s));
    EXPECT_TRUE(world->dialogs.startingPoints.isEmpty());
}

TEST_F(MainControllerTest, reloadBringsTheSiteHome)
{
    Session& session = open().services.session;
    ASSERT_TRUE(world->signIn());
    const QUrl home = world->service.endpoints().sunoHome;
    for (const auto reload : {&MainController::reloadCurrent, &MainController::reloadSuno}) {
        const auto onProject = [&] {
            return session.openSunoURL && session.openSunoURL->path().startsWith(u"/project/");
        };
        ASSERT_TRUE(world->clickInPageUntil(u"a[href^='/project/']"_s, onProject));
        (world->controller().*reload)();
        EXPECT_TRUE(world->waitUntil([&] { return session.openSunoURL == home; }));
    }
}

} // namespace
} // namespace orvane::test
