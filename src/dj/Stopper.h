#pragma once

#include <mutex>

namespace orvane::DJ {

/// Tells a render on another thread to stop.
class Stopper
{
public:
    void stop()
    {
        const std::lock_guard guard(lock_);
        flag_ = true;
    }

    bool isStopped() const
    {
        const std::lock_guard guard(lock_);
        return flag_;
    }

private:
    mutable std::mutex lock_;
    bool flag_ = false;
};

} // namespace orvane::DJ
