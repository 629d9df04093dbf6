#include "main/Chrome/PopUpButton.h"
#include "main/Chrome/TickBox.h"
#include "tests/automation/view/AutomaterTabFixture.h"

#include <QLabel>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

class WatchTest : public AutomaterTabFixture
{
protected:
    TickBox* toggle() const { return part<TickBox>(u"watchToggle"_s); }

    PopUpButton* interval() const { return part<PopUpButton>(u"watchInterval"_s); }

    QString status() const { return part<QLabel>(u"watchStatus"_s)->text(); }

    void pickInterval(int row)
    {
        interval()->setCurrentIndex(row);
        Q_EMIT interval()->activated(row);
    }
};

TEST_F(WatchTest, startsOffWithTheUsualInterval)
{
    EXPECT_EQ(toggle()->text(), u"Watch my library and run on new tracks"_s);
    EXPECT_FALSE(toggle()->isChecked());
    QStringList offered;
    for (int row = 0; row < interval()->count(); ++row)
        offered.append(interval()->itemText(row));
    EXPECT_EQ(offered, (QStringList{u"15 minutes"_s, u"30 minutes"_s, u"1h"_s, u"3h"_s}));
    EXPECT_EQ(interval()->currentText(), u"15 minutes"_s);
    EXPECT_EQ(status(), u"Not watching."_s);
}

TEST_F(WatchTest, turnedOnItTakesTheBaselineAndThenWatches)
{
    toggle()->click();
    ASSERT_TRUE(waitUntil([this] { return status().startsWith(u"Watching — no new tracks · checked just now"); }));
    EXPECT_EQ(preferences.texts(u"watcherSeenClipIDs"_s).value_or(QStringList()).size(), 3);
    EXPECT_THAT(lines(), testing::Contains(u"3 existing track(s) marked as already handled. From now on only new ones "
                                           "are picked up."_s));
    EXPECT_EQ(ticker.interval(), 15min);
    toggle()->click();
    EXPECT_EQ(status(), u"Not watching."_s);
    EXPECT_EQ(ticker.interval(), std::nullopt);
}

TEST_F(WatchTest, turnedOnWithoutATokenItWaitsForASession)
{
    session.setToken({});
    toggle()->click();
    ASSERT_TRUE(waitUntil([this] { return status() == u"Watching — waiting for a Suno session"; }));
    EXPECT_FALSE(preferences.contains(u"watcherSeenClipIDs"_s));
}

TEST_F(WatchTest, theIntervalIsStoredWhileTheSwitchIsOff)
{
    pickInterval(2);
    EXPECT_EQ(preferences.integer(u"watcherIntervalMinutes"_s), 60);
    EXPECT_EQ(ticker.interval(), std::nullopt);
    launch();
    EXPECT_EQ(interval()->currentText(), u"1h"_s);
}

TEST_F(WatchTest, anIntervalThatIsNotOfferedChoosesNoneAndGoesToTheUsualOne)
{
    preferences.set(u"watcherIntervalMinutes"_s, 45);
    launch();
    EXPECT_EQ(interval()->currentIndex(), -1);
    session.setToken({});
    toggle()->click();
    EXPECT_EQ(preferences.integer(u"watcherIntervalMinutes"_s), 15);
}

TEST_F(WatchTest, aStoredSwitchWatchesFromTheLaunchWithoutABaseline)
{
    preferences.set(u"watcherEnabled"_s, true);
    session.setToken({});
    launch();
    EXPECT_TRUE(toggle()->isChecked());
    EXPECT_EQ(status(), u"Watching — waiting for a Suno session"_s);
    EXPECT_EQ(ticker.interval(), 15min);
}

TEST_F(WatchTest, preferencesOfTheWrongKindReadAsOff)
{
    preferences.set(u"watcherEnabled"_s, 1);
    preferences.set(u"watcherIntervalMinutes"_s, u"30"_s);
    launch();
    EXPECT_FALSE(toggle()->isChecked());
    EXPECT_EQ(interval()->currentText(), u"15 minutes"_s);
}

TEST_F(WatchTest, newTracksRunThroughTheChainOnTheTab)
{
    card(Stage::master)->toggle()->click();
    preferences.set(u"watcherEnabled"_s, true);
    session.setToken({});
    launch();
    card(Stage::master)->toggle()->click();
    session.setToken(service->currentToken());
    ticker.tick();
    ASSERT_TRUE(waitUntil([this] { return status().startsWith(u"Watching — 3 new track(s) processed"); }));
    EXPECT_EQ(card(Stage::read)->status(), u"3 new"_s);
    EXPECT_EQ(card(Stage::download)->status(), u"3 tracks"_s);
    EXPECT_EQ(lines().last(), u"Finished — 4 done, 2 switched off."_s);
}

} // namespace
} // namespace orvane::test
