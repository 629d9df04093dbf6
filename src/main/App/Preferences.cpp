#include "main/App/Preferences.h"

#include "platform/filesystem/AtomicFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
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

void setAside(const QString& path)
{
    const QString damaged = path + u".damaged"_s;
    QFile::remove(damaged);
    QFile::rename(path, damaged);
}

QJsonObject readObject(const QString& path)
{
    QFile file(path);
    if (!file.exists())
        return {};
    const QByteArray bytes = file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
    file.close();
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    if (!document.isObject())
        setAside(path);
    return document.object();
}

/// Only the last folder is ours: one that is there already, and those above it, keep their rights.
void makePrivateFolder(const QString& folder)
{
    const QFileInfo info(folder);
    if (info.exists())
        return;
    QDir().mkpath(info.path());
    QDir().mkdir(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

bool isText(const QJsonValue& value)
{
    return value.isString();
}

} // namespace

Preferences::Preferences(QString path)
    : path_(std::move(path))
    , values_(readObject(path_))
{
}

QString Preferences::userPath(const QString& programName)
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return folder + u'/' + programName + u"/preferences.json"_s;
}

std::optional<QString> Preferences::text(const QString& key) const
{
    const QJsonValue found = value(key);
    return found.isString() ? std::optional(found.toString()) : std::nullopt;
}

std::optional<bool> Preferences::flag(const QString& key) const
{
    const QJsonValue found = value(key);
    return found.isBool() ? std::optional(found.toBool()) : std::nullopt;
}

std::optional<double> Preferences::number(const QString& key) const
{
    const QJsonValue found = value(key);
    return found.isDouble() ? std::optional(found.toDouble()) : std::nullopt;
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
    const QJsonValue found = value(key);
    const QJsonArray list = found.toArray();
    if (!found.isArray() || !std::all_of(list.begin(), list.end(), isText))
        return {};
    QStringList texts;
    for (const QJsonValue& text : list)
        texts.append(text.toString());
    return texts;
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
    return !value(key).isUndefined();
}

QJsonValue Preferences::value(const QString& key) const
{
    const std::shared_lock reading(mutex_);
    return values_.value(key);
}

void Preferences::change(const std::function<void(QJsonObject&)>& edit)
{
    QJsonObject changed = values_;
    edit(changed);
    if (changed == values_ && lastError_.isEmpty())
        return;
    {
        const std::unique_lock writing(mutex_);
        values_ = changed;
    }
    save();
}

void Preferences::save()
{
    makePrivateFolder(QFileInfo(path_).path());
    try {
        writeAtomically(path_, QJsonDocument(values_).toJson(), FileAccess::OwnerOnly);
        lastError_.clear();
    } catch (const FileError& error) {
        lastError_ = error.sentence();
    }
}

} // namespace orvane
