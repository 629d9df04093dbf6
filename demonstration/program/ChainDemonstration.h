#pragma once

#include "automation/RunSummary.h"
#include "automation/Stage.h"
#include "demonstration/program/Demonstration.h"

#include <QMap>

#include <optional>

namespace orvane {
class AutomaterTab;
}

namespace orvane::demo {

/// The whole chain: a run of the Automater over the library, from the read to the last stage.
class ChainDemonstration : public Demonstration
{
public:
    using Demonstration::Demonstration;

    bool run() override;

private:
    bool openAutomater();
    bool chooseSource();
    bool chooseStages();
    bool showPlan();
    bool runEverything();
    bool checkOutcomes();
    bool checkDisk();

    AutomaterTab& automater();
    QString destination() const;

    std::optional<RunSummary> summary_;
};

} // namespace orvane::demo
