#include "mastering/WatermarkSettings.h"

#include "main/App/L10n.h"
#include "main/App/Preferences.h"

#include <QFileInfo>

#include <algorithm>
#include <array>
#include <limits>

namespace orvane::WatermarkSettings {

using namespace Qt::Literals::StringLiterals;
using L10n::Key;
using Master::Placement;

namespace {

const QString lastFileKey = u"watermarkLastFile"_s;

QString keyOf(const QString& id, QStringView field)
{
    return u"watermark.%1.%2"_s.arg(id, field);
}

QString textOf(const Placement& placement)
{
    switch (placement.kind) {
    case Placement::Kind::EverySeconds:
        return L10n::t(Key::wmEvery, {qlonglong(placement.count)});
    case Placement::Kind::Scattered:
        return L10n::t(Key::wmScattered, {qlonglong(placement.count)});
    case Placement::Kind::TimesAcross:
        return L10n::t(Key::wmTimes, {qlonglong(placement.count)});
    case Placement::Kind::StartAndEnd:
        break;
    }
    return L10n::t(Key::wmStartEnd);
}

/// Which file the stored texts stand for.
std::optional<QString> storedFile(const Preferences& preferences, const QString& id)
{
    const QString key = keyOf(id, u"file");
    const QString path = preferences.contains(key) ? preferences.text(key).value_or(QString())
                                                   : preferences.text(lastFileKey).value_or(QString());
    if (path.isEmpty() || !QFileInfo::exists(path))
        return {};
    return path;
}

} // namespace

QList<PlacementChoice> placements()
{
    constexpr std::array tags{0, 30, 60, 120, 300, -60, -120, 1004, 1008};
    QList<PlacementChoice> choices;
    for (const int tag : tags)
        choices << PlacementChoice{.text = textOf(placement(tag)), .tag = tag};
    return choices;
}

std::optional<QString> placementName(const Placement& wanted)
{
    const int wantedTag = tag(wanted);
    for (const PlacementChoice& choice : placements()) {
        if (choice.tag == wantedTag)
            return choice.text;
    }
    return {};
}

Placement placement(int forTag)
{
    return Master::placementForTag(forTag);
}

int tag(const Placement& placement)
{
    return int(std::clamp<std::int64_t>(Master::placementTag(placement), std::numeric_limits<int>::min(),
                                        std::numeric_limits<int>::max()));
}

Master::Watermark stored(Preferences& preferences, const QString& id)
{
    migrateIfNeeded(preferences);
    Master::Watermark watermark;
    watermark.isOn = preferences.flag(keyOf(id, u"on")).value_or(false);
    watermark.file = storedFile(preferences, id);
    watermark.level = preferences.number(keyOf(id, u"level")).value_or(watermark.level);
    if (const auto placementTag = preferences.integer(keyOf(id, u"placement")))
        watermark.placement = placement(*placementTag);
    return watermark;
}

void store(Preferences& preferences, const QString& id, const Master::Watermark& watermark)
{
    preferences.set(keyOf(id, u"on"), watermark.isOn);
    preferences.set(keyOf(id, u"file"), watermark.file.value_or(u""_s));
    preferences.set(keyOf(id, u"level"), watermark.level);
    preferences.set(keyOf(id, u"placement"), tag(watermark.placement));
    if (watermark.file)
        preferences.set(lastFileKey, *watermark.file);
}

void migrateIfNeeded(Preferences& preferences)
{
    const QString file = preferences.text(u"watermarkFile"_s).value_or(QString());
    if (preferences.contains(keyOf(u"master"_s, u"file")) || file.isEmpty())
        return;
    preferences.set(keyOf(u"master"_s, u"file"), file);
    preferences.set(lastFileKey, file);
    preferences.set(keyOf(u"master"_s, u"on"), preferences.flag(u"watermarkOn"_s).value_or(false));
    if (const auto level = preferences.number(u"watermarkLevel"_s))
        preferences.set(keyOf(u"master"_s, u"level"), *level);
    if (const auto placementTag = preferences.integer(u"watermarkPlacement"_s))
        preferences.set(keyOf(u"master"_s, u"placement"), *placementTag);
}

} // namespace orvane::WatermarkSettings
