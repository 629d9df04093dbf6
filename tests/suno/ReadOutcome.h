#pragma once

#include "suno/Engine.h"

#include <QList>
#include <qcoro/qcorotask.h>

#include <optional>

namespace orvane::test {

/// How a read of the library ended.
struct ReadOutcome
{
    QList<Clip> clips = {};
    std::optional<LibraryError> error = {};
};

/// An error would not end the wait for a task, so it becomes a value.
inline QCoro::Task<ReadOutcome> outcomeOf(QCoro::Task<QList<Clip>> task)
{
    ReadOutcome outcome;
    try {
        outcome.clips = co_await task;
    } catch (const LibraryError& thrown) {
        outcome.error = thrown;
    }
    co_return outcome;
}

} // namespace orvane::test
