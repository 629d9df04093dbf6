#pragma once

#include "automation/Stage.h"

#include <QMap>
#include <QString>

namespace orvane {

/// How a run ended.
struct RunSummary
{
    int done = 0;
    int failed = 0;
    int skipped = 0;
    int notReached = stageCount;
    /// The user asked for the end.
    bool wasStopped = false;

    bool operator==(const RunSummary&) const = default;

    /// Every stage was done or left out.
    bool isSuccess() const { return failed == 0 && notReached == 0; }

    /// Where the bar stands at the end, from 0 to 1.
    double bar() const { return isSuccess() ? 1.0 : 0.0; }

    /// Where the row of stages stands at the end, from 0 to 1.
    double steps() const { return static_cast<double>(done + failed + skipped) / stageCount; }

    /// "4 done, 2 switched off" and so on.
    QString text() const;

    /// The last line of the log.
    QString sentence() const;
};

/// Counts what the stages came to; one that is absent, waiting or running was not reached.
RunSummary summaryOf(const QMap<Stage, StageState>& outcomes);

} // namespace orvane
