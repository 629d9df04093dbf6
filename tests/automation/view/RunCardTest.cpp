#include "automation/view/RunCard.h"

#include "automation/view/LightView.h"
#include "automation/view/StepsView.h"
#include "main/Chrome/AccentButton.h"
#include "main/Chrome/Badge.h"
#include "main/Chrome/ElidedLabel.h"
#include "main/Chrome/LogView.h"
#include "main/Chrome/ProgressLine.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QPushButton>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace orvane::test {
namespace {

class RunCardTest : public testing::Test
{
protected:
    template <typename Widget>
    Widget* part(const QString& name = {}) const
    {
        return card.findChild<Widget*>(name);
    }

    AccentButton* button() const { return part<AccentButton>(u"runButton"_s); }

    QString label() const { return part<ElidedLabel>(u"progressLabel"_s)->text(); }

    double bar() const { return part<ProgressLine>(u"progress"_s)->value(); }

    const StepsView* steps() const { return part<StepsView>(); }

    RunCard card;
};

TEST_F(RunCardTest, theButtonRunsAndStops)
{
    int pressed = 0;
    card.onRun = [&pressed] { ++pressed; };
    EXPECT_EQ(button()->text(), u"Run everything"_s);
    EXPECT_FALSE(button()->isDanger());
    EXPECT_EQ(part<Badge>(u"stateBadge"_s)->text(), u"IDLE"_s);
    card.setRunning(true);
    EXPECT_EQ(button()->text(), u"Stop"_s);
    EXPECT_TRUE(button()->isDanger());
    EXPECT_EQ(part<Badge>(u"stateBadge"_s)->text(), u"RUNNING"_s);
    button()->click();
    EXPECT_EQ(pressed, 1);
}

TEST_F(RunCardTest, whatIsNotMetKeepsTheButtonOffAndIsCounted)
{
    card.setUnmet(2);
    EXPECT_FALSE(button()->isEnabled());
    EXPECT_EQ(part<QLabel>(u"flowLabel"_s)->text(), u"2 things to set up first."_s);
    card.setRunning(true);
    EXPECT_TRUE(button()->isEnabled());
    EXPECT_TRUE(part<QLabel>(u"flowLabel"_s)->isHidden());
    card.setRunning(false);
    EXPECT_FALSE(button()->isEnabled());
    card.setUnmet(0);
    EXPECT_TRUE(button()->isEnabled());
    EXPECT_TRUE(part<QLabel>(u"flowLabel"_s)->isHidden());
}

TEST_F(RunCardTest, aStageLightsItsLampAndIsNamed)
{
    card.setRunning(true);
    card.setStage(Stage::read, StageState::done(u"7 tracks"_s));
    EXPECT_EQ(steps()->lights().at(0)->state(), LightView::State::done);
    EXPECT_EQ(steps()->caption(), u"Read the library — 7 tracks"_s);
    EXPECT_DOUBLE_EQ(steps()->progress(), 1.0 / 6);
    card.setStage(Stage::download, StageState::running());
    EXPECT_EQ(steps()->caption(), u"Download assets — running…"_s);
    card.setStage(Stage::rename, StageState::waiting());
    EXPECT_DOUBLE_EQ(steps()->progress(), 2.0 / 6);
}

TEST_F(RunCardTest, progressShowsInBarLabelAndTimeLeft)
{
    const RunProgress progress{.stage = Stage::download,
                               .done = 1,
                               .count = 4,
                               .label = u"2 of 4 tracks — Song"_s,
                               .timeLeft = std::chrono::minutes(4)};
    card.setRunning(true);
    card.show(progress);
    EXPECT_DOUBLE_EQ(bar(), 0.25);
    EXPECT_EQ(label(), u"2 of 4 tracks — Song"_s);
    EXPECT_EQ(part<QLabel>(u"timeLeft"_s)->text(), u"about 4 min left"_s);
    card.setStage(Stage::rename, StageState::running());
    EXPECT_EQ(bar(), 0);
    EXPECT_EQ(label(), QString());
    EXPECT_EQ(part<QLabel>(u"timeLeft"_s)->text(), QString());
}

TEST_F(RunCardTest, theEndStandsUntilTheNextStart)
{
    card.setRunning(true);
    card.setRunning(false);
    card.finish({.done = 4, .failed = 0, .skipped = 2, .notReached = 0});
    EXPECT_EQ(bar(), 1);
    EXPECT_EQ(steps()->progress(), 1);
    EXPECT_EQ(label(), u"4 done, 2 switched off"_s);
    card.finish({.done = 1, .failed = 1, .skipped = 0, .notReached = 4});
    EXPECT_EQ(bar(), 0);
    EXPECT_DOUBLE_EQ(steps()->progress(), 2.0 / 6);
    card.setRunning(true);
    EXPECT_EQ(label(), QString());
    EXPECT_EQ(steps()->progress(), 0);
}

TEST_F(RunCardTest, aLineHasTheColourOfItsLevel)
{
    auto* log = part<LogView>(u"logView"_s);
    card.log(QTime(3, 4), u"one"_s, LogLevel::info);
    card.log(QTime(3, 4), u"two"_s, LogLevel::success);
    card.log(QTime(3, 4), u"three"_s, LogLevel::error);
    EXPECT_EQ(log->lineColour(0), Theme::textSecond);
    EXPECT_EQ(log->lineColour(1), Theme::ok);
    EXPECT_EQ(log->lineColour(2), Theme::bad);
    EXPECT_TRUE(log->lineText(2).endsWith(u"] three"));
}

TEST_F(RunCardTest, tenThousandLinesStayFastAndTheLogIsBounded)
{
    auto* log = part<LogView>(u"logView"_s);
    card.resize(376, 500);
    card.show();
    constexpr int many = 10'000;
    QElapsedTimer clock;
    clock.start();
    for (int line = 0; line < many; ++line)
        card.log(QTime(3, 4), u"Querying page %1…"_s.arg(line), LogLevel::info);
    // A frame of 16 ms must have room for dozens of lines, also under sanitizers and on a busy machine.
    EXPECT_LT(clock.elapsed(), many * 2);
    EXPECT_EQ(log->lineCount(), many);
    for (int line = many; line < LogView::mostLines + 100; ++line)
        card.log(QTime(3, 4), u"Querying page %1…"_s.arg(line), LogLevel::info);
    EXPECT_EQ(log->lineCount(), LogView::mostLines);
    EXPECT_TRUE(log->lineText(LogView::mostLines - 1).endsWith(u"page 20099…"));
}

TEST_F(RunCardTest, thePlanOpensAndCloses)
{
    int asked = 0;
    card.onPlan = [&asked] { ++asked; };
    auto* planButton = part<QPushButton>(u"planButton"_s);
    planButton->click();
    EXPECT_EQ(asked, 1);
    card.showPlan(u"Read the library — the whole library"_s);
    EXPECT_FALSE(part<QLabel>(u"plan"_s)->parentWidget()->isHidden());
    planButton->click();
    EXPECT_FALSE(card.isPlanShown());
    EXPECT_TRUE(part<QLabel>(u"plan"_s)->parentWidget()->isHidden());
    EXPECT_EQ(asked, 1);
    card.showPlan(u"Read the library — the whole library"_s);
    card.setRunning(true);
    EXPECT_FALSE(card.isPlanShown());
    EXPECT_FALSE(planButton->isEnabled());
}

} // namespace
} // namespace orvane::test
