#include "automation/RunSummary.h"

#include <QStringList>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

QString RunSummary::text() const
{
    QStringList parts{u"%1 done"_s.arg(done)};
    if (skipped > 0)
        parts.append(u"%1 switched off"_s.arg(skipped));
    if (failed > 0)
        parts.append(u"%1 failed"_s.arg(failed));
    if (notReached > 0)
        parts.append(u"%1 not reached"_s.arg(notReached));
    return parts.join(u", "_s);
}

QString RunSummary::sentence() const
{
    return (isSuccess() ? u"Finished — %1."_s : u"Stopped — %1."_s).arg(text());
}

RunSummary summaryOf(const QMap<Stage, StageState>& outcomes)
{
    RunSummary summary;
    for (const StageState& state : outcomes) {
        summary.done += state.kind == StageState::Kind::done;
        summary.failed += state.kind == StageState::Kind::failed;
        summary.skipped += state.kind == StageState::Kind::skipped;
    }
    summary.notReached = stageCount - summary.done - summary.failed - summary.skipped;
    return summary;
}

} // namespace orvane
