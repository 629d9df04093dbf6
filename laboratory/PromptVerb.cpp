#include "laboratory/Arguments.h"
#include "laboratory/Verb.h"
#include "prompt/Prompt.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <memory>
#include <random>

namespace orvane::lab {

using namespace Qt::Literals::StringLiterals;

namespace {

/// The same luck for the same seed, everywhere.
Prompt::Chance seeded(std::uint64_t seed)
{
    const auto engine = std::make_shared<std::mt19937_64>(seed);
    return {.fraction = [engine] { return double((*engine)() >> 11) * 0x1p-53; },
            .integer = [engine](int least,
                                int most) { return least + int((*engine)() % std::uint64_t(most - least + 1)); }};
}

QJsonObject describe(const Prompt::Locks& locks)
{
    const auto value = [](const std::optional<QString>& lock) { return lock ? QJsonValue(*lock) : QJsonValue(); };
    return {{u"genre"_s, value(locks.genre)},
            {u"mood"_s, value(locks.mood)},
            {u"era"_s, value(locks.era)},
            {u"voice"_s, value(locks.voice)},
            {u"tempo"_s, value(locks.tempo)}};
}

QJsonObject describe(const Prompt::Result& result)
{
    QStringList bent = result.bent.values();
    std::sort(bent.begin(), bent.end());
    return {{u"style"_s, result.style},
            {u"idea"_s, result.idea},
            {u"bent"_s, QJsonArray::fromStringList(bent)},
            {u"locks"_s, describe(result.locks)}};
}

} // namespace

QJsonValue prompt(const QStringList& arguments)
{
    const Arguments given(arguments, {u"count"_s, u"genre"_s, u"mood"_s, u"era"_s, u"voice"_s, u"tempo"_s, u"seed"_s});
    given.alone(0, 0);
    const Prompt::Locks locks{.genre = given.text(u"genre"_s),
                              .mood = given.text(u"mood"_s),
                              .era = given.text(u"era"_s),
                              .voice = given.text(u"voice"_s),
                              .tempo = given.text(u"tempo"_s)};
    const auto seed = given.integer(u"seed"_s);
    const Prompt::Chance chance = seed ? seeded(std::uint64_t(*seed)) : Prompt::systemChance();
    QJsonArray results;
    for (const Prompt::Result& result : Prompt::batch(given.integer(u"count"_s).value_or(1), locks, chance))
        results.append(describe(result));
    return results;
}

QJsonValue combinations(const QStringList& arguments)
{
    Arguments(arguments, {}).alone(0, 0);
    return QJsonObject{{u"combinations"_s, qint64(Prompt::combinations())}};
}

} // namespace orvane::lab
