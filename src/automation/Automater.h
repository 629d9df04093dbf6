#pragma once

#include "automation/AutomaterRun.h"
#include "automation/Watcher.h"

#include <QString>

namespace orvane {

/// The run and the watcher of one tab, wired to each other: what the watcher finds goes through the same chain and the
/// same log. The view sets the run's providers and both of their closures.
class Automater
{
public:
    explicit Automater(const AutomationServices& services);
    /// Stops what is under way and waits for its end.
    ~Automater();
    Automater(const Automater&) = delete;
    Automater& operator=(const Automater&) = delete;

    AutomaterRun& run() { return run_; }

    Watcher& watcher() { return watcher_; }

    /// Goes on watching where the user had left it on, without a baseline; for the launch, after everything is set.
    void resumeWatching();

    /// For the status line: "Watching — …", or that it does not.
    QString watchStatus() const;

private:
    AutomaterRun run_;
    /// Destroyed before the run, whose answer its check may be waiting for.
    Watcher watcher_;
};

} // namespace orvane
