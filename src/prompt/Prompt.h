#pragma once

#include "prompt/Chance.h"
#include "prompt/Crate.h"
#include "prompt/Traits.h"

#include <QSet>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>

/// Text prompts rolled out of a table of scenes: genre, place, year, voice and studio of one roll belong together.
/// Every function can run on any thread.
namespace orvane::Prompt {

/// What the user keeps while the rest rolls.
struct Locks
{
    std::optional<QString> genre;
    std::optional<QString> mood;
    /// A decade, as decade() has it.
    std::optional<QString> era;
    /// One of voiceKinds().
    std::optional<QString> voice;
    /// One of tempos().
    std::optional<QString> tempo;

    bool operator==(const Locks&) const = default;
};

size_t qHash(const Locks& locks, size_t seed = 0);

struct Result
{
    QString style;
    /// What the song is about; empty for a scene without subjects.
    QString idea;
    /// The locks that could not be honoured: "genre", "era", "voice", "mood", "tempo".
    QSet<QString> bent;
    /// Not the locks asked for but the values that this result has.
    Locks locks;

    /// `style`, and the idea as a paragraph of its own where there is one.
    QString full() const;

    bool operator==(const Result&) const = default;
};

size_t qHash(const Result& result, size_t seed = 0);

/// Scenes by their index in a table, and the locks that had to give way.
struct Narrowed
{
    QList<qsizetype> scenes;
    /// In the order of the locks' rank: genre, era, voice, mood, tempo.
    QStringList bends;
};

/// Applies the locks in the order of their rank; one that would leave no scene gives way.
Narrowed narrow(const Crate& crate, const Locks& locks);

/// The scenes that a lock set leaves, with the bent words.
std::pair<QList<Scene>, QStringList> candidatesAndBends(const Locks& locks);
QList<Scene> candidates(const Locks& locks);

/// One roll of `crate`. `avoiding` names families to leave out as long as others are left.
Result roll(const Crate& crate, const Locks& locks, const Chance& chance, const QSet<QString>& avoiding = {});

/// One roll of the program's table. Every choice is made with `fraction`, save the tempo, for which the system draws.
Result make(const Locks& locks = {}, const Fraction& fraction = systemChance().fraction,
            const QSet<QString>& avoiding = {});

/// Up to `count` results, no two alike, with families that change. Fewer where the table yields no more.
QList<Result> batch(qsizetype count, const Locks& locks, const Chance& chance = systemChance());
QList<Result> batch(const Crate& crate, qsizetype count, const Locks& locks, const Chance& chance);

/// How many different prompts a table can yield.
std::int64_t combinations(const Crate& crate);
std::int64_t combinations();

/// The family of the first scene that has `genre`.
std::optional<QString> family(const QString& genre);

/// What the table offers, each value once, sorted.
const QStringList& genres();
const QStringList& moods();
/// Kinds of voices.
const QStringList& voices();
/// Decades.
const QStringList& eras();

} // namespace orvane::Prompt
