#include "trackfiles/library/Library.h"

#include <QCollator>

#include <algorithm>
#include <numeric>
#include <vector>

namespace orvane::Library {
namespace {

QCollator naturalCollator()
{
    // The C locale compares bytes and knows no numbers.
    const QLocale users;
    QCollator collator(users.language() == QLocale::C ? QLocale(QLocale::English) : users);
    collator.setNumericMode(true);
    return collator;
}

} // namespace

void sortNaturally(QList<Entry>& entries)
{
    struct Row
    {
        QCollatorSortKey key;
        qsizetype index;
    };

    const QCollator collator = naturalCollator();
    std::vector<Row> rows;
    rows.reserve(static_cast<std::size_t>(entries.size()));
    for (qsizetype index = 0; index < entries.size(); ++index)
        rows.push_back({collator.sortKey(entries[index].name), index});
    // Names that the language takes for equal keep one order on every machine.
    std::ranges::sort(rows, [&entries](const Row& one, const Row& other) {
        const int order = one.key.compare(other.key);
        return order != 0 ? order < 0 : entries[one.index].name < entries[other.index].name;
    });
    QList<Entry> sorted;
    sorted.reserve(entries.size());
    for (const Row& row : rows)
        sorted.append(std::move(entries[row.index]));
    entries = std::move(sorted);
}

} // namespace orvane::Library
