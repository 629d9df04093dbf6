#include "main/App/L10nTables.h"

#include <QHash>

namespace orvane::L10n {
namespace {

struct List
{
    QStringView code;
    std::span<const Entry> (*entries)();
};

constexpr List lists[] = {{u"en", english}};

using Texts = QHash<Key, QString>;

Texts textsOf(std::span<const Entry> entries)
{
    Texts texts;
    texts.reserve(qsizetype(entries.size()));
    for (const Entry& entry : entries)
        texts.insert(entry.key, QString::fromUtf16(entry.text));
    return texts;
}

QHash<QString, Texts> everyTable()
{
    QHash<QString, Texts> tables;
    for (const List& list : lists)
        tables.insert(list.code.toString(), textsOf(list.entries()));
    return tables;
}

const QHash<QString, Texts>& table()
{
    static const QHash<QString, Texts> built = everyTable();
    return built;
}

} // namespace

std::span<const Entry> listOf(QStringView code)
{
    for (const List& list : lists) {
        if (list.code == code)
            return list.entries();
    }
    return {};
}

std::optional<QString> text(const QString& code, Key key)
{
    const auto texts = table().constFind(code);
    if (texts == table().constEnd())
        return {};
    const auto found = texts->constFind(key);
    return found == texts->constEnd() ? std::nullopt : std::optional(*found);
}

QString textOf(Key key, const QString& code, const QString& otherwise)
{
    std::optional<QString> found = text(code, key);
    if (!found)
        found = text(otherwise, key);
    return found.value_or(rawValue(key));
}

} // namespace orvane::L10n
