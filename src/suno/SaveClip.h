#pragma once

#include "main/App/L10n.h"
#include "suno/Asset.h"
#include "suno/Clip.h"
#include "suno/Engine.h"

#include <QString>
#include <qcoro/qcorotask.h>

namespace orvane {

/// The lines for what could not be saved, each of a title and a reason: the Downloader's, unless told otherwise.
struct SaveTexts
{
    L10n::Key audio = L10n::Key::log43;
    L10n::Key lyrics = L10n::Key::log44;
    L10n::Key timed = L10n::Key::log45;
    L10n::Key artwork = L10n::Key::log46;

    bool operator==(const SaveTexts&) const = default;
};

/// What is saved of each clip, where to, and by which token where the engine has no provider.
struct SaveOrder
{
    AssetSet assets;
    /// An absolute path.
    QString folder;
    QString token;
    SaveTexts texts = {};

    bool operator==(const SaveOrder&) const = default;
};

/// What became of the chosen assets of one clip.
struct ClipResult
{
    /// Assets that could not be saved; each has been logged.
    int problems = 0;
    /// The audio was chosen and is among them.
    bool audioFailed = false;
    /// The run is to end here; the remaining assets were not tried.
    bool stopped = false;

    bool operator==(const ClipResult&) const = default;
};

/// Saves the chosen assets of `clip` under `base`: audio, lyrics, timed lyrics, cover. A failure is logged through the
/// engine with `safeTitle` and holds nothing back.
QCoro::Task<ClipResult> saveClip(Engine& engine, Clip clip, SaveOrder order, QString base, QString safeTitle);

} // namespace orvane
