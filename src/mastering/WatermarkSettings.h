#pragma once

#include "mastering/Watermark.h"

#include <QList>
#include <QString>

#include <optional>

namespace orvane {
class Preferences;

/// The stored settings of a watermark panel, by the panel's identifier, and what its pickers offer.
namespace WatermarkSettings {

/// A choice of the placement picker.
struct PlacementChoice
{
    QString text;
    int tag = 0;

    bool operator==(const PlacementChoice&) const = default;
};

/// In the picker's order, in the user's language.
QList<PlacementChoice> placements();

/// The picker's text for a placement; nothing for one that it does not offer.
std::optional<QString> placementName(const Master::Placement& placement);

Master::Placement placement(int forTag);
/// A tag that no int holds is held at the nearest one.
int tag(const Master::Placement& placement);

/// What is stored for the panel `id`; a tag whose file is gone counts as none. The last file chosen in any panel is
/// offered where this one has none of its own yet.
Master::Watermark stored(Preferences& preferences, const QString& id);

/// Stores the settings of the panel `id`.
void store(Preferences& preferences, const QString& id, const Master::Watermark& watermark);

/// Moves what an earlier version stored for its only panel to the panel "master", once.
void migrateIfNeeded(Preferences& preferences);

} // namespace WatermarkSettings
} // namespace orvane
