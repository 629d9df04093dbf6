#pragma once

#include "automation/AutomaterRun.h"
#include "automation/PipelineConfig.h"
#include "automation/RunChoices.h"
#include "automation/Stage.h"

#include <QString>

namespace orvane::ChainTexts {

/// Everything that the chain tells about the present settings.
struct Facts
{
    RunChoices choices;
    PipelineConfig config;
    MasteringTarget target;
    /// A track with audio is selected in Files.
    bool hasSelection = false;
};

/// What the stage is set to, in a few words.
QString summaryOf(Stage stage, const Facts& facts);

/// Whether a run does the stage.
bool isTicked(Stage stage, const RunChoices& choices);

/// The stage's name for where only one word has room.
QString shortNameOf(Stage stage);

/// How many prerequisites are still to be met; empty where none is.
QString setupText(int unmet);

/// How far a whole run is, from 0 to 1, when a stage has come to a state or is under way.
double shareOf(Stage stage, const StageState& state);
double shareOf(const RunProgress& progress);

} // namespace orvane::ChainTexts
