#include "suno/view/DownloaderTab.h"

#include "main/Chrome/AccentButton.h"
#include "main/Chrome/Badge.h"
#include "main/Chrome/DarkField.h"
#include "main/Chrome/ElidedLabel.h"
#include "main/Chrome/ProgressLine.h"
#include "main/Chrome/StatusPill.h"
#include "main/Chrome/Theme.h"
#include "main/Chrome/TickBox.h"
#include "tests/suno/view/DownloaderFixture.h"

#include <QDir>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QTest>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

class DownloaderTabTest : public DownloaderFixture
{
protected:
    DownloaderTabTest() { makeTab(); }

    /// A line with the time at which the test's clock stands.
    ShownLine line(const QString& message, const QColor& colour) const
    {
        const QString time = QLocale().toString(clock.now().time(), QLocale::ShortFormat);
        return {.text = u"[%1] %2"_s.arg(time, message), .colour = colour};
    }

    ShownLine info(const QString& message) const { return line(message, Theme::textSecond); }

    ShownLine success(const QString& message) const { return line(message, Theme::ok); }

    ShownLine error(const QString& message) const { return line(message, Theme::bad); }

    QStringList texts() const
    {
        QStringList found;
        for (const QLabel* label : tab->findChildren<QLabel*>())
            found.append(label->text());
        return found;
    }

    void untick(const QString& asset) { part<TickBox>(asset)->setChecked(false); }

    QString badge() const { return part<Badge>(u"stateBadge"_s)->text(); }

    QString progressLabel() const { return part<ElidedLabel>(u"progressLabel"_s)->text(); }
};

TEST_F(DownloaderTabTest, startsIdleWithEveryAssetTicked)
{
    EXPECT_THAT(texts(), testing::IsSupersetOf({u"SUNO SESSION"_s, u"Workspace"_s, u"DOWNLOAD ASSETS"_s,
                                                u"SAVE LOCATION"_s, u"LIVE PROGRESS"_s}));
    EXPECT_EQ(part<TickBox>(u"audio"_s)->text(), u"MP3 audio"_s);
    EXPECT_EQ(part<TickBox>(u"lyrics"_s)->text(), u"Lyrics (.txt)"_s);
    EXPECT_EQ(part<TickBox>(u"lrc"_s)->text(), u"Timed (.lrc)"_s);
    EXPECT_EQ(part<TickBox>(u"artwork"_s)->text(), u"Cover art"_s);
    EXPECT_EQ(tab->pipelineConfig().assets, AssetSet(allAssets.begin(), allAssets.end()));
    EXPECT_EQ(part<QPushButton>(u"chooseFolder"_s)->text(), u"Choose folder…"_s);
    EXPECT_EQ(part<AccentButton>(u"startButton"_s)->text(), u"Start batch export"_s);
    EXPECT_FALSE(part<AccentButton>(u"startButton"_s)->isDanger());
    EXPECT_EQ(badge(), u"IDLE"_s);
    EXPECT_EQ(part<Badge>(u"stateBadge"_s)->colour(), Theme::textMuted);
    EXPECT_EQ(part<ProgressLine>(u"progress"_s)->value(), 0);
    EXPECT_EQ(progressLabel(), u"0 of 0 tracks"_s);
    EXPECT_EQ(part<DarkField>(u"manualField"_s)->placeholderText(), u"Paste a workspace ID"_s);
    EXPECT_EQ(part<ElidedLabel>(u"destLabel"_s)->text(), folder());
    EXPECT_EQ(lines(), QList<ShownLine>{info(u"Ready. Sign in on the left, then start."_s)});
}

TEST_F(DownloaderTabTest, withoutATokenThePillAsksForTheSignInAndNoListIsRead)
{
    EXPECT_EQ(part<StatusPill>(u"statusPill"_s)->text(), u"○ Sign in on the left; the token is picked up on its own"_s);
    EXPECT_EQ(part<StatusPill>(u"statusPill"_s)->colour(), Theme::textMuted);
    tab->loadWorkspaces();
    EXPECT_TRUE(service.requests().isEmpty());
}

TEST_F(DownloaderTabTest, aTokenTurnsThePillAndListsTheProjects)
{
    signInAndList();
    EXPECT_EQ(part<StatusPill>(u"statusPill"_s)->text(), u"● Signed in — token captured automatically"_s);
    EXPECT_EQ(part<StatusPill>(u"statusPill"_s)->colour(), Theme::ok);
    EXPECT_EQ(lines(), (QList<ShownLine>{info(u"Ready. Sign in on the left, then start."_s),
                                         info(u"Loaded 2 workspace(s) from Suno."_s)}));
    session.setToken({});
    EXPECT_EQ(part<StatusPill>(u"statusPill"_s)->colour(), Theme::textMuted);
}

TEST_F(DownloaderTabTest, aTokenThatWasThereBeforeTheTabIsSeen)
{
    signIn();
    makeTab();
    EXPECT_TRUE(waitUntil([this] { return rows().size() == 6; }));
    EXPECT_EQ(part<StatusPill>(u"statusPill"_s)->colour(), Theme::ok);
}

TEST_F(DownloaderTabTest, thePickerOffersTheProjectOpenInSunoUntilProjectsAreListed)
{
    const QString whole = u"All tracks — your whole library"_s;
    const QString manual = u"Enter an ID manually…"_s;
    EXPECT_EQ(rows(), (QStringList{whole, u"Use the workspace open in Suno"_s, u"--"_s, manual}));
    signInAndList();
    EXPECT_EQ(rows().at(0), whole);
    EXPECT_EQ(rows().at(1), u"--"_s);
    EXPECT_EQ(rows().at(4), u"--"_s);
    EXPECT_EQ(rows().at(5), manual);
    EXPECT_EQ(tab->selectedWorkspaceID(), std::nullopt);
}

TEST_F(DownloaderTabTest, aListIsNotReadTwiceAtATime)
{
    service.script(silent(u"/api/project"_s));
    signIn();
    signIn();
    tab->loadWorkspaces();
    ASSERT_TRUE(waitUntil([this] { return requests(u"/api/project"_s) > 0; }));
    tab->loadWorkspaces();
    tab.reset();
    EXPECT_EQ(requests(u"/api/project"_s), 1);
}

TEST_F(DownloaderTabTest, aListThatFailsLeavesTheProjectsThatAreShown)
{
    signInAndList();
    const QStringList before = rows();
    service.clearRequests();
    service.script(answering(500, u"/api/project"_s, 3));
    signIn();
    ASSERT_TRUE(waitUntil([this] { return requests(u"/api/project"_s) == 3; }));
    // The next list comes only after the failed one has ended.
    ASSERT_TRUE(waitUntil([this] {
        tab->loadWorkspaces();
        return requests(u"/api/project"_s) >= 4;
    }));
    EXPECT_EQ(rows(), before);
    EXPECT_TRUE(waitUntil([this] { return lines().size() >= 3; }));
}

TEST_F(DownloaderTabTest, theSelectedProjectStaysSelectedWhenTheListComesAnew)
{
    signInAndList();
    const QString name = rows().at(3);
    pick(name);
    const auto identifier = tab->selectedWorkspaceID();
    ASSERT_TRUE(identifier);
    signIn();
    ASSERT_TRUE(waitUntil([this] { return lines().size() == 3; }));
    EXPECT_EQ(part<PopUpButton>(u"workspacePicker"_s)->currentText(), name);
    EXPECT_EQ(tab->selectedWorkspaceID(), identifier);
}

TEST_F(DownloaderTabTest, theFieldForAnIdentifierShowsOnlyWhereItIsMeant)
{
    tab->show();
    auto* field = part<DarkField>(u"manualField"_s);
    EXPECT_FALSE(field->isVisible());
    pick(u"Enter an ID manually…"_s);
    EXPECT_TRUE(field->isVisible());
    pick(u"All tracks — your whole library"_s);
    EXPECT_FALSE(field->isVisible());
}

TEST_F(DownloaderTabTest, aTypedIdentifierIsTrimmedAndBlanksCountAsNone)
{
    pick(u"Enter an ID manually…"_s);
    part<DarkField>(u"manualField"_s)->setText(u"  abc "_s);
    EXPECT_EQ(tab->selectedWorkspaceID(), u"abc"_s);
    part<DarkField>(u"manualField"_s)->setText(u"   "_s);
    EXPECT_EQ(tab->selectedWorkspaceID(), std::nullopt);
    EXPECT_EQ(tab->pipelineConfig().workspace, QString());
}

TEST_F(DownloaderTabTest, aTypedIdentifierSurvivesANewList)
{
    pick(u"Enter an ID manually…"_s);
    part<DarkField>(u"manualField"_s)->setText(u"abc"_s);
    signInAndList();
    EXPECT_EQ(tab->selectedWorkspaceID(), u"abc"_s);
    EXPECT_FALSE(part<DarkField>(u"manualField"_s)->isHidden());
}

TEST_F(DownloaderTabTest, noRowAtAllStandsForTheWholeLibrary)
{
    part<PopUpButton>(u"workspacePicker"_s)->setCurrentIndex(-1);
    EXPECT_EQ(tab->selectedWorkspaceID(), std::nullopt);
}

TEST_F(DownloaderTabTest, theProjectOpenInSunoIsTakenFromItsAddress)
{
    pick(u"Use the workspace open in Suno"_s);
    EXPECT_EQ(tab->selectedWorkspaceID(), std::nullopt);
    const QString identifier = u"0123456789abcdef0123456789abcdef"_s;
    session.openSunoURL = service.endpoints().sunoHome.resolved(QUrl(u"/project/"_s + identifier));
    EXPECT_EQ(tab->selectedWorkspaceID(), identifier);
}

TEST_F(DownloaderTabTest, anOpenPageWithoutAProjectReadsTheWholeLibrary)
{
    pick(u"Use the workspace open in Suno"_s);
    session.openSunoURL = service.endpoints().sunoHome;
    // Listed projects take that row away, so the service has none.
    service.script(answering(500, u"/api/project"_s, 100));
    signIn();
    runToTheEnd();
    EXPECT_EQ(lines().last(), success(u"Done — 7 tracks saved."_s));
    for (const demo::SeenRequest& request : service.requests())
        EXPECT_FALSE(request.target.contains("project_id"));
}

TEST_F(DownloaderTabTest, theChosenFolderIsTheDestination)
{
    const QUrl chosen = QUrl::fromLocalFile(home.filePath(u"Chosen"_s));
    dialogs.folder = chosen;
    part<QPushButton>(u"chooseFolder"_s)->click();
    EXPECT_EQ(dialogs.startingPoints, QList<QUrl>{QUrl::fromLocalFile(folder())});
    EXPECT_EQ(session.destination(), chosen);
    EXPECT_EQ(part<ElidedLabel>(u"destLabel"_s)->text(), chosen.toLocalFile());
}

TEST_F(DownloaderTabTest, aClosedPanelLeavesTheDestination)
{
    QSignalSpy moves(&session, &Session::destinationChanged);
    dialogs.folder = std::nullopt;
    tab->chooseFolder();
    EXPECT_EQ(moves.count(), 0);
    EXPECT_EQ(part<ElidedLabel>(u"destLabel"_s)->text(), folder());
}

TEST_F(DownloaderTabTest, aDestinationChosenElsewhereIsShown)
{
    session.setDestination(QUrl::fromLocalFile(home.filePath(u"Elsewhere"_s)));
    EXPECT_EQ(part<ElidedLabel>(u"destLabel"_s)->text(), home.filePath(u"Elsewhere"_s));
}

TEST_F(DownloaderTabTest, theConfigurationForTheAutomaterIsWhatTheTabShows)
{
    signInAndList();
    pick(rows().at(2));
    untick(u"artwork"_s);
    untick(u"lyrics"_s);
    EXPECT_EQ(tab->pipelineConfig(), (PipelineConfig{.workspace = *tab->selectedWorkspaceID(),
                                                     .assets = {Asset::audio, Asset::lrc},
                                                     .destination = session.destination(),
                                                     .token = session.token()}));
    EXPECT_FALSE(tab->pipelineConfig().workspace.isEmpty());
}

TEST_F(DownloaderTabTest, aWholeRunIsToldLineByLineInItsColours)
{
    signInAndList();
    const auto seen = lines().size();
    runToTheEnd();
    QStringList messages;
    QList<QColor> colours;
    for (const ShownLine& shown : lines().mid(seen)) {
        messages.append(shown.text.section(u"] "_s, 1));
        colours.append(shown.colour);
    }
    EXPECT_EQ(messages, (QStringList{u"Querying page 1…"_s, u"Page 1: 5 tracks (total 5)"_s, u"Querying page 2…"_s,
                                     u"Page 2: 2 tracks (total 7)"_s, u"Querying page 3…"_s, u"Found 7 tracks."_s,
                                     u"Done — 7 tracks saved."_s}));
    EXPECT_EQ(colours, (QList<QColor>{Theme::textSecond, Theme::textSecond, Theme::textSecond, Theme::textSecond,
                                      Theme::textSecond, Theme::ok, Theme::ok}));
}

TEST_F(DownloaderTabTest, everyLineBearsTheTimeAtWhichItWasSaid)
{
    clock.pass(90min);
    tab->log(u"Later"_s, LogLevel::info);
    EXPECT_EQ(lines(), (QList<ShownLine>{{.text = u"[03:04:05] Ready. Sign in on the left, then start."_s,
                                          .colour = Theme::textSecond},
                                         {.text = u"[04:34:05] Later"_s, .colour = Theme::textSecond}}));
}

TEST_F(DownloaderTabTest, aRunShowsItselfAndGivesTheButtonBack)
{
    signInAndList();
    startAndHold();
    EXPECT_EQ(part<AccentButton>(u"startButton"_s)->text(), u"Stop"_s);
    EXPECT_TRUE(part<AccentButton>(u"startButton"_s)->isDanger());
    EXPECT_EQ(badge(), u"RUNNING"_s);
    EXPECT_EQ(part<Badge>(u"stateBadge"_s)->colour(), Theme::accent);
    tab->toggleRun();
    ASSERT_TRUE(waitForIdle());
    EXPECT_EQ(part<AccentButton>(u"startButton"_s)->text(), u"Start batch export"_s);
    EXPECT_FALSE(part<AccentButton>(u"startButton"_s)->isDanger());
    EXPECT_EQ(badge(), u"IDLE"_s);
    EXPECT_EQ(part<Badge>(u"stateBadge"_s)->colour(), Theme::textMuted);
    EXPECT_EQ(progressLabel(), QString());
}

TEST_F(DownloaderTabTest, theBarFollowsTheTracksAndStaysFullWhenTheWordsGo)
{
    signInAndList();
    QList<double> values;
    QObject::connect(part<ProgressLine>(u"progress"_s), &ProgressLine::valueChanged, tab.get(),
                     [&](double value) { values.append(value); });
    runToTheEnd();
    EXPECT_EQ(values, (QList<double>{1. / 7, 2. / 7, 3. / 7, 4. / 7, 5. / 7, 6. / 7, 1}));
    EXPECT_EQ(progressLabel(), QString());
    EXPECT_EQ(part<QLabel>(u"timeLeft"_s)->text(), QString());
}

TEST_F(DownloaderTabTest, aSecondRunStartsWithAnEmptyBar)
{
    signInAndList();
    runToTheEnd();
    ASSERT_EQ(part<ProgressLine>(u"progress"_s)->value(), 1);
    startAndHold();
    EXPECT_EQ(part<ProgressLine>(u"progress"_s)->value(), 0);
}

TEST_F(DownloaderTabTest, onlyWhatIsTickedIsSaved)
{
    signInAndList();
    for (const QString& asset : {u"audio"_s, u"lyrics"_s, u"artwork"_s})
        untick(asset);
    runToTheEnd();
    EXPECT_EQ(QDir(folder()).entryList(QDir::Files).size(), 7);
    EXPECT_EQ(QDir(folder()).entryList({u"*.lrc"_s}, QDir::Files).size(), 7);
}

TEST_F(DownloaderTabTest, nothingTickedIsSaidInRed)
{
    signInAndList();
    for (const Asset asset : allAssets)
        untick(rawValue(asset));
    runToTheEnd();
    EXPECT_EQ(lines().last(), error(u"Nothing selected to download — tick at least one asset."_s));
}

TEST_F(DownloaderTabTest, theSelectedProjectIsTheOneThatIsRead)
{
    signInAndList();
    pick(rows().at(2));
    service.clearRequests();
    runToTheEnd();
    EXPECT_GT(requests(u"/api/feed/v2?page=1&project_id="_s + *tab->selectedWorkspaceID()), 0);
}

TEST_F(DownloaderTabTest, theButtonStopsARun)
{
    signInAndList();
    startAndHold();
    part<AccentButton>(u"startButton"_s)->click();
    EXPECT_THAT(lines(), testing::Contains(error(u"Stopping…"_s)));
    ASSERT_TRUE(waitForIdle());
    EXPECT_EQ(badge(), u"IDLE"_s);
    EXPECT_TRUE(QDir(folder()).entryList(QDir::Files).isEmpty());
}

TEST_F(DownloaderTabTest, theProjectsAreListedAgainAfterAStoppedRun)
{
    signInAndList();
    startAndHold();
    tab->toggleRun();
    ASSERT_TRUE(waitForIdle());
    signIn();
    EXPECT_TRUE(waitUntil([this] { return lines().last() == info(u"Loaded 2 workspace(s) from Suno."_s); }));
}

TEST_F(DownloaderTabTest, startingWithoutATokenSaysOneLineAndChangesNothing)
{
    part<AccentButton>(u"startButton"_s)->click();
    EXPECT_EQ(lines(), (QList<ShownLine>{info(u"Ready. Sign in on the left, then start."_s),
                                         error(u"No Suno session yet — open the Suno tab and sign in first."_s)}));
    EXPECT_EQ(badge(), u"IDLE"_s);
    EXPECT_EQ(progressLabel(), u"0 of 0 tracks"_s);
}

TEST_F(DownloaderTabTest, startingWhileTheAutomaterRunsSaysOneLineAndChangesNothing)
{
    signInAndList();
    const auto seen = lines();
    session.automationInProgress = true;
    tab->toggleRun();
    EXPECT_EQ(lines(),
              seen + QList<ShownLine>{error(u"The Automater is running. Let it finish, or stop it there first."_s)});
    EXPECT_EQ(badge(), u"IDLE"_s);
    EXPECT_EQ(part<AccentButton>(u"startButton"_s)->text(), u"Start batch export"_s);
    EXPECT_FALSE(session.downloadInProgress);
}

TEST_F(DownloaderTabTest, aRejectedSessionIsSaidInRedAndTheTabRestsAgain)
{
    session.setToken(u"worthless"_s);
    runToTheEnd();
    EXPECT_EQ(lines().last(), error(u"Suno rejected the session (HTTP 401). Open the Suno tab and sign in again."_s));
    EXPECT_EQ(badge(), u"IDLE"_s);
    EXPECT_EQ(part<ProgressLine>(u"progress"_s)->value(), 0);
}

TEST_F(DownloaderTabTest, whatAPartialReadFoundIsRedAndSavedAllTheSame)
{
    signInAndList();
    service.script(answering(404, u"page=2"_s, 1));
    runToTheEnd();
    EXPECT_EQ(lines().at(lines().size() - 2), error(u"Found 5 tracks."_s));
    EXPECT_EQ(lines().last(), error(u"Incomplete — Suno stopped returning pages, so this is only part of the library. "
                                    "Run it again to pick up the rest."_s));
    EXPECT_EQ(QDir(folder()).entryList({u"*.mp3"_s}, QDir::Files).size(), 5);
}

TEST_F(DownloaderTabTest, returnStartsARunAndDoesNotStopOne)
{
    signInAndList();
    service.script(silent(u"page=1"_s));
    QTest::keyClick(tab.get(), Qt::Key_Return);
    EXPECT_TRUE(session.downloadInProgress);
    QTest::keyClick(tab.get(), Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_THAT(lines(), testing::Not(testing::Contains(error(u"Stopping…"_s))));
    EXPECT_TRUE(session.downloadInProgress);
}

TEST_F(DownloaderTabTest, returnInTheFieldForAnIdentifierStartsARun)
{
    signInAndList();
    tab->show();
    pick(u"Enter an ID manually…"_s);
    QTest::keyClicks(part<DarkField>(u"manualField"_s), u"abc"_s);
    service.script(silent(u"page=1"_s));
    QTest::keyClick(part<DarkField>(u"manualField"_s), Qt::Key_Return);
    EXPECT_TRUE(session.downloadInProgress);
    EXPECT_TRUE(waitUntil([this] { return requests(u"/api/feed/v2?page=1&project_id=abc"_s) == 1; }));
}

TEST_F(DownloaderTabTest, returnOnTheFolderButtonPressesThatButton)
{
    signInAndList();
    tab->show();
    part<QPushButton>(u"chooseFolder"_s)->setFocus();
    QTest::keyClick(part<QPushButton>(u"chooseFolder"_s), Qt::Key_Return);
    EXPECT_EQ(dialogs.startingPoints.size(), 1);
    EXPECT_FALSE(session.downloadInProgress);
}

TEST_F(DownloaderTabTest, aHeldReturnStartsNothingTwice)
{
    QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, u"\r"_s, true);
    QCoreApplication::sendEvent(tab.get(), &repeated);
    EXPECT_EQ(lines().size(), 1);
}

TEST_F(DownloaderTabTest, thePrimaryActionOfTheMenuStartsAndStops)
{
    signInAndList();
    service.script(silent(u"page=1"_s));
    PrimaryAction& action = *tab;
    action.performPrimaryAction();
    EXPECT_TRUE(session.downloadInProgress);
    action.performPrimaryAction();
    ASSERT_TRUE(waitForIdle());
    EXPECT_THAT(lines(), testing::Contains(error(u"Stopping…"_s)));
}

TEST_F(DownloaderTabTest, closingTheTabInTheMiddleOfARunEndsTheRun)
{
    signInAndList();
    startAndHold();
    tab.reset();
    EXPECT_FALSE(session.downloadInProgress);
}

TEST_F(DownloaderTabTest, closingTheTabWhileTheProjectsAreReadEndsThat)
{
    service.script(silent(u"/api/project"_s, 3));
    signIn();
    ASSERT_TRUE(waitUntil([this] { return requests(u"/api/project"_s) == 1; }));
    tab.reset();
    EXPECT_EQ(requests(u"/api/project"_s), 1);
}

} // namespace
} // namespace orvane::test
