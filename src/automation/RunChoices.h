#pragma once

#include "mastering/Format.h"
#include "mastering/platforms/Platform.h"

#include <QString>

#include <array>

namespace orvane {

/// Which tracks a run works on.
enum class RunSource
{
    download,
    folder,
    selection
};

/// In the order of the picker.
inline constexpr std::array allRunSources{RunSource::download, RunSource::folder, RunSource::selection};

/// What the picker calls it, in the user's language.
QString labelOf(RunSource source);
/// One or two sentences about it, for under the picker.
QString noteOf(RunSource source);

/// How videos are made, in the order of the picker.
enum class VideoRenderer
{
    own,
    website
};

/// What masters are made for, and written as.
struct MasteringTarget
{
    Master::Platform platform;
    Master::Format format = Master::Format::wav;

    bool operator==(const MasteringTarget&) const = default;
};

/// What the user has set for a run, taken as a value when it starts.
struct RunChoices
{
    RunSource source = RunSource::download;
    bool rename = false;
    bool tag = false;
    bool master = false;
    bool video = false;
    VideoRenderer renderer = VideoRenderer::own;
    /// Place in the table of the namer's patterns, used where the Namer gives none; "clean" outside of it.
    int patternIndex = 0;
    /// Place in the table of platforms, used where the Mastering tab gives none; the first outside of it.
    int platformIndex = 0;
    /// Place in the table of formats, used where the Mastering tab gives none; the first outside of it.
    int formatIndex = 0;
    /// Show the folder when the run is over.
    bool openWhenDone = false;

    bool operator==(const RunChoices&) const = default;
};

/// The identifier of the pattern that the choices name.
QString patternOf(const RunChoices& choices);
/// The target that the choices name.
MasteringTarget targetOf(const RunChoices& choices);

} // namespace orvane
