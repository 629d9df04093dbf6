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

private:
    QTimer timer_;
    QElapsedTimer watch_;
    std::vector<double> late_;
};

} // namespace orvane::bench
