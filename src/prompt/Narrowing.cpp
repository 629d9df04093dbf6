#include "prompt/Prompt.h"

#include <algorithm>
#include <numeric>

namespace orvane::Prompt {

using namespace Qt::Literals::StringLiterals;

namespace {

template <typename Fits>
void narrowBy(Narrowed& pool, const std::optional<QString>& lock, const QString& word, Fits fits)
{
    if (!lock)
        return;
    QList<qsizetype> left;
    std::copy_if(pool.scenes.begin(), pool.scenes.end(), std::back_inserter(left), fits);
    if (left.isEmpty())
        pool.bends.append(word);
    else
        pool.scenes = left;
}

bool reaches(const Range& bpm, const QString& band)
{
    for (int beats = bpm.first; beats <= bpm.last; ++beats) {
        if (tempo(beats) == band)
            return true;
    }
    return false;
}

} // namespace

Narrowed narrow(const Crate& crate, const Locks& locks)
{
    const QList<Scene>& scenes = crate.scenes();
    Narrowed pool;
    pool.scenes.resize(scenes.size());
    std::iota(pool.scenes.begin(), pool.scenes.end(), 0);
    narrowBy(pool, locks.genre, u"genre"_s,
             [&](qsizetype scene) { return scenes[scene].genres.contains(*locks.genre); });
    narrowBy(pool, locks.era, u"era"_s, [&](qsizetype scene) { return crate.decade(scene) == *locks.era; });
    narrowBy(pool, locks.voice, u"voice"_s, [&](qsizetype scene) { return crate.kinds(scene).contains(*locks.voice); });
    narrowBy(pool, locks.mood, u"mood"_s, [&](qsizetype scene) { return scenes[scene].moods.contains(*locks.mood); });
    narrowBy(pool, locks.tempo, u"tempo"_s, [&](qsizetype scene) { return reaches(scenes[scene].bpm, *locks.tempo); });
    return pool;
}

std::pair<QList<Scene>, QStringList> candidatesAndBends(const Locks& locks)
{
    const Narrowed pool = narrow(crate(), locks);
    QList<Scene> scenes;
    for (qsizetype scene : pool.scenes)
        scenes.append(crate().scenes()[scene]);
    return {scenes, pool.bends};
}

QList<Scene> candidates(const Locks& locks)
{
    return candidatesAndBends(locks).first;
}

} // namespace orvane::Prompt
