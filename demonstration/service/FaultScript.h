#pragma once

#include "demonstration/service/Fault.h"

#include <QByteArray>
#include <QList>

#include <mutex>
#include <optional>

namespace orvane::demo {

/// The faults that are still to come. Callable from any thread.
class FaultScript
{
public:
    void add(const Fault& fault);
    void clear();

    /// The fault for a request, used up by this call; absent where it is to be answered well.
    std::optional<Fault> take(const QByteArray& target);

private:
    std::mutex lock_;
    QList<Fault> faults_;
};

} // namespace orvane::demo
