#pragma once

#include "suno/Asset.h"
#include "suno/Clip.h"
#include "suno/Engine.h"

#include <QString>
#include <qcoro/qcorotask.h>

namespace orvane {

/// What became of the chosen assets of one clip.
struct ClipResult
{
    /// Assets that could not be saved; each has been logged.
    int problems = 0;
    /// The run is to end here; the remaining assets were not tried.
    bool stopped = false;

    bool operator==(const ClipResult&) const = default;
};

/// Saves the chosen assets of `clip` under `base` in `folder`: audio, lyrics, timed lyrics, cover. A failure is logged
/// through the engine with `safeTitle` and holds nothing back.
QCoro::Task<ClipResult> saveClip(Engine& engine, Clip clip, AssetSet assets, QString folder, QString base,
                                 QString safeTitle, QString token);

} // namespace orvane
