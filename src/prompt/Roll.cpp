#include "prompt/Prompt.h"
#include "prompt/Sentences.h"

#include <QRandomGenerator>

#include <algorithm>

namespace orvane::Prompt {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Which of `count` things a fraction from 0 to 1 means.
qsizetype chosen(qsizetype count, const Fraction& fraction)
{
    return std::min(count - 1, std::max<qsizetype>(qsizetype(fraction() * double(count)), 0));
}

QString pick(const QStringList& list, const Fraction& fraction)
{
    return list.isEmpty() ? QString() : list[chosen(list.size(), fraction)];
}

QString lockedOrPicked(const std::optional<QString>& lock, const QStringList& list, const Fraction& fraction)
{
    return lock && list.contains(*lock) ? *lock : pick(list, fraction);
}

/// The index of a voice, by preference one of the locked kind; none where the scene has no voices.
std::optional<qsizetype> pickVoice(const QStringList& kinds, const Locks& locks, const Fraction& fraction)
{
    if (kinds.isEmpty())
        return std::nullopt;
    QList<qsizetype> ofKind;
    for (qsizetype voice = 0; voice < kinds.size(); ++voice) {
        if (locks.voice && kinds[voice] == *locks.voice)
            ofKind.append(voice);
    }
    return ofKind.isEmpty() ? chosen(kinds.size(), fraction) : ofKind[chosen(ofKind.size(), fraction)];
}

QStringList without(QStringList list, const QString& entry)
{
    list.removeAll(entry);
    return list;
}

int pickBpm(const Range& range, const Locks& locks, const Chance& chance)
{
    const int drawn = chance.integer(range.first, range.last);
    if (!locks.tempo)
        return drawn;
    QList<int> inBand;
    for (int beats = range.first; beats <= range.last; ++beats) {
        if (tempo(beats) == *locks.tempo)
            inBand.append(beats);
    }
    return inBand.isEmpty() ? drawn : inBand[chosen(inBand.size(), chance.fraction)];
}

std::optional<QString> unlessEmpty(const QString& text)
{
    return text.isEmpty() ? std::nullopt : std::optional(text);
}

QList<qsizetype> keptOf(const Crate& crate, const QList<qsizetype>& scenes, const QSet<QString>& avoiding)
{
    QList<qsizetype> kept;
    std::copy_if(scenes.begin(), scenes.end(), std::back_inserter(kept),
                 [&](qsizetype scene) { return !avoiding.contains(crate.scenes()[scene].family); });
    return kept.isEmpty() ? scenes : kept;
}

} // namespace

Chance systemChance()
{
    return {.fraction = [] { return QRandomGenerator::global()->generateDouble(); },
            .integer = [](int least, int most) { return QRandomGenerator::global()->bounded(least, most + 1); }};
}

Result roll(const Crate& crate, const Locks& locks, const Chance& chance, const QSet<QString>& avoiding)
{
    const Narrowed pool = narrow(crate, locks);
    const QList<qsizetype> candidates = keptOf(crate, pool.scenes, avoiding);
    if (candidates.isEmpty())
        return {.locks = locks};
    const Fraction& fraction = chance.fraction;
    const qsizetype index = candidates[chosen(candidates.size(), fraction)];
    const Scene& scene = crate.scenes()[index];

    Picked picked{.place = scene.place, .year = scene.year};
    picked.genre = lockedOrPicked(locks.genre, scene.genres, fraction);
    picked.mood = lockedOrPicked(locks.mood, scene.moods, fraction);
    const auto voice = pickVoice(crate.kinds(index), locks, fraction);
    if (voice)
        picked.voice = scene.voices[*voice];
    picked.motion = pick(scene.motions, fraction);
    picked.key = pick(scene.keys, fraction);
    const QString subject = pick(scene.subjects, fraction);
    picked.detailOne = pick(scene.details, fraction);
    picked.detailTwo = pick(without(scene.details, picked.detailOne), fraction);
    picked.bpm = pickBpm(scene.bpm, locks, chance);

    Result result;
    result.style = style(int(chosen(suitableStyleForms(picked), fraction)), picked);
    result.idea = idea(int(chosen(ideaForms, fraction)), subject);
    result.bent = QSet<QString>(pool.bends.begin(), pool.bends.end());
    result.locks = {.genre = unlessEmpty(picked.genre),
                    .mood = unlessEmpty(picked.mood),
                    .era = crate.decade(index),
                    .voice = voice ? std::optional(crate.kinds(index)[*voice]) : std::nullopt,
                    .tempo = tempo(picked.bpm)};
    return result;
}

Result make(const Locks& locks, const Fraction& fraction, const QSet<QString>& avoiding)
{
    Chance chance = systemChance();
    chance.fraction = fraction;
    return roll(crate(), locks, chance, avoiding);
}

QString Result::full() const
{
    return idea.isEmpty() ? style : style + u"\n\n"_s + idea;
}

size_t qHash(const Locks& locks, size_t seed)
{
    const auto text = [](const std::optional<QString>& lock) { return lock.value_or(QString()); };
    return qHashMulti(seed, text(locks.genre), text(locks.mood), text(locks.era), text(locks.voice), text(locks.tempo));
}

size_t qHash(const Result& result, size_t seed)
{
    return qHashMulti(seed, result.style, result.idea, result.bent, result.locks);
}

} // namespace orvane::Prompt
