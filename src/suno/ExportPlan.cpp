#include "suno/ExportPlan.h"

#include "trackfiles/keys/TrackKeys.h"

namespace orvane {

QList<PlannedTrack> planExport(const QList<Clip>& clips, const QString& folder)
{
    const QHash<QString, QString> existing = ExistingFiles::byTitle(folder);
    QList<PlannedTrack> plan;
    plan.reserve(clips.size());
    for (int index = 0; index < static_cast<int>(clips.size()); ++index) {
        const ClipNames names = clipNames(clips.at(index), index, existing);
        plan.append({.names = names, .isKnown = existing.contains(names.safeTitle.toLower())});
    }
    return plan;
}

} // namespace orvane
