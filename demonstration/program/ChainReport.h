#pragma once

#include "demonstration/service/StandInService.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace orvane {
struct MasteringTarget;
}

namespace orvane::demo {

/// What lies on disk after a run of the chain, held against what the service has.
struct ChainReport
{
    /// Some lines for each track, ready to print.
    QStringList table;
    /// One sentence for each thing that is missing, different or unexpected.
    QStringList faults;
    int tracks = 0;
};

/// Looks at every file of `folder`, over which the whole library of `service` was run through all stages: names as the
/// pattern "clean" gives them, tags as TagLib reads them, loudness as libebur128 measures it, videos as ffprobe tells
/// them. A frame out of the middle of each video goes to `pictures`, a folder that exists; absent after a run without
/// videos. Blocks.
ChainReport reportOnChain(const QString& folder, const StandInService& service, const MasteringTarget& target,
                          const std::optional<QString>& pictures);

} // namespace orvane::demo
