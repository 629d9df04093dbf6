#pragma once

#include "platform/async/Clock.h"
#include "suno/TimeLeft.h"

#include <optional>

namespace orvane {

/// How long the rest of a stage will take whose tracks are all of one kind of work.
class StageTime
{
public:
    StageTime(Clock& clock, qsizetype tracks)
        : clock_(clock)
        , left_(static_cast<int>(tracks), 0)
    {
    }

    /// A track begins; gives what is left with it, absent while too little has been measured.
    std::optional<std::chrono::milliseconds> begin()
    {
        began_ = clock_.monotonic();
        return left_.remaining();
    }

    /// The track that began is done.
    void end() { left_.done(TimeLeft::Work::download, clock_.monotonic() - began_); }

private:
    Clock& clock_;
    TimeLeft left_;
    std::chrono::milliseconds began_{0};
};

} // namespace orvane
