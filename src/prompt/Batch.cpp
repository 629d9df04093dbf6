#include "prompt/Prompt.h"

namespace orvane::Prompt {
namespace {

constexpr qsizetype attemptsForEach = 14;
constexpr qsizetype remembered = 2;

} // namespace

QList<Result> batch(const Crate& crate, qsizetype count, const Locks& locks, const Chance& chance)
{
    QList<Result> kept;
    QSet<QString> seen;
    QStringList recentFamilies;
    for (qsizetype attempt = 0; attempt < count * attemptsForEach && kept.size() < count; ++attempt) {
        const Result result = roll(crate, locks, chance, {recentFamilies.begin(), recentFamilies.end()});
        if (result.style.isEmpty())
            break;
        if (seen.contains(result.full()))
            continue;
        seen.insert(result.full());
        kept.append(result);
        if (const auto family = result.locks.genre ? crate.family(*result.locks.genre) : std::nullopt)
            recentFamilies.append(*family);
        while (recentFamilies.size() > remembered)
            recentFamilies.removeFirst();
    }
    return kept;
}

QList<Result> batch(qsizetype count, const Locks& locks, const Chance& chance)
{
    return batch(crate(), count, locks, chance);
}

} // namespace orvane::Prompt
