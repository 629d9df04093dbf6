#pragma once

#include "automation/PipelineConfig.h"
#include "automation/RunChoices.h"

#include <QString>

#include <optional>

namespace orvane {

/// What is known of a run before it starts.
struct PlanFacts
{
    RunChoices choices;
    PipelineConfig config;
    /// Identifier of the namer's pattern.
    QString pattern;
    MasteringTarget target;
    /// Tracks that it will work on; absent where only the service can tell.
    std::optional<int> tracks;
    /// Those of them whose recording is an MP3; absent likewise.
    std::optional<int> taggable;
};

/// What each stage will do to how many tracks: one line for each of the six, "name — work". Plain English text.
QString planText(const PlanFacts& facts);

} // namespace orvane
