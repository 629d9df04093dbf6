#include "automation/view/AutomaterTab.h"

#include "automation/view/LightView.h"
#include "automation/view/StepsView.h"
#include "main/Chrome/AccentButton.h"
#include "main/Chrome/ElidedLabel.h"
#include "main/Chrome/PopUpButton.h"
#include "main/Chrome/ProgressLine.h"
#include "main/Chrome/SegmentBar.h"
#include "main/Chrome/Theme.h"
#include "main/Chrome/TickBox.h"
#include "tests/automation/view/AutomaterTabFixture.h"

#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QTest>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class AutomaterTabTest : public AutomaterTabFixture
{
protected:
    AccentButton* button() const { return part<AccentButton>(u"runButton"_s); }

    QString text(const QString& label) const { return part<QLabel>(label)->text(); }

    QWidget* checklist() const { return part<QWidget>(u"checklistCard"_s); }

    QString summary(Stage stage) const { return card(stage)->module().summary; }

    void pick(const QString& name, int row)
    {
        auto* picker = part<PopUpButton>(name);
        picker->setCurrentIndex(row);
        Q_EMIT picker->activated(row);
    }

    QStringList headings() const
    {
        QStringList found;
        for (const QLabel* label : tab->findChildren<QLabel*>())
            found.append(label->text());
        return found;
    }
};

TEST_F(AutomaterTabTest, everySectionIsThere)
{
    EXPECT_THAT(headings(),
                testing::IsSupersetOf({u"RUN IT OVER"_s, u"AUTOMATION"_s, u"OUTPUT"_s, u"BEFORE IT CAN RUN"_s, u"RUN"_s,
                                       u"KEEP IT CURRENT"_s, u"YOUR TAG"_s}));
    QStringList sources;
    for (const SegmentBar::Item& item : part<SegmentBar>(u"sourcePicker"_s)->items())
        sources.append(item.title);
    EXPECT_EQ(sources, (QStringList{u"Suno library"_s, u"This folder"_s, u"Selected track"_s}));
    EXPECT_EQ(part<ElidedLabel>(u"outputLabel"_s)->text(), QDir::toNativeSeparators(folder()));
    EXPECT_EQ(button()->text(), u"Run everything"_s);
}

TEST_F(AutomaterTabTest, theStagesHaveTheirTogglesAndLines)
{
    EXPECT_EQ(part<TickBox>(u"renameToggle"_s)->text(), u"Rename to your track titles"_s);
    EXPECT_EQ(part<TickBox>(u"tagToggle"_s)->text(), u"Write tags into the MP3s"_s);
    EXPECT_EQ(part<TickBox>(u"masterToggle"_s)->text(), u"Master a copy"_s);
    EXPECT_EQ(part<TickBox>(u"videoToggle"_s)->text(), u"Render a video per track"_s);
    EXPECT_THAT(headings(), testing::IsSupersetOf({u"using the format set in the Namer tab"_s,
                                                   u"title, album, artwork and lyrics, so players show them"_s,
                                                   u"to the target set in the Mastering tab, into Mastered/"_s,
                                                   u"using the look set in the Visualizer tab, into Videos/"_s}));
}

TEST_F(AutomaterTabTest, videosAreForThoseWhoTurnThemOn)
{
    EXPECT_FALSE(part<TickBox>(u"videoToggle"_s)->isChecked());
    EXPECT_FALSE(tab->choices().video);
    part<TickBox>(u"videoToggle"_s)->click();
    EXPECT_TRUE(tab->choices().video);
    EXPECT_TRUE(card(Stage::video)->toggle()->isChecked());
    card(Stage::video)->toggle()->click();
    EXPECT_FALSE(tab->choices().video);
}

TEST_F(AutomaterTabTest, theWebsiteCannotBeChosenForVideos)
{
    auto* renderer = part<SegmentBar>(u"rendererPicker"_s);
    ASSERT_EQ(renderer->items().size(), 2);
    renderer->choose(1);
    EXPECT_EQ(renderer->selectedIndex(), 0);
    EXPECT_EQ(tab->choices().renderer, VideoRenderer::own);
    EXPECT_TRUE(text(u"videoNote"_s).startsWith(u"Rendered by the app itself"));
}

TEST_F(AutomaterTabTest, aTickInThePanelAndOneOnTheCardAreTheSame)
{
    EXPECT_TRUE(tab->choices().rename);
    part<TickBox>(u"renameToggle"_s)->click();
    EXPECT_FALSE(card(Stage::rename)->toggle()->isChecked());
    EXPECT_FALSE(tab->choices().rename);
    card(Stage::master)->toggle()->click();
    EXPECT_FALSE(part<TickBox>(u"masterToggle"_s)->isChecked());
    EXPECT_FALSE(tab->choices().master);
    EXPECT_TRUE(tab->choices().tag);
}

TEST_F(AutomaterTabTest, aCardShowsThePanelOfItsStage)
{
    tab->resize(400, 900);
    tab->show();
    card(Stage::rename)->click();
    EXPECT_TRUE(part<QWidget>(u"renameToggle"_s)->isVisible());
    EXPECT_FALSE(part<QWidget>(u"masterToggle"_s)->isVisible());
    card(Stage::master)->click();
    EXPECT_FALSE(part<QWidget>(u"renameToggle"_s)->isVisible());
    EXPECT_TRUE(part<QWidget>(u"masterToggle"_s)->isVisible());
}

TEST_F(AutomaterTabTest, theSourceChangesNoteSummaryAndChecklist)
{
    session.setToken({});
    EXPECT_EQ(text(u"sourceNote"_s),
              u"Reads your Suno library and downloads it first, then runs the ticked stages over "
              "everything it saved."_s);
    EXPECT_EQ(summary(Stage::read), u"whole library"_s);
    EXPECT_FALSE(button()->isEnabled());
    EXPECT_EQ(text(u"flowLabel"_s), u"One thing to set up first."_s);
    EXPECT_FALSE(checklist()->isHidden());
    pickSource(RunSource::folder);
    EXPECT_EQ(text(u"sourceNote"_s), u"Runs the ticked stages over the tracks already in your folder. Nothing is "
                                     "downloaded and nothing is fetched from Suno."_s);
    EXPECT_EQ(summary(Stage::read), u"in place"_s);
    EXPECT_TRUE(button()->isEnabled());
    EXPECT_TRUE(checklist()->isHidden());
    pickSource(RunSource::selection);
    EXPECT_EQ(text(u"sourceNote"_s),
              u"Runs the ticked stages over the track selected in Files. Nothing is downloaded."_s);
    EXPECT_EQ(summary(Stage::read), u"nothing selected"_s);
    select(u"Song.mp3"_s);
    EXPECT_EQ(summary(Stage::read), u"in place"_s);
}

TEST_F(AutomaterTabTest, signingInEnablesTheButton)
{
    session.setToken({});
    EXPECT_FALSE(button()->isEnabled());
    session.setToken(service->currentToken());
    EXPECT_TRUE(button()->isEnabled());
    EXPECT_TRUE(checklist()->isHidden());
}

TEST_F(AutomaterTabTest, whatIsTickedInTheDownloaderShowsAtTheNextShow)
{
    EXPECT_EQ(summary(Stage::download), u"artwork, audio, lrc, lyrics"_s);
    assets = {};
    session.setToken({});
    tab->refresh();
    EXPECT_EQ(summary(Stage::download), u"Nothing ticked in the Downloader yet."_s);
    EXPECT_EQ(text(u"assetSummary"_s), u"Nothing ticked in the Downloader yet."_s);
    EXPECT_EQ(text(u"flowLabel"_s), u"2 things to set up first."_s);
    assets = {Asset::audio};
    tab->refresh();
    EXPECT_EQ(summary(Stage::download), u"audio"_s);
}

TEST_F(AutomaterTabTest, aFixButtonLeadsToTheDownloader)
{
    assets = {};
    tab->refresh();
    QPushButton* shown = nullptr;
    for (QPushButton* fix : checklist()->findChildren<QPushButton*>(u"fix"_s))
        shown = fix->isHidden() ? shown : fix;
    ASSERT_TRUE(shown);
    EXPECT_EQ(shown->text(), u"Pick assets"_s);
    shown->click();
    EXPECT_EQ(panes, QList<int>{0});
}

TEST_F(AutomaterTabTest, aFolderThatNobodyCanWriteIsMissingWhateverTheSource)
{
    QFile(home.filePath(u"file"_s)).open(QIODevice::WriteOnly);
    session.setDestination(QUrl::fromLocalFile(home.filePath(u"file/below"_s)));
    EXPECT_FALSE(button()->isEnabled());
    pickSource(RunSource::folder);
    EXPECT_FALSE(button()->isEnabled());
    EXPECT_EQ(part<ElidedLabel>(u"outputLabel"_s)->text(), QDir::toNativeSeparators(home.filePath(u"file/below"_s)));
    session.setDestination(QUrl::fromLocalFile(folder()));
    EXPECT_TRUE(button()->isEnabled());
}

TEST_F(AutomaterTabTest, theSettingsShowOnTheirCards)
{
    EXPECT_EQ(summary(Stage::master), u"Target -14 LUFS, WAV 24-bit"_s);
    pick(u"platformPicker"_s, 2);
    pick(u"formatPicker"_s, 1);
    EXPECT_EQ(summary(Stage::master), u"Target -16 LUFS, FLAC"_s);
    EXPECT_TRUE(text(u"platformNote"_s).contains(u"Target -16 LUFS, -1 dBTP"));
    EXPECT_EQ(tab->choices().platformIndex, 2);
    EXPECT_EQ(tab->choices().formatIndex, 1);
    const QString before = summary(Stage::rename);
    pick(u"patternPicker"_s, 1);
    EXPECT_NE(summary(Stage::rename), before);
    EXPECT_EQ(tab->choices().patternIndex, 1);
}

TEST_F(AutomaterTabTest, aWholeRunLightsEveryStageAndLeavesItsFiles)
{
    runToTheEnd();
    EXPECT_EQ(card(Stage::read)->status(), u"3 tracks"_s);
    EXPECT_EQ(card(Stage::download)->status(), u"3 tracks"_s);
    EXPECT_EQ(card(Stage::tag)->status(), u"3 file(s)"_s);
    EXPECT_EQ(card(Stage::master)->status(), u"3 mastered for Spotify"_s);
    EXPECT_EQ(card(Stage::video)->status(), u"turned off"_s);
    EXPECT_EQ(lines().last(), u"Finished — 5 done, 1 switched off."_s);
    EXPECT_EQ(part<LogView>(u"logView"_s)->lineColour(static_cast<int>(lines().size()) - 1), Theme::ok);
    EXPECT_EQ(part<ElidedLabel>(u"progressLabel"_s)->text(), u"5 done, 1 switched off"_s);
    EXPECT_EQ(part<ProgressLine>(u"progress"_s)->value(), 1);
    EXPECT_EQ(part<StepsView>()->progress(), 1);
    EXPECT_EQ(part<StepsView>()->lights().at(indexOf(Stage::video))->state(), LightView::State::skipped);
    EXPECT_EQ(QDir(folder()).entryList({u"*.mp3"_s}, QDir::Files).size(), 3);
    EXPECT_EQ(files(u"Mastered"_s).size(), 3);
    EXPECT_EQ(button()->text(), u"Run everything"_s);
    EXPECT_TRUE(openedFolders.isEmpty());
}

TEST_F(AutomaterTabTest, theShareOfARunOnlyGrowsAndGoesAtItsEnd)
{
    card(Stage::master)->toggle()->click();
    runToTheEnd();
    ASSERT_GT(shares.size(), 4);
    EXPECT_EQ(shares.first(), 0.0);
    EXPECT_EQ(shares.takeLast(), std::nullopt);
    EXPECT_TRUE(std::ranges::is_sorted(shares));
}

TEST_F(AutomaterTabTest, aStageThatIsNotTickedIsLeftOut)
{
    card(Stage::master)->toggle()->click();
    part<TickBox>(u"renameToggle"_s)->click();
    runToTheEnd();
    EXPECT_EQ(card(Stage::rename)->status(), u"turned off"_s);
    EXPECT_EQ(card(Stage::master)->status(), u"turned off"_s);
    EXPECT_EQ(lines().last(), u"Finished — 3 done, 3 switched off."_s);
}

TEST_F(AutomaterTabTest, aSecondRunStartsWithoutLeftoverNotes)
{
    pickSource(RunSource::folder);
    runToTheEnd();
    EXPECT_EQ(card(Stage::download)->module().state, StageState::failed(u"no tracks in Export"_s));
    pickSource(RunSource::download);
    startAndHold();
    EXPECT_EQ(card(Stage::download)->module().state, StageState::waiting());
    EXPECT_EQ(part<StepsView>()->lights().at(1)->state(), LightView::State::waiting);
    tab->toggleRun();
    EXPECT_TRUE(waitForIdle());
}

TEST_F(AutomaterTabTest, theButtonStopsARun)
{
    startAndHold();
    EXPECT_EQ(button()->text(), u"Stop"_s);
    EXPECT_TRUE(button()->isDanger());
    session.setToken({});
    EXPECT_TRUE(button()->isEnabled());
    button()->click();
    EXPECT_THAT(lines(), testing::Contains(u"Stopping…"_s));
    ASSERT_TRUE(waitForIdle());
    EXPECT_FALSE(button()->isDanger());
    EXPECT_TRUE(lines().last().startsWith(u"Stopped — "));
    EXPECT_EQ(part<ProgressLine>(u"progress"_s)->value(), 0);
}

TEST_F(AutomaterTabTest, theMenuSaysWhatIsMissingWhereTheButtonIsOff)
{
    session.setToken({});
    PrimaryAction& action = *tab;
    action.performPrimaryAction();
    EXPECT_EQ(lines(), QStringList{u"Not ready yet — see the list above."_s});
    EXPECT_FALSE(session.automationInProgress);
}

TEST_F(AutomaterTabTest, anExportKeepsTheRunAway)
{
    session.downloadInProgress = true;
    button()->click();
    EXPECT_EQ(lines(), QStringList{u"The Downloader is already exporting. Let it finish, or stop it there first."_s});
    EXPECT_EQ(button()->text(), u"Run everything"_s);
}

TEST_F(AutomaterTabTest, returnStartsARunAndDoesNotStopOne)
{
    demo::Fault fault;
    fault.kind = demo::Fault::Kind::silence;
    fault.where = u"page=1"_s;
    service->script(fault);
    QTest::keyClick(tab.get(), Qt::Key_Return);
    EXPECT_TRUE(run().isRunning());
    QTest::keyClick(tab.get(), Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_THAT(lines(), testing::Not(testing::Contains(u"Stopping…"_s)));
}

TEST_F(AutomaterTabTest, returnOnACardSelectsIt)
{
    QTest::keyClick(card(Stage::tag), Qt::Key_Return);
    EXPECT_TRUE(card(Stage::tag)->isSelected());
    EXPECT_FALSE(run().isRunning());
}

TEST_F(AutomaterTabTest, theFolderOpensAtTheEndWhereTheUserWantsThat)
{
    part<TickBox>(u"openWhenDone"_s)->click();
    EXPECT_EQ(preferences.flag(u"automaterOpensFolder"_s), true);
    card(Stage::master)->toggle()->click();
    runToTheEnd();
    EXPECT_EQ(openedFolders, QList<QUrl>{session.destination()});
    launch();
    EXPECT_TRUE(part<TickBox>(u"openWhenDone"_s)->isChecked());
}

TEST_F(AutomaterTabTest, aPreferenceOfTheWrongKindReadsAsOff)
{
    preferences.set(u"automaterOpensFolder"_s, u"true"_s);
    launch();
    EXPECT_FALSE(part<TickBox>(u"openWhenDone"_s)->isChecked());
}

TEST_F(AutomaterTabTest, thePreviewTellsWhatEachStageWillDoAndFollowsTheSettings)
{
    part<QPushButton>(u"planButton"_s)->click();
    ASSERT_TRUE(waitUntil([this] { return !text(u"plan"_s).isEmpty(); }));
    EXPECT_EQ(text(u"plan"_s).split(u'\n').size(), 6);
    EXPECT_THAT(text(u"plan"_s).toStdString(), testing::HasSubstr("Master audio — every track"));
    card(Stage::master)->toggle()->click();
    EXPECT_TRUE(waitUntil([this] { return text(u"plan"_s).contains(u"Master audio — turned off"); }));
    EXPECT_FALSE(session.automationInProgress);
}

TEST_F(AutomaterTabTest, thePreviewOfASelectionNamesItsTrack)
{
    write(u"Song.mp3"_s);
    select(u"Song.mp3"_s);
    pickSource(RunSource::selection);
    part<QPushButton>(u"planButton"_s)->click();
    EXPECT_TRUE(waitUntil([this] { return text(u"plan"_s).contains(u"1 track already here"); }));
}

TEST_F(AutomaterTabTest, closingTheTabInTheMiddleOfARunEndsTheRun)
{
    startAndHold();
    tab.reset();
    EXPECT_FALSE(session.automationInProgress);
}

} // namespace
} // namespace orvane::test
