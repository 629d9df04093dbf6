#pragma once

#include <QJsonValue>
#include <QString>

#include <optional>

namespace orvane {

/// How an asynchronous call of a script in a page ended.
struct ScriptOutcome
{
    enum class Kind
    {
        /// The script returned; `value` holds what it returned, `Undefined` where that was nothing.
        value,
        /// The script threw, or returned what no value can be made of; `message` says why.
        failed,
        /// The document that the call was meant for is not there any more, or never was.
        pageWentAway,
        /// No answer within the time limit.
        timedOut,
    };

    Kind kind = Kind::pageWentAway;
    QJsonValue value = QJsonValue::Undefined;
    QString message = {};

    bool operator==(const ScriptOutcome&) const = default;

    bool isValue() const { return kind == Kind::value; }

    /// The returned text; absent when the script did not return, or returned anything but a text.
    std::optional<QString> text() const
    {
        return isValue() && value.isString() ? std::optional(value.toString()) : std::nullopt;
    }
};

} // namespace orvane
