#include "platform/async/TaskScope.h"

#include <QEventLoop>

namespace orvane {

struct TaskScope::State
{
    std::size_t running = 0;
    QEventLoop* drain = nullptr;
};

TaskScope::TaskScope()
    : state_(std::make_shared<State>())
{
}

TaskScope::~TaskScope()
{
    requestStop();
    if (state_->running == 0)
        return;
    QEventLoop drain;
    state_->drain = &drain;
    drain.exec(QEventLoop::ExcludeUserInputEvents);
    state_->drain = nullptr;
}

void TaskScope::add(QCoro::Task<> task)
{
    ++state_->running;
    follow(state_, std::move(task));
}

std::stop_token TaskScope::stopToken() const
{
    return stop_.get_token();
}

void TaskScope::requestStop()
{
    stop_.request_stop();
}

std::size_t TaskScope::running() const
{
    return state_->running;
}

QCoro::Task<> TaskScope::follow(std::shared_ptr<State> state, QCoro::Task<> task)
{
    try {
        co_await task;
    } catch (...) {
        std::terminate();
    }
    --state->running;
    if (state->running == 0 && state->drain)
        state->drain->quit();
}

} // namespace orvane
