#include "mastering/view/WatermarkPanel.h"

#include "main/App/Preferences.h"
#include "main/App/Session.h"
#include "main/Chrome/ElidedLabel.h"
#include "main/Chrome/PopUpButton.h"
#include "main/Chrome/TickBox.h"
#include "mastering/WatermarkSettings.h"
#include "tests/support/RecordingDialogs.h"

#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace orvane::test {
namespace {

class WatermarkPanelTest : public testing::Test
{
protected:
    WatermarkPanelTest()
    {
        session.setDestination(QUrl::fromLocalFile(home.path()));
        QFile(tag).open(QIODevice::WriteOnly);
        makePanel();
    }

    void makePanel()
    {
        const WatermarkPanel::Services services{.session = session, .preferences = preferences, .dialogs = dialogs};
        panel = std::make_unique<WatermarkPanel>(u"auto"_s, u"About the tag."_s, services);
        panel->onChange = [this] { ++changes; };
    }

    template <typename Widget>
    Widget* part(const QString& name) const
    {
        return panel->findChild<Widget*>(name);
    }

    void pick(const QString& name, const QString& row)
    {
        auto* picker = part<PopUpButton>(name);
        const int index = picker->findText(row);
        ASSERT_GE(index, 0) << row.toStdString();
        picker->setCurrentIndex(index);
        Q_EMIT picker->activated(index);
    }

    void chooseTag()
    {
        dialogs.file = QUrl::fromLocalFile(tag);
        part<QPushButton>(u"chooseTag"_s)->click();
    }

    QTemporaryDir home;
    const QString tag = home.filePath(u"voice.wav"_s);
    Preferences preferences{home.filePath(u"preferences.json"_s)};
    Session session{preferences};
    RecordingDialogs dialogs;
    std::unique_ptr<WatermarkPanel> panel;
    int changes = 0;
};

TEST_F(WatermarkPanelTest, withoutATagThereIsNothingToSet)
{
    EXPECT_EQ(panel->accessibleName(), u"YOUR TAG"_s);
    EXPECT_EQ(part<TickBox>(u"tagSwitch"_s)->text(), u"Mix my tag into what the app writes"_s);
    EXPECT_FALSE(part<TickBox>(u"tagSwitch"_s)->isChecked());
    EXPECT_EQ(part<ElidedLabel>(u"tagFile"_s)->text(), u"No tag chosen"_s);
    EXPECT_FALSE(part<PopUpButton>(u"tagLevel"_s)->isEnabled());
    EXPECT_FALSE(part<PopUpButton>(u"tagPlacement"_s)->isEnabled());
    EXPECT_EQ(part<PopUpButton>(u"tagLevel"_s)->currentText(), u"18 dB under the music"_s);
    EXPECT_EQ(part<PopUpButton>(u"tagPlacement"_s)->currentText(), u"Every 60 seconds"_s);
}

TEST_F(WatermarkPanelTest, aChosenFileIsStoredAndTurnsTheTagOn)
{
    chooseTag();
    EXPECT_EQ(dialogs.startingPoints, QList<QUrl>{QUrl::fromLocalFile(home.path())});
    EXPECT_EQ(dialogs.offeredExtensions,
              (QStringList{u"wav"_s, u"mp3"_s, u"m4a"_s, u"aif"_s, u"aiff"_s, u"flac"_s, u"caf"_s}));
    EXPECT_EQ(changes, 1);
    EXPECT_TRUE(part<TickBox>(u"tagSwitch"_s)->isChecked());
    EXPECT_EQ(part<ElidedLabel>(u"tagFile"_s)->text(), u"voice.wav"_s);
    EXPECT_TRUE(part<PopUpButton>(u"tagLevel"_s)->isEnabled());
    const Master::Watermark stored = WatermarkSettings::stored(preferences, u"auto"_s);
    EXPECT_TRUE(stored.isUsable());
    EXPECT_EQ(stored.file, tag);
}

TEST_F(WatermarkPanelTest, aClosedPanelForFilesChangesNothing)
{
    part<QPushButton>(u"chooseTag"_s)->click();
    EXPECT_EQ(changes, 0);
    EXPECT_FALSE(panel->watermark().isOn);
}

TEST_F(WatermarkPanelTest, everyPickIsStoredAtOnceAndComesBack)
{
    chooseTag();
    pick(u"tagLevel"_s, u"24 dB under the music"_s);
    pick(u"tagPlacement"_s, u"Scattered, about every 120 seconds"_s);
    part<TickBox>(u"tagSwitch"_s)->click();
    EXPECT_EQ(changes, 4);
    EXPECT_EQ(panel->watermark().level, -24);
    EXPECT_EQ(WatermarkSettings::tag(panel->watermark().placement), -120);
    EXPECT_FALSE(panel->watermark().isOn);
    makePanel();
    EXPECT_EQ(part<PopUpButton>(u"tagLevel"_s)->currentText(), u"24 dB under the music"_s);
    EXPECT_EQ(part<PopUpButton>(u"tagPlacement"_s)->currentText(), u"Scattered, about every 120 seconds"_s);
}

TEST_F(WatermarkPanelTest, aLevelThatIsNotOfferedStaysAsItIsStored)
{
    chooseTag();
    Master::Watermark odd = panel->watermark();
    odd.level = -20;
    panel->setWatermark(odd);
    EXPECT_EQ(part<PopUpButton>(u"tagLevel"_s)->currentIndex(), -1);
    part<TickBox>(u"tagSwitch"_s)->click();
    EXPECT_EQ(panel->watermark().level, -20);
}

TEST_F(WatermarkPanelTest, aTagWhoseFileIsGoneCountsAsNone)
{
    chooseTag();
    QFile::remove(tag);
    panel->updateChrome();
    EXPECT_EQ(part<ElidedLabel>(u"tagFile"_s)->text(), u"No tag chosen"_s);
    EXPECT_FALSE(part<PopUpButton>(u"tagLevel"_s)->isEnabled());
}

TEST_F(WatermarkPanelTest, preferencesOfTheWrongKindReadAsTheDefaults)
{
    preferences.set(u"watermark.auto.on"_s, u"yes"_s);
    preferences.set(u"watermark.auto.file"_s, 7);
    preferences.set(u"watermark.auto.level"_s, u"loud"_s);
    preferences.set(u"watermark.auto.placement"_s, true);
    makePanel();
    EXPECT_EQ(panel->watermark(), Master::Watermark());
}

} // namespace
} // namespace orvane::test
