#pragma once

#include <QThreadPool>

#include <utility>

namespace orvane {

/// Holds something with very many parts, a list of tens of thousands of records, and lets go of it on the global pool:
/// freeing its parts one by one would hold up the thread that is done with it. The value's own destructor must not
/// mind the thread.
template <typename Value>
class FreedOnPool
{
public:
    explicit FreedOnPool(Value value)
        : value_(std::move(value))
    {
    }

    ~FreedOnPool()
    {
        QThreadPool::globalInstance()->start([freed = std::move(value_)] {});
    }

    FreedOnPool(const FreedOnPool&) = delete;
    FreedOnPool& operator=(const FreedOnPool&) = delete;

    Value& operator*() { return value_; }

    const Value& operator*() const { return value_; }

    Value* operator->() { return &value_; }

    const Value* operator->() const { return &value_; }

private:
    Value value_;
};

} // namespace orvane
