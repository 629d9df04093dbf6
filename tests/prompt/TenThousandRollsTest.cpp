#include "prompt/Prompt.h"
#include "tests/prompt/MadeCrate.h"
#include "tests/support/Sandbox.h"

#include <QHash>

#include <array>
#include <gtest/gtest.h>
#include <random>

using namespace Qt::StringLiterals;

namespace orvane::Prompt {
namespace {

constexpr int rolls = 10'000;

class TenThousandRollsTest : public testing::Test
{
protected:
    TenThousandRollsTest()
        : chance{.fraction = [this] { return unit(engine); },
                 .integer = [this](int least, int most) { return std::uniform_int_distribution(least, most)(engine); }}
    {
    }

    std::mt19937 engine{test::seed()};
    std::uniform_real_distribution<double> unit{0, 1};
    Chance chance;
};

/// Which row a style was rolled of: its year, and a detail that stands in no other row.
qsizetype rowOf(const QString& style)
{
    const QString lower = style.toLower();
    const QList<Scene>& scenes = crate().scenes();
    for (qsizetype row = 0; row < scenes.size(); ++row) {
        for (const QString& detail : scenes[row].details) {
            if (lower.contains(detail.toLower()))
                return row;
        }
    }
    return -1;
}

bool isBroken(const QString& style)
{
    return style.isEmpty() || style.contains(u"  "_s) || style.contains(u",,"_s) || style.contains(u".."_s) ||
           style.contains(u" ,"_s) || style.contains(u", ."_s) || !style.endsWith(u'.');
}

TEST_F(TenThousandRollsTest, everySceneComesUpAsOftenAsAnyOther)
{
    QList<int> counts(crate().scenes().size());
    for (int time = 0; time < rolls; ++time) {
        const Result result = roll(crate(), {}, chance);
        EXPECT_FALSE(isBroken(result.style)) << result.style.toStdString();
        EXPECT_FALSE(result.idea.isEmpty());
        EXPECT_TRUE(result.bent.isEmpty());
        const qsizetype row = rowOf(result.style);
        ASSERT_GE(row, 0) << result.style.toStdString();
        ++counts[row];
    }
    const double expected = double(rolls) / double(counts.size());
    double chiSquare = 0;
    for (int count : std::as_const(counts)) {
        EXPECT_GT(count, 0);
        chiSquare += (count - expected) * (count - expected) / expected;
    }
    // 105 degrees of freedom: beyond 190 a fair draw falls once in about a million runs.
    EXPECT_LT(chiSquare, 190) << "seed " << test::seed();
}

template <typename Pick>
std::optional<QString> sometimes(std::mt19937& engine, Pick pick)
{
    return engine() % 2 == 0 ? std::optional(pick()) : std::nullopt;
}

QString anyOf(std::mt19937& engine, const QStringList& list)
{
    return list[qsizetype(engine() % std::uint32_t(list.size()))];
}

/// The lock is what the result has, or it is bent; never both.
void expectHonouredOrBent(const Result& result, const std::optional<QString>& lock, const std::optional<QString>& has,
                          const QString& word)
{
    if (!lock) {
        EXPECT_FALSE(result.bent.contains(word));
    } else {
        EXPECT_NE(*lock == has, result.bent.contains(word))
            << word.toStdString() << ": " << lock->toStdString() << ", " << result.style.toStdString();
    }
}

TEST_F(TenThousandRollsTest, everyLockIsHonouredOrBent)
{
    for (int time = 0; time < rolls; ++time) {
        Locks locks;
        locks.genre = sometimes(engine, [&] { return anyOf(engine, genres()); });
        locks.mood = sometimes(engine, [&] { return anyOf(engine, moods()); });
        locks.era = sometimes(engine, [&] { return anyOf(engine, eras()); });
        locks.voice = sometimes(engine, [&] { return anyOf(engine, voices()); });
        locks.tempo = sometimes(engine, [&] { return anyOf(engine, tempos()); });
        const Result result = roll(crate(), locks, chance);
        EXPECT_FALSE(isBroken(result.style)) << result.style.toStdString();
        EXPECT_FALSE(result.bent.contains(u"genre"_s));
        expectHonouredOrBent(result, locks.genre, result.locks.genre, u"genre"_s);
        expectHonouredOrBent(result, locks.era, result.locks.era, u"era"_s);
        const Narrowed pool = narrow(crate(), locks);
        EXPECT_EQ(result.bent, (QSet<QString>{pool.bends.begin(), pool.bends.end()}));
        // A scene of a bent kind, mood or tempo may hold the locked one still: then only not to bend would be wrong.
        for (const auto& [lock, has, word] : {std::tuple{locks.voice, result.locks.voice, u"voice"_s},
                                              std::tuple{locks.mood, result.locks.mood, u"mood"_s},
                                              std::tuple{locks.tempo, result.locks.tempo, u"tempo"_s}}) {
            if (lock && !result.bent.contains(word)) {
                EXPECT_EQ(lock, has) << word.toStdString();
            }
        }
    }
}

/// Which style form a roll of a made scene is in.
int formOf(const QString& style)
{
    const QList<bool> marks{style.contains(u" from Old Street, 1986: "_s),
                            style.startsWith(u"Old Street, 1986 — "_s),
                            style.contains(u", 1986, a "_s),
                            style.contains(u" the way it sounded in "_s),
                            style.startsWith(u"Play it like a 1986 "_s),
                            style.contains(u" from Old Street, a cellar, 1986. "_s),
                            style.contains(u" over "_s)};
    EXPECT_EQ(marks.count(true), 1) << style.toStdString();
    return int(marks.indexOf(true));
}

TEST_F(TenThousandRollsTest, everyStyleFormComesUpAsOftenAsAnyOtherForShortLines)
{
    const Crate one({test::scene(u"one"_s)});
    std::array<int, 7> counts{};
    for (int time = 0; time < rolls; ++time)
        ++counts.at(std::size_t(formOf(roll(one, {}, chance).style)));
    // A seventh is 1,429, with a deviation of 35: six of them are never seen.
    for (int count : counts)
        EXPECT_NEAR(count, rolls / 7.0, 210) << "seed " << test::seed();
}

} // namespace
} // namespace orvane::Prompt
