#include "prompt/Prompt.h"

#include <algorithm>

namespace orvane::Prompt {
namespace {

QStringList once(QStringList values)
{
    std::sort(values.begin(), values.end());
    values.erase(std::unique(values.begin(), values.end()), values.end());
    return values;
}

template <typename Column>
QStringList listed(Column column)
{
    QStringList values;
    for (qsizetype scene = 0; scene < crate().scenes().size(); ++scene)
        values.append(column(scene));
    return once(values);
}

} // namespace

const QStringList& genres()
{
    static const QStringList list = listed([](qsizetype scene) { return crate().scenes()[scene].genres; });
    return list;
}

const QStringList& moods()
{
    static const QStringList list = listed([](qsizetype scene) { return crate().scenes()[scene].moods; });
    return list;
}

const QStringList& voices()
{
    static const QStringList list = listed([](qsizetype scene) { return crate().kinds(scene); });
    return list;
}

const QStringList& eras()
{
    static const QStringList list = listed([](qsizetype scene) { return QStringList{crate().decade(scene)}; });
    return list;
}

std::optional<QString> family(const QString& genre)
{
    return crate().family(genre);
}

} // namespace orvane::Prompt
