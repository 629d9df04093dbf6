#include "main/App/Preferences.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QStandardPaths>

#include <algorithm>
#include <cmath>
#include <limits>
#include <mutex>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

QJsonObject readObject(const PreferencesFile& file)
{
    const QJsonDocument document = QJsonDocument::fromJson(file.read());
    if (!document.isObject())
        file.setAside();
    return document.object();
}

std::optional<QString> textIn(const QJsonValue& value)
{
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

std::optional<bool> flagIn(const QJsonValue& value)
{
    return value.isBool() ? std::optional(value.toBool()) : std::nullopt;
}

std::optional<double> numberIn(const QJsonValue& value)
{
    return value.isDouble() ? std::optional(value.toDouble()) : std::nullopt;
}

bool isText(const QJsonValue& value)
{
    return value.isString();
}

std::optional<QStringList> textsIn(const QJsonValue& value)
{
    const QJsonArray list = value.toArray();
    if (!value.isArray() || !std::all_of(list.begin(), list.end(), isText))
        return {};
    QStringList texts;
    for (const QJsonValue& text : list)
        texts.append(text.toString());
    return texts;
}

bool isThere(const QJsonValue& value)
{
    return !value.isUndefined();
}

} // namespace

Preferences::Preferences(QString path)
    : file_(std::move(path))
    , values_(readObject(file_))
{
}

QString Preferences::userPath(const QString& programName)
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return folder + u'/' + programName + u"/preferences.json"_s;
}

std::optional<QString> Preferences::text(const QString& key) const
{
    return read(key, textIn);
}

std::optional<bool> Preferences::flag(const QString& key) const
{
    return read(key, flagIn);
}

std::optional<double> Preferences::number(const QString& key) const
{
    return read(key, numberIn);
}

std::optional<int> Preferences::integer(const QString& key) const
{
    using Limits = std::numeric_limits<int>;
    const std::optional<double> found = number(key);
    if (!found || std::trunc(*found) != *found || *found < Limits::min() || *found > Limits::max())
        return {};
    return static_cast<int>(*found);
}

std::optional<QStringList> Preferences::texts(const QString& key) const
{
    return read(key, textsIn);
}

void Preferences::set(const QString& key, const QJsonValue& value)
{
    change([&](QJsonObject& values) { values.insert(key, value); });
}

void Preferences::remove(const QString& key)
{
    change([&](QJsonObject& values) { values.remove(key); });
}

bool Preferences::contains(const QString& key) const
{
    return read(key, isThere);
}

template <typename Result>
Result Preferences::read(const QString& key, Result (*in)(const QJsonValue&)) const
{
    // The value shares its memory with the object: it is turned into one of its own before the lock is let go.
    const std::shared_lock reading(mutex_);
    return in(values_.value(key));
}

void Preferences::change(const std::function<void(QJsonObject&)>& edit)
{
    QJsonObject changed = values_;
    edit(changed);
    // After a refusal the disk is asked again also for a value that stays.
    if (changed == values_ && file_.lastError().isEmpty())
        return;
    {
        const std::unique_lock writing(mutex_);
        values_ = changed;
    }
    file_.write(QJsonDocument(changed).toJson());
}

void Preferences::flush()
{
    file_.flush();
}

QString Preferences::lastError() const
{
    return file_.lastError();
}

} // namespace orvane
