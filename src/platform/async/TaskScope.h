#pragma once

#include <qcoro/qcorotask.h>

#include <cstddef>
#include <memory>
#include <stop_token>

namespace orvane {

/// Owns tasks that nobody awaits: every task started here ends before the scope does.
///
/// Used from one thread. A task takes `stopToken()` by value when it is made, and ends soon after a stop is requested.
/// The destructor requests that stop and runs the event loop until the last task has ended; a task that throws ends
/// the program, since nobody is left to hear of it.
class TaskScope
{
public:
    TaskScope();
    ~TaskScope();
    TaskScope(const TaskScope&) = delete;
    TaskScope& operator=(const TaskScope&) = delete;

    /// Takes over a task that has begun.
    void add(QCoro::Task<> task);

    std::stop_token stopToken() const;
    void requestStop();

    /// Tasks that have not ended yet.
    std::size_t running() const;

private:
    struct State;
    static QCoro::Task<> follow(std::shared_ptr<State> state, QCoro::Task<> task);

    std::shared_ptr<State> state_;
    std::stop_source stop_;
};

} // namespace orvane
