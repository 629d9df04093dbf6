#pragma once

#include "dj/Mix.h"
#include "dj/MixSettings.h"

#include <QString>

#include <functional>

namespace orvane::DJ {

/// What a mix is called where nobody says otherwise.
QString usualMixName();

/// Whether the render is to stop; asked once before each track.
using ShouldStop = std::function<bool()>;
/// The title of the track that begins, or an empty one at the end, and how far the render has come, from 0 to 1.
using Progress = std::function<void(const QString& title, double fraction)>;

/// Makes one continuous sound of `set`, in its order, and a tracklist: `name` with the format's extension and with
/// "txt", in `folder`, an absolute path, which is made where it is missing. The sound always has two channels at
/// 44100 Hz. A sound of that name is removed at once; the new one streams to disk beside its name and gets it at the
/// end, so that a render that is killed leaves nothing there.
///
/// The first track begins on a bar line and every other track on one of the mix, whose tempo is the set's median. The
/// same set gives the same bytes. Blocks; both functions are called on the caller's thread, in order, while other
/// threads already work on the track that follows. About two tracks are in memory at once, however many there are.
///
/// Throws Failure: Empty for a set without a track and where an MP3 cannot be begun, Cancelled after a stop, which
/// leaves nothing. What reading a track throws goes out too; what was mixed until then stays, as a shorter sound
/// without a tracklist. Throws FileError, SoundError or Master::Failure where the sound could not be written, which
/// leaves no sound, or the tracklist, which leaves the sound.
Mix render(const Set& set, const MixSettings& settings, const QString& folder, const QString& name = usualMixName(),
           const ShouldStop& shouldStop = {}, const Progress& progress = {});

} // namespace orvane::DJ
