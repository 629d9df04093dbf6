#pragma once

#include "main/App/PreferencesFile.h"

#include <QJsonObject>
#include <QJsonValue>
#include <QString>

#include <functional>
#include <optional>
#include <shared_mutex>

namespace orvane {

/// The user's preferences: one JSON object on disk, so that a value keeps its type and a read can test it.
///
/// What is missing or of another kind reads as absent. A value counts at once and goes to the disk right after,
/// atomically and readable by the user alone (0600 in a 0700 folder), without the caller waiting for it; the destructor
/// and `flush` do wait. Where the disk refuses it, the value holds until the program ends and `lastError` says why. A
/// change of nothing does not touch the disk. Keys are the fields' names. Written from the main thread; a value may be
/// read from any thread.
class Preferences
{
public:
    /// Reads the file at `path`; a missing one counts as empty, and so does one that cannot be read as a JSON object,
    /// which is set aside as `path` + ".damaged".
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

    /// Waits until the disk has every value or refused it: for before another process reads the file.
    void flush();

    /// The sentence of the last write that failed; empty after one that went through.
    QString lastError() const;

private:
    template <typename Result>
    Result read(const QString& key, Result (*in)(const QJsonValue&)) const;
    void change(const std::function<void(QJsonObject&)>& edit);

    PreferencesFile file_;
    /// Held for one look at `values_` or one exchange of it.
    mutable std::shared_mutex mutex_;
    QJsonObject values_;
};

} // namespace orvane
