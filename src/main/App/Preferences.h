#pragma once

#include <QJsonObject>
#include <QJsonValue>
#include <QString>

#include <optional>

namespace orvane {

/// The user's preferences: one JSON object on disk, so that a value keeps its type and a read can test it.
///
/// What is missing or of another kind reads as absent. A write goes to the disk at once and atomically, readable by the
/// user alone (0600 in a 0700 folder); where the disk refuses it, the value holds until the program ends and
/// `lastError` says why. Keys are the fields' names. Used from the main thread.
class Preferences
{
public:
    /// Reads the file at `path`; a missing or unreadable one counts as empty, and is set aside as `path` + ".damaged"
    /// when it is no JSON object.
    explicit Preferences(QString path);

    /// Where the user's own preferences lie for a program of that name.
    static QString userPath(const QString& programName);

    std::optional<QString> text(const QString& key) const;
    std::optional<bool> flag(const QString& key) const;
    std::optional<double> number(const QString& key) const;
    /// A number without a fraction that fits an int.
    std::optional<int> integer(const QString& key) const;
    std::optional<QStringList> texts(const QString& key) const;

    void set(const QString& key, const QJsonValue& value);
    void remove(const QString& key);
    bool contains(const QString& key) const;

    /// The sentence of the last write that failed; empty after one that went through.
    const QString& lastError() const { return lastError_; }

private:
    void save();

    QString path_;
    QJsonObject values_;
    QString lastError_;
};

} // namespace orvane
