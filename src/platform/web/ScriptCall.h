#pragma once

#include "platform/web/ScriptOutcome.h"

#include <QFuture>
#include <QObject>
#include <QPromise>
#include <QTimer>

#include <chrono>

class QVariant;
class QWebEnginePage;

namespace orvane {

/// One asynchronous call of a script in a page, from its start to its outcome. It always ends: with the script's
/// answer, with the page's going away, at its time limit, or at its own deletion; and then deletes itself.
class ScriptCall : public QObject
{
    Q_OBJECT

public:
    ScriptCall(QWebEnginePage& page, std::chrono::milliseconds timeLimit, QObject* parent);
    ~ScriptCall() override;

    /// Begins the call; made once.
    QFuture<ScriptOutcome> start(const QString& body, const QJsonObject& arguments);

private:
    void poll();
    void take(const QVariant& answer);
    void takeStart(const QVariant& answer);
    void settle(const ScriptOutcome& outcome);
    void runOutOfTime();

    QWebEnginePage& page_;
    QString name_;
    QPromise<ScriptOutcome> promise_;
    QTimer limit_;
    QTimer nextPoll_;
    std::chrono::milliseconds interval_;
    bool settled_ = false;
};

} // namespace orvane
