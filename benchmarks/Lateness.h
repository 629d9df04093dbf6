#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <vector>

namespace orvane::bench {

/// How late the event loop is: a timer of one millisecond that writes down by how much each turn came later.
class Lateness : public QObject
{
public:
    Lateness();

    /// In milliseconds: what 99 of 100 turns stayed within, and the latest of all.
    double percentile99() const;
    double worst() const;

    /// Milliseconds of processor that this thread has used at most between two turns: how long it would have kept a
    /// frame waiting on a machine that does nothing else.
    double longestTurn() const { return longestTurn_; }

private:
    QTimer timer_;
    QElapsedTimer watch_;
    std::vector<double> late_;
    double usedBefore_ = 0;
    double longestTurn_ = 0;
};

} // namespace orvane::bench
