#pragma once

#include <QCoreApplication>
#include <QDBusPendingCallWatcher>
#include <QPointer>

#include <utility>

namespace orvane {

/// Calls `then` with the answer of a D-Bus call or its error, on this thread's event loop. The wait belongs to the
/// application, so that `then` is called also when whoever asked has gone: it looks after that by itself.
template <typename Then>
void whenAnswered(const QDBusPendingCall& call, Then then)
{
    auto* watcher = new QDBusPendingCallWatcher(call, QCoreApplication::instance());
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher,
                     [then = std::move(then)](QDBusPendingCallWatcher* finished) mutable {
                         finished->deleteLater();
                         then(*finished);
                     });
}

/// As above, and nothing is called once `receiver` is gone.
template <typename Then>
void whenAnswered(const QDBusPendingCall& call, QObject* receiver, Then then)
{
    whenAnswered(call, [alive = QPointer(receiver), then = std::move(then)](const QDBusPendingCall& answer) mutable {
        if (alive)
            then(answer);
    });
}

} // namespace orvane
