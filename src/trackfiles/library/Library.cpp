#include "trackfiles/library/Library.h"

#include <algorithm>

namespace orvane::Library {

using namespace Qt::Literals::StringLiterals;

namespace {

QList<Entry> ofKind(const QList<Entry>& entries, Entry::Kind kind)
{
    QList<Entry> found;
    std::ranges::copy_if(entries, std::back_inserter(found), [kind](const Entry& entry) { return entry.kind == kind; });
    return found;
}

} // namespace

QSet<Asset> Entry::has() const
{
    QSet<Asset> assets;
    for (const Asset asset : allAssets) {
        if (files.contains(asset))
            assets.insert(asset);
    }
    return assets;
}

QStringList Entry::allFiles() const
{
    QStringList all;
    for (const Asset asset : allAssets)
        all += files[asset];
    return all;
}

QList<Entry> Contents::folders() const
{
    return ofKind(entries, Entry::Kind::folder);
}

QList<Entry> Contents::tracks() const
{
    return ofKind(entries, Entry::Kind::track);
}

qint64 Contents::bytes() const
{
    qint64 sum = 0;
    for (const Entry& entry : entries)
        sum += entry.bytes;
    return sum;
}

QDateTime distantPast()
{
    static const QDateTime date(QDate(1, 1, 1), QTime(0, 0), Qt::UTC);
    return date;
}

QString crumbs(const QString& path, int limit)
{
    const QStringList components = path.split(u'/', Qt::SkipEmptyParts);
    return components.mid(std::max<qsizetype>(0, components.size() - limit)).join(u" › "_s);
}

} // namespace orvane::Library
