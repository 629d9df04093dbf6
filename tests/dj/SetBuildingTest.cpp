#include "dj/DJ.h"
#include "main/App/L10n.h"

#include <algorithm>
#include <gmock/gmock.h>

using namespace orvane;
using namespace Qt::Literals::StringLiterals;
using DJ::Analysis;
using DJ::Key;
using DJ::Ordering;
using testing::ElementsAre;

namespace {

Analysis track(const QString& title, double bpm = 120.0, const Key& key = {}, double energy = 0.5)
{
    return {.url = QUrl::fromLocalFile(u"/tracks/"_s + title + u".mp3"_s),
            .title = title,
            .bpm = bpm,
            .key = key,
            .energy = energy,
            .duration = 1200.0};
}

/// The key of a code such as "12A".
Key keyOf(const QString& code)
{
    for (int tonic = 0; tonic < 12; ++tonic) {
        for (const bool isMinor : {false, true}) {
            const Key key{.tonic = tonic, .isMinor = isMinor};
            if (DJ::camelot(key) == code)
                return key;
        }
    }
    ADD_FAILURE() << "no key " << code.toStdString();
    return {};
}

std::vector<std::string> titles(const DJ::Set& set)
{
    std::vector<std::string> result;
    for (const Analysis& one : set)
        result.push_back(one.title.toStdString());
    return result;
}

/// A set of tracks that differ in everything, the same at every call.
DJ::Set manyTracks(int count)
{
    DJ::Set set;
    for (int index = 0; index < count; ++index) {
        set.append(track(QString::number(index), 70.0 + index * 37 % 111,
                         {.tonic = index * 5 % 12, .isMinor = index % 3 == 0}, (index * 29 % 17) / 17.0));
    }
    return set;
}

/// The walk as it is told, with no regard for time.
DJ::Set plainEnergyArc(DJ::Set rest)
{
    DJ::Set result;
    while (!rest.isEmpty()) {
        qsizetype best = 0;
        for (qsizetype index = 1; index < rest.size(); ++index) {
            const bool isBetter = result.isEmpty()
                                      ? rest[index].energy < rest[best].energy
                                      : DJ::cost(result.last(), rest[index]) < DJ::cost(result.last(), rest[best]);
            best = isBetter ? index : best;
        }
        result.append(rest.takeAt(best));
    }
    return result;
}

const DJ::MixSettings likeARecord{.preservePitch = false};

} // namespace

TEST(KeyText, namesAreThoseOfTheTable)
{
    EXPECT_THAT(DJ::keyNames(), ElementsAre(u"C"_s, u"C♯"_s, u"D"_s, u"E♭"_s, u"E"_s, u"F"_s, u"F♯"_s, u"G"_s, u"A♭"_s,
                                            u"A"_s, u"B♭"_s, u"B"_s));
    EXPECT_EQ(DJ::name({.tonic = 3, .isMinor = true}), u"E♭ minor"_s);
    EXPECT_EQ(DJ::name({.tonic = 6}), u"F♯ major"_s);
}

TEST(KeyText, theCodeIsTheWheelsNumberAndAForMinor)
{
    const QStringList majors{u"8B"_s, u"3B"_s, u"10B"_s, u"5B"_s,  u"12B"_s, u"7B"_s,
                             u"2B"_s, u"9B"_s, u"4B"_s,  u"11B"_s, u"6B"_s,  u"1B"_s};
    for (int tonic = 0; tonic < 12; ++tonic)
        EXPECT_EQ(DJ::camelot({.tonic = tonic}), majors[tonic]);
    EXPECT_EQ(DJ::camelot({.tonic = 9, .isMinor = true}), u"8A"_s);
    EXPECT_EQ(DJ::camelot({.tonic = 0, .isMinor = true}), u"5A"_s);
    EXPECT_EQ(DJ::camelot({.tonic = 11, .isMinor = true}), u"10A"_s);
}

TEST(KeyText, theNumberIsTheCodeWithoutItsLastCharacter)
{
    for (int tonic = 0; tonic < 12; ++tonic) {
        for (const bool isMinor : {false, true}) {
            const Key key{.tonic = tonic, .isMinor = isMinor};
            EXPECT_EQ(key.camelotNumber(), DJ::camelot(key).chopped(1).toInt());
        }
    }
}

TEST(Failure, hasItsWords)
{
    EXPECT_EQ(DJ::Failure::unreadable(u"a.mp3"_s).sentence(), u"a.mp3 could not be read as audio."_s);
    EXPECT_EQ(DJ::Failure::empty().sentence(), u"There are no tracks to mix."_s);
    EXPECT_EQ(DJ::Failure::cancelled().sentence(), u"Stopped."_s);
    EXPECT_EQ(DJ::Failure::empty().code(), DJ::Failure::Empty);
    EXPECT_EQ(DJ::Failure::cancelled().code(), DJ::Failure::Cancelled);
}

TEST(MixSettings, haveTheirDefaults)
{
    const DJ::MixSettings settings;
    EXPECT_EQ(settings.crossfade, 8.0);
    EXPECT_TRUE(settings.matchTempo && settings.filterSweep && settings.levelMatch && settings.fadeEdges);
    EXPECT_TRUE(settings.beatMatch && settings.preservePitch);
    EXPECT_EQ(settings.levelTarget, -14.0);
    EXPECT_EQ(settings.watermark, Master::Watermark{});
    EXPECT_EQ(settings.maxStretch, 0.06);
    EXPECT_EQ(settings.keyNudge, 0);
    EXPECT_EQ(settings.format, Master::Format::wav);
}

TEST(MixSettings, aPullOfZeroPerCentIsNone)
{
    DJ::MixSettings settings;
    DJ::setTempoPull(settings, 12);
    EXPECT_TRUE(settings.matchTempo);
    EXPECT_DOUBLE_EQ(settings.maxStretch, 0.12);
    DJ::setTempoPull(settings, 0);
    EXPECT_FALSE(settings.matchTempo);
    EXPECT_EQ(settings.maxStretch, 0.0);
}

TEST(OrderingChips, haveTheirNumbersAndLabels)
{
    EXPECT_EQ(DJ::orderingOf(0), Ordering::energyArc);
    EXPECT_EQ(DJ::orderingOf(1), Ordering::keyJourney);
    EXPECT_EQ(DJ::orderingOf(2), Ordering::shuffle);
    EXPECT_EQ(DJ::orderingOf(3), Ordering::asListed);
    QStringList labels;
    for (const Ordering ordering : DJ::allOrderings)
        labels.append(L10n::t(DJ::labelOf(ordering)));
    EXPECT_EQ(labels, (QStringList{u"Energy arc"_s, u"Key journey"_s, u"Shuffle"_s, u"As listed"_s}));
}

TEST(OrderingChips, aTagThatIsNoRawValueCountsAsEnergyArc)
{
    EXPECT_EQ(DJ::orderingOf(4), Ordering::energyArc);
    EXPECT_EQ(DJ::orderingOf(-1), Ordering::energyArc);
}

TEST(SetOfOne, energyArcReturnsItAndTheMedianIsThatTracksTempo)
{
    const DJ::Set set{track(u"a"_s, 97.5)};
    EXPECT_EQ(DJ::order(set, Ordering::energyArc), set);
    EXPECT_EQ(DJ::medianBPM(set), 97.5);
}

TEST(EmptySet, theMedianIs120AndAllElseReturnsIt)
{
    EXPECT_EQ(DJ::medianBPM({}), 120.0);
    EXPECT_TRUE(DJ::asMixed({}, likeARecord).isEmpty());
    EXPECT_TRUE(DJ::trim({}, 30).isEmpty());
    for (const Ordering style : DJ::allOrderings)
        EXPECT_TRUE(DJ::order({}, style).isEmpty());
}

TEST(MedianBPM, ofTwoTracksAt120And130Is130)
{
    EXPECT_EQ(DJ::medianBPM({track(u"a"_s, 120.0), track(u"b"_s, 130.0)}), 130.0);
    EXPECT_EQ(DJ::medianBPM({track(u"a"_s, 130.0), track(u"b"_s, 120.0)}), 130.0);
}

TEST(AsMixed, tracksAt70And140InASetAround140ThePullIsAs140WithRatio1)
{
    const DJ::Set set{track(u"a"_s, 70.0), track(u"b"_s, 140.0), track(u"c"_s, 140.0)};
    const DJ::Set mixed = DJ::asMixed(set, likeARecord);
    EXPECT_EQ(mixed[0].playedBPM, 140.0);
    EXPECT_EQ(mixed[0].key, set[0].key);
    EXPECT_EQ(mixed[0].bpm, 70.0);
}

TEST(AsMixed, withPreservePitchOnThePlayedTempoStaysZero)
{
    const DJ::Set set{track(u"a"_s, 100.0), track(u"b"_s, 130.0)};
    EXPECT_EQ(DJ::asMixed(set, {}), set);
    EXPECT_EQ(DJ::asMixed(set, {})[0].playedBPM, 0.0);
}

TEST(AsMixed, withoutMatchingTheSetIsUnchanged)
{
    const DJ::Set set{track(u"a"_s, 100.0), track(u"b"_s, 130.0)};
    EXPECT_EQ(DJ::asMixed(set, {.matchTempo = false, .preservePitch = false}), set);
}

TEST(AsMixed, aRecordPlayedFasterSoundsHigher)
{
    const DJ::Set set{track(u"slow"_s, 100.0, {.tonic = 11, .isMinor = true}), track(u"median"_s, 120.0, {.tonic = 4})};
    const DJ::Set mixed = DJ::asMixed(set, {.maxStretch = 0.2, .preservePitch = false});
    EXPECT_DOUBLE_EQ(mixed[0].playedBPM, 120.0);
    EXPECT_EQ(mixed[0].key, (Key{.tonic = 2, .isMinor = true}));
    EXPECT_EQ(mixed[1].key, (Key{.tonic = 4}));
}

TEST(AsMixed, thePullStopsAtItsLimit)
{
    const DJ::Set set{track(u"slow"_s, 100.0), track(u"median"_s, 120.0)};
    const DJ::Set mixed = DJ::asMixed(set, likeARecord);
    EXPECT_DOUBLE_EQ(mixed[0].playedBPM, 106.0);
    EXPECT_EQ(mixed[0].key, (Key{.tonic = 1}));
}

TEST(AsMixed, allElseStaysAsItWasAnalysed)
{
    DJ::Set mixed = DJ::asMixed({track(u"slow"_s, 100.0), track(u"median"_s, 120.0)}, likeARecord);
    mixed[0].key = {};
    mixed[0].playedBPM = 0.0;
    EXPECT_EQ(mixed[0], track(u"slow"_s, 100.0));
}

TEST(AsMixed, aTrackWithoutATempoStaysAsItIs)
{
    const DJ::Set set{track(u"none"_s, 0.0), track(u"a"_s, 120.0), track(u"b"_s, 120.0)};
    EXPECT_EQ(DJ::asMixed(set, likeARecord)[0], set[0]);
}

TEST(AsMixed, aSecondTimeTheMoveIsAppliedToTheKeyAsItStands)
{
    const DJ::Set set{track(u"slow"_s, 100.0), track(u"median"_s, 120.0)};
    const DJ::Set twice = DJ::asMixed(DJ::asMixed(set, likeARecord), likeARecord);
    EXPECT_EQ(twice[0].key, (Key{.tonic = 2}));
}

TEST(KeyJourney, on12AAnd2AThe2AComesFirst)
{
    const DJ::Set set{track(u"twelve"_s, 120.0, keyOf(u"12A"_s)), track(u"two"_s, 120.0, keyOf(u"2A"_s))};
    EXPECT_THAT(titles(DJ::order(set, Ordering::keyJourney)), ElementsAre("two", "twelve"));
}

TEST(KeyJourney, isSortedByLengthOfTheCodeThenTheCodeThenTempo)
{
    DJ::Set wanted = manyTracks(200);
    std::stable_sort(wanted.begin(), wanted.end(), [](const Analysis& left, const Analysis& right) {
        const QString a = DJ::camelot(left.key);
        const QString b = DJ::camelot(right.key);
        return std::tuple(a.size(), a, left.bpm) < std::tuple(b.size(), b, right.bpm);
    });
    EXPECT_EQ(DJ::order(manyTracks(200), Ordering::keyJourney), wanted);
}

TEST(KeyJourney, ofTheSameCodeAndTempoTheGivenOrderStands)
{
    const DJ::Set set{track(u"b"_s), track(u"a"_s), track(u"slow"_s, 90.0), track(u"c"_s)};
    EXPECT_THAT(titles(DJ::order(set, Ordering::keyJourney)), ElementsAre("slow", "b", "a", "c"));
}

TEST(AsListed, isTheSetAsGiven)
{
    EXPECT_EQ(DJ::order(manyTracks(50), Ordering::asListed), manyTracks(50));
}

TEST(Shuffle, keepsEveryTrackAndIsNewAtEveryCall)
{
    const DJ::Set set = manyTracks(60);
    const DJ::Set first = DJ::order(set, Ordering::shuffle);
    EXPECT_TRUE(std::is_permutation(first.begin(), first.end(), set.begin(), set.end()));
    EXPECT_NE(first, set);
    EXPECT_NE(first, DJ::order(set, Ordering::shuffle));
}

TEST(Shuffle, putsEveryTrackInEveryPlaceAlike)
{
    const DJ::Set set = manyTracks(4);
    constexpr int runs = 4000;
    int places[4][4] = {};
    for (int run = 0; run < runs; ++run) {
        const DJ::Set shuffled = DJ::order(set, Ordering::shuffle);
        for (int place = 0; place < 4; ++place)
            ++places[shuffled[place].title.toInt()][place];
    }
    // Each is 1000 with a deviation of 27: seven of them are room enough for the age of this test.
    for (const auto& row : places) {
        for (const int count : row)
            EXPECT_NEAR(count, runs / 4, 200);
    }
}

TEST(EnergyArc, isTheGreedyWalkAsItIsTold)
{
    EXPECT_EQ(DJ::order(manyTracks(300), Ordering::energyArc), plainEnergyArc(manyTracks(300)));
}

TEST(EnergyArc, startsWithTheLowestEnergyAndOfEqualOnesTheEarliest)
{
    const DJ::Set set{track(u"a"_s, 120.0, {}, 0.9), track(u"b"_s, 120.0, {}, 0.2), track(u"c"_s, 120.0, {}, 0.2)};
    EXPECT_THAT(titles(DJ::order(set, Ordering::energyArc)), ElementsAre("b", "a", "c"));
}

TEST(EnergyArc, ofEqualCostsTheEarliestRemainingIsNext)
{
    const DJ::Set set{track(u"up"_s, 122.0, {}, 0.5), track(u"start"_s, 120.0, {}, 0.1),
                      track(u"down"_s, 118.0, {}, 0.5)};
    EXPECT_THAT(titles(DJ::order(set, Ordering::energyArc)), ElementsAre("start", "up", "down"));
}

TEST(Cost, countsKeyStepsTempoAndAFallInEnergy)
{
    const Analysis from = track(u"a"_s, 120.0, keyOf(u"8B"_s), 0.5);
    EXPECT_DOUBLE_EQ(DJ::cost(from, track(u"b"_s, 120.0, keyOf(u"10A"_s), 0.5)), 9.0);
    EXPECT_DOUBLE_EQ(DJ::cost(from, track(u"b"_s, 117.0, keyOf(u"8B"_s), 0.5)), 1.5);
    EXPECT_DOUBLE_EQ(DJ::cost(from, track(u"b"_s, 120.0, keyOf(u"8B"_s), 0.25)), 1.0);
    EXPECT_DOUBLE_EQ(DJ::cost(from, track(u"b"_s, 120.0, keyOf(u"8B"_s), 0.9)), 0.0);
}

TEST(Cost, goesByTheAnalysedTempoAndTheKeysInTheRecords)
{
    Analysis to = track(u"b"_s, 60.0, keyOf(u"8B"_s), 0.5);
    to.playedBPM = 120.0;
    EXPECT_DOUBLE_EQ(DJ::cost(track(u"a"_s, 120.0, keyOf(u"8B"_s), 0.5), to), 30.0);
    to.key = keyOf(u"9B"_s);
    EXPECT_DOUBLE_EQ(DJ::cost(track(u"a"_s, 120.0, keyOf(u"8B"_s), 0.5), to), 33.0);
}

TEST(Trim, at30MinutesOver3TracksOf20MinutesEachKeeps2Tracks)
{
    const DJ::Set set{track(u"a"_s), track(u"b"_s), track(u"c"_s)};
    EXPECT_THAT(titles(DJ::trim(set, 30)), ElementsAre("a", "b"));
}

TEST(Trim, stopsAsSoonAsTheLengthIsReached)
{
    const DJ::Set set{track(u"a"_s), track(u"b"_s), track(u"c"_s)};
    EXPECT_THAT(titles(DJ::trim(set, 20)), ElementsAre("a"));
    EXPECT_THAT(titles(DJ::trim(set, 40)), ElementsAre("a", "b"));
    EXPECT_THAT(titles(DJ::trim(set, 41)), ElementsAre("a", "b", "c"));
    EXPECT_THAT(titles(DJ::trim(set, 90)), ElementsAre("a", "b", "c"));
}

TEST(Trim, withoutMinutesOrUnderOneKeepsTheWholeSet)
{
    const DJ::Set set{track(u"a"_s), track(u"b"_s), track(u"c"_s)};
    EXPECT_EQ(DJ::trim(set, {}), set);
    EXPECT_EQ(DJ::trim(set, 0), set);
    EXPECT_EQ(DJ::trim(set, -5), set);
}

TEST(Trim, theChoicesAreEverythingAndAboutHalfAnHourAnHourAndAnHourAndAHalf)
{
    std::vector<std::string> texts;
    for (const int minutes : DJ::setLengths)
        texts.push_back(DJ::lengthText(minutes).toStdString());
    EXPECT_THAT(texts, ElementsAre("Everything", "~30 min", "~60 min", "~90 min"));
    EXPECT_EQ(DJ::trim(manyTracks(9), DJ::setLengths[0]).size(), 9);
    EXPECT_EQ(DJ::trim(manyTracks(9), DJ::setLengths[3]).size(), 5);
}

TEST(Analysis, isEqualByAllItsFields)
{
    const Analysis whole = track(u"a"_s);
    const auto differs = [&whole](auto change) {
        Analysis other = whole;
        change(other);
        return other != whole;
    };
    EXPECT_EQ(whole, track(u"a"_s));
    EXPECT_TRUE(differs([](Analysis& other) { other.url = {}; }));
    EXPECT_TRUE(differs([](Analysis& other) { other.title = u"b"_s; }));
    EXPECT_TRUE(differs([](Analysis& other) { other.bpm = 1.0; }));
    EXPECT_TRUE(differs([](Analysis& other) { other.key.isMinor = true; }));
    EXPECT_TRUE(differs([](Analysis& other) { other.energy = 1.0; }));
    EXPECT_TRUE(differs([](Analysis& other) { other.duration = 1.0; }));
    EXPECT_TRUE(differs([](Analysis& other) { other.grid.cueIn = 1.0; }));
    EXPECT_TRUE(differs([](Analysis& other) { other.playedBPM = 1.0; }));
}
