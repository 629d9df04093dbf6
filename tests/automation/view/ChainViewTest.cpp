#include "automation/view/ChainView.h"

#include "automation/view/LightView.h"
#include "automation/view/StageDetails.h"
#include "automation/view/StageRow.h"
#include "automation/view/StepsView.h"
#include "main/Chrome/ElidedLabel.h"
#include "main/Chrome/SideScroller.h"
#include "main/Chrome/Theme.h"
#include "main/Chrome/TickBox.h"

#include <QCoreApplication>
#include <QLabel>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace orvane::test {
namespace {

using Kind = StageState::Kind;

QList<ChainView::Module> allModules()
{
    QList<ChainView::Module> modules;
    for (const Stage stage : stageOrder)
        modules.append({.stage = stage, .title = nameOf(stage), .isOptional = isOptional(stage)});
    return modules;
}

class ChainViewTest : public testing::Test
{
protected:
    ChainViewTest()
    {
        chain.onSelect = [this](int index) { selected.append(index); };
        chain.onToggle = [this](int index, bool isTicked) { toggled.append({index, isTicked}); };
        chain.resize(344, chain.sizeHint().height());
        chain.show();
        QCoreApplication::processEvents();
    }

    ModuleCard* card(Stage stage) const { return chain.cards().at(indexOf(stage)); }

    QScrollBar* bar() const { return chain.findChild<SideScroller*>()->scroller()->horizontalScrollBar(); }

    bool wheel(int down)
    {
        QWidget* port = chain.findChild<SideScroller*>()->scroller()->viewport();
        QWheelEvent event(QPointF(9, 9), port->mapToGlobal(QPointF(9, 9)), QPoint(0, -down), {}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(port, &event);
        return event.isAccepted();
    }

    ChainView chain{allModules()};
    QList<int> selected;
    QList<std::pair<int, bool>> toggled;
};

TEST_F(ChainViewTest, aClickSelectsOneCard)
{
    EXPECT_EQ(chain.selected(), 0);
    card(Stage::rename)->click();
    EXPECT_EQ(chain.selected(), 2);
    EXPECT_EQ(selected, QList<int>{2});
    for (const ModuleCard* each : chain.cards())
        EXPECT_EQ(each->isSelected(), each == card(Stage::rename));
}

TEST_F(ChainViewTest, anIndexBeyondTheCardsSelectsNothing)
{
    chain.select(-1);
    chain.select(6);
    EXPECT_EQ(chain.selected(), 0);
    EXPECT_TRUE(selected.isEmpty());
}

TEST_F(ChainViewTest, arrowKeysMoveTheSelection)
{
    QTest::keyClick(card(Stage::read), Qt::Key_Right);
    EXPECT_EQ(chain.selected(), 1);
    QTest::keyClick(card(Stage::download), Qt::Key_End);
    EXPECT_EQ(chain.selected(), 5);
    QTest::keyClick(card(Stage::video), Qt::Key_Right);
    EXPECT_EQ(chain.selected(), 5);
    QTest::keyClick(card(Stage::video), Qt::Key_Left);
    EXPECT_EQ(chain.selected(), 4);
    QTest::keyClick(card(Stage::master), Qt::Key_Home);
    EXPECT_EQ(chain.selected(), 0);
}

TEST_F(ChainViewTest, onlyTheOptionalStagesHaveABox)
{
    for (const Stage stage : stageOrder)
        EXPECT_EQ(card(stage)->toggle() != nullptr, isOptional(stage)) << nameOf(stage).toStdString();
}

TEST_F(ChainViewTest, aTickIsToldAndDoesNotSelect)
{
    card(Stage::tag)->toggle()->click();
    EXPECT_EQ(toggled, (QList<std::pair<int, bool>>{{3, false}}));
    EXPECT_FALSE(chain.isTicked(Stage::tag));
    EXPECT_TRUE(selected.isEmpty());
}

TEST_F(ChainViewTest, aTickFromOutsideIsMirroredAndNotTold)
{
    chain.setTicked(Stage::master, false);
    EXPECT_FALSE(card(Stage::master)->toggle()->isChecked());
    EXPECT_FALSE(chain.isTicked(Stage::master));
    EXPECT_TRUE(toggled.isEmpty());
}

TEST_F(ChainViewTest, resetCardsWaitWithoutLeftoverNotes)
{
    for (const Stage stage : stageOrder)
        chain.setState(stage, StageState::failed(u"no luck"_s));
    EXPECT_EQ(card(Stage::tag)->status(), u"no luck"_s);
    chain.resetStates();
    for (const ModuleCard* each : chain.cards()) {
        EXPECT_EQ(each->module().state, StageState::waiting());
        EXPECT_EQ(each->status(), u"waiting"_s);
    }
}

TEST_F(ChainViewTest, aStageThatBeginsScrollsIntoView)
{
    EXPECT_EQ(bar()->value(), 0);
    chain.setState(Stage::master, StageState::running());
    const QWidget* running = card(Stage::master);
    EXPECT_TRUE(chain.rect().contains(QRect(running->mapTo(&chain, QPoint()), running->size())));
}

TEST_F(ChainViewTest, theWheelScrollsSidewaysAndIsLeftToOthersAtTheEnd)
{
    EXPECT_TRUE(wheel(60));
    EXPECT_EQ(bar()->value(), 60);
    wheel(10'000);
    EXPECT_EQ(bar()->value(), bar()->maximum());
    EXPECT_FALSE(wheel(60));
}

TEST_F(ChainViewTest, aCardIsReadOutWithItsNumberSettingAndState)
{
    chain.setSummary(Stage::tag, u"ID3"_s);
    chain.setState(Stage::tag, StageState::done(u"52 file(s)"_s));
    EXPECT_EQ(card(Stage::tag)->accessibleName(), u"4. Write tags"_s);
    EXPECT_EQ(card(Stage::tag)->accessibleDescription(), u"ID3 — 52 file(s)"_s);
}

struct Look
{
    StageState state;
    QString note;
    QColor colour;
};

TEST(StageRow, eachStateHasItsNoteAndColour)
{
    const QList<Look> looks{{StageState::done(u"52 tracks"_s), u"52 tracks"_s, Theme::ok},
                            {StageState::failed(u"no luck"_s), u"no luck"_s, Theme::bad},
                            {StageState::skipped(u"turned off"_s), u"turned off"_s, Theme::textMuted},
                            {StageState::running(), u"running…"_s, Theme::accent},
                            {StageState::waiting(), u"waiting"_s, Theme::textMuted}};
    StageRow row;
    for (const Look& look : looks) {
        row.apply(look.state);
        EXPECT_EQ(row.note(), look.note);
        EXPECT_EQ(row.noteColour(), look.colour);
    }
}

TEST(LightView, eachStateIsPaintedUnlikeTheOthers)
{
    QList<QImage> pictures;
    for (const Kind kind : {Kind::waiting, Kind::running, Kind::done, Kind::failed, Kind::skipped}) {
        LightView light;
        light.resize(light.sizeHint());
        light.setState(kind);
        const QImage picture = light.grab().toImage().convertToFormat(QImage::Format_Grayscale8);
        EXPECT_FALSE(pictures.contains(picture)) << static_cast<int>(kind);
        pictures.append(picture);
    }
}

TEST(StepsView, theFillRunsFromNothingToTheWholeTrack)
{
    StepsView steps;
    steps.resize(300, steps.sizeHint().height());
    EXPECT_EQ(steps.fillWidth(), 0);
    steps.setProgress(0.5);
    EXPECT_EQ(steps.fillWidth(), 150);
    steps.setProgress(7);
    EXPECT_EQ(steps.fillWidth(), 300);
}

TEST(StepsView, aNameThatIsTooLongForItsColumnIsCutAtItsEnd)
{
    StepsView steps;
    const auto shown = [&steps](int width) {
        steps.resize(width, steps.sizeHint().height());
        steps.show();
        QCoreApplication::processEvents();
        QStringList names;
        for (const ElidedLabel* label : steps.findChildren<ElidedLabel*>())
            if (label->objectName().isEmpty())
                names.append(label->shownText());
        return names;
    };
    EXPECT_EQ(shown(480), (QStringList{u"Library"_s, u"Download"_s, u"Rename"_s, u"Tags"_s, u"Master"_s, u"Video"_s}));
    const QString narrow = shown(180).value(1);
    EXPECT_TRUE(narrow.startsWith(u'D') && narrow.endsWith(u'…')) << narrow.toStdString();
}

TEST(StepsView, aResetPutsOutEveryLight)
{
    StepsView steps;
    steps.light(0, Kind::done);
    steps.skip(1);
    steps.light(17, Kind::done);
    steps.say(u"Write tags — running…"_s);
    steps.setProgress(0.5);
    EXPECT_EQ(steps.lights().at(0)->state(), Kind::done);
    EXPECT_EQ(steps.lights().at(1)->state(), Kind::skipped);
    EXPECT_EQ(steps.caption(), u"Write tags — running…"_s);
    steps.reset();
    for (const LightView* light : steps.lights())
        EXPECT_EQ(light->state(), Kind::waiting);
    EXPECT_EQ(steps.progress(), 0);
    EXPECT_EQ(steps.caption(), QString());
}

} // namespace
} // namespace orvane::test
