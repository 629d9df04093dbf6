#include "laboratory/Arguments.h"
#include "laboratory/Verb.h"
#include "trackfiles/library/Library.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QUrl>

namespace orvane::lab {

using namespace Qt::Literals::StringLiterals;

namespace {

QJsonObject toJson(const Library::FilesByAsset& files)
{
    QJsonObject object;
    for (const Library::Asset asset : Library::allAssets) {
        if (files.contains(asset))
            object.insert(rawValue(asset), QJsonArray::fromStringList(files[asset]));
    }
    return object;
}

QJsonObject toJson(const Library::Entry& entry)
{
    const bool isFolder = entry.kind == Library::Entry::Kind::folder;
    return {{u"kind"_s, isFolder ? u"folder"_s : u"track"_s},
            {u"name"_s, entry.name},
            {u"url"_s, QUrl::fromLocalFile(entry.path).toString(QUrl::FullyEncoded)},
            {u"path"_s, entry.path},
            {u"files"_s, toJson(entry.files)},
            {u"bytes"_s, entry.bytes},
            {u"modified"_s, entry.modified.toUTC().toString(Qt::ISODateWithMs)},
            {u"childCount"_s, entry.childCount},
            {u"duration"_s, entry.duration ? QJsonValue(*entry.duration) : QJsonValue()}};
}

} // namespace

QJsonValue scan(const QStringList& arguments)
{
    const QStringList paths = Arguments(arguments, {}).alone(1, 1);
    const Library::Contents contents = Library::read(absolute(paths[0]));
    QJsonArray entries;
    for (const Library::Entry& entry : contents.entries)
        entries.append(toJson(entry));
    QJsonArray missing;
    for (const Library::Asset asset : contents.missing)
        missing.append(rawValue(asset));
    return QJsonObject{{u"entries"_s, entries}, {u"unreadable"_s, contents.unreadable}, {u"missing"_s, missing}};
}

} // namespace orvane::lab
