#include "mastering/WatermarkSettings.h"

#include "main/App/Preferences.h"

#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace orvane;
using namespace Qt::Literals::StringLiterals;
using Master::Placement;
using Master::Watermark;

namespace {

class StoredWatermark : public testing::Test
{
protected:
    QString file(const QString& name) const
    {
        const QString path = folder.filePath(name);
        QFile made(path);
        EXPECT_TRUE(made.open(QIODevice::WriteOnly));
        return path;
    }

    Watermark stored(const QString& id = u"master"_s) { return WatermarkSettings::stored(preferences, id); }

    QTemporaryDir folder;
    Preferences preferences{folder.filePath(u"preferences.json"_s)};
};

} // namespace

TEST(WatermarkPlacements, areThoseOfThePicker)
{
    QStringList rows;
    for (const auto& choice : WatermarkSettings::placements())
        rows << u"%1 %2"_s.arg(choice.tag).arg(choice.text);
    EXPECT_EQ(rows,
              (QStringList{u"0 Start and end only"_s, u"30 Every 30 seconds"_s, u"60 Every 60 seconds"_s,
                           u"120 Every 120 seconds"_s, u"300 Every 300 seconds"_s,
                           u"-60 Scattered, about every 60 seconds"_s, u"-120 Scattered, about every 120 seconds"_s,
                           u"1004 4 times across the track"_s, u"1008 8 times across the track"_s}));
}

TEST(WatermarkPlacements, onlyThoseOfThePickerHaveAName)
{
    EXPECT_EQ(WatermarkSettings::placementName(Placement::timesAcross(8)), u"8 times across the track"_s);
    EXPECT_EQ(WatermarkSettings::placementName(Placement::startAndEnd()), u"Start and end only"_s);
    EXPECT_EQ(WatermarkSettings::placementName(Placement::everySeconds(31)), std::nullopt);
}

TEST(WatermarkPlacements, aNumberStandsForAPlacement)
{
    EXPECT_EQ(WatermarkSettings::placement(-120), Placement::scattered(120));
    EXPECT_EQ(WatermarkSettings::tag(Placement::scattered(120)), -120);
    EXPECT_EQ(WatermarkSettings::tag(Placement::timesAcross(std::int64_t(1) << 40)), std::numeric_limits<int>::max());
}

TEST(Watermark, isUsableWhenOnAndThereIsAFile)
{
    EXPECT_FALSE(Watermark().isUsable());
    EXPECT_FALSE((Watermark{.isOn = true, .file = {}, .placement = {}}.isUsable()));
    EXPECT_FALSE((Watermark{.isOn = false, .file = u"/gone.wav"_s, .placement = {}}.isUsable()));
    EXPECT_TRUE((Watermark{.isOn = true, .file = u"/gone.wav"_s, .placement = {}}.isUsable()));
}

TEST_F(StoredWatermark, startsWithTheDefaults)
{
    EXPECT_EQ(stored(), Watermark());
    EXPECT_EQ(stored().level, -18.0);
    EXPECT_EQ(stored().placement, Placement::everySeconds(60));
}

TEST_F(StoredWatermark, comesBackAsItWasStored)
{
    const Watermark watermark{
        .isOn = true, .file = file(u"tag.wav"_s), .level = -6.0, .placement = Placement::scattered(120)};
    WatermarkSettings::store(preferences, u"dj"_s, watermark);
    EXPECT_EQ(stored(u"dj"_s), watermark);
    EXPECT_EQ(preferences.flag(u"watermark.dj.on"_s), true);
    EXPECT_EQ(preferences.text(u"watermark.dj.file"_s), *watermark.file);
    EXPECT_EQ(preferences.number(u"watermark.dj.level"_s), -6.0);
    EXPECT_EQ(preferences.integer(u"watermark.dj.placement"_s), -120);
    EXPECT_EQ(preferences.text(u"watermarkLastFile"_s), *watermark.file);
}

TEST_F(StoredWatermark, theFileChosenInOnePanelIsOfferedInTheOthers)
{
    const QString tag = file(u"tag.wav"_s);
    WatermarkSettings::store(preferences, u"dj"_s, {.isOn = true, .file = tag, .placement = {}});
    EXPECT_EQ(stored(u"master"_s).file, tag);
    EXPECT_FALSE(stored(u"master"_s).isOn);
    WatermarkSettings::store(preferences, u"master"_s, {.isOn = false, .file = {}, .placement = {}});
    EXPECT_EQ(stored(u"master"_s).file, std::nullopt);
    EXPECT_EQ(preferences.text(u"watermarkLastFile"_s), tag);
}

TEST_F(StoredWatermark, aFileThatIsGoneIsNone)
{
    WatermarkSettings::store(preferences, u"dj"_s, {.isOn = true, .file = file(u"tag.wav"_s), .placement = {}});
    QFile::remove(folder.filePath(u"tag.wav"_s));
    EXPECT_TRUE(stored(u"dj"_s).isOn);
    EXPECT_EQ(stored(u"dj"_s).file, std::nullopt);
    EXPECT_FALSE(stored(u"dj"_s).isUsable());
}

TEST_F(StoredWatermark, settingsOfAnEarlierVersionMoveToTheMasteringPanel)
{
    const QString tag = file(u"tag.wav"_s);
    preferences.set(u"watermarkFile"_s, tag);
    preferences.set(u"watermarkOn"_s, true);
    preferences.set(u"watermarkLevel"_s, -24.0);
    preferences.set(u"watermarkPlacement"_s, 1004);
    EXPECT_EQ(stored(), (Watermark{.isOn = true, .file = tag, .level = -24.0, .placement = Placement::timesAcross(4)}));
    EXPECT_EQ(preferences.text(u"watermarkLastFile"_s), tag);
    EXPECT_TRUE(preferences.contains(u"watermarkFile"_s));
}

TEST_F(StoredWatermark, anEarlierVersionsGapsKeepTheDefaults)
{
    preferences.set(u"watermarkFile"_s, file(u"tag.wav"_s));
    EXPECT_FALSE(stored().isOn);
    EXPECT_EQ(stored().level, -18.0);
    EXPECT_FALSE(preferences.contains(u"watermark.master.level"_s));
    EXPECT_FALSE(preferences.contains(u"watermark.master.placement"_s));
    EXPECT_TRUE(preferences.contains(u"watermark.master.on"_s));
}

TEST_F(StoredWatermark, nothingMovesOverSettingsOfItsOwnOrWithoutAFile)
{
    preferences.set(u"watermarkFile"_s, u""_s);
    preferences.set(u"watermarkOn"_s, true);
    WatermarkSettings::migrateIfNeeded(preferences);
    EXPECT_FALSE(preferences.contains(u"watermark.master.on"_s));
    preferences.set(u"watermarkFile"_s, file(u"old.wav"_s));
    preferences.set(u"watermark.master.file"_s, u""_s);
    WatermarkSettings::migrateIfNeeded(preferences);
    EXPECT_EQ(preferences.text(u"watermark.master.file"_s), u""_s);
    EXPECT_FALSE(preferences.contains(u"watermark.master.on"_s));
}
