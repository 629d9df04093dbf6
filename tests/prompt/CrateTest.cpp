#include "prompt/Crate.h"

#include "prompt/CrateFile.h"
#include "prompt/Prompt.h"

#include <QFile>
#include <QMap>

#include <algorithm>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace orvane::Prompt {
namespace {

const QList<Scene>& scenes()
{
    return crate().scenes();
}

template <typename Column>
QStringList column(Column of)
{
    QStringList values;
    for (const Scene& scene : scenes())
        values.append(of(scene));
    return values;
}

qsizetype distinct(const QStringList& values)
{
    return QSet<QString>(values.begin(), values.end()).size();
}

/// Fails with the row's name where a list of it has not between `least` and `most` entries.
template <typename Column>
void expectSizes(Column of, qsizetype least, qsizetype most)
{
    QSet<qsizetype> sizes;
    for (const Scene& scene : scenes()) {
        EXPECT_GE(of(scene).size(), least) << scene.id.toStdString();
        EXPECT_LE(of(scene).size(), most) << scene.id.toStdString();
        sizes.insert(of(scene).size());
    }
    EXPECT_TRUE(sizes.contains(least));
    EXPECT_TRUE(sizes.contains(most));
}

/// Fails for a value that stands in the table more than once.
void expectNoneTwice(QStringList values)
{
    std::sort(values.begin(), values.end());
    const auto twice = std::adjacent_find(values.begin(), values.end());
    EXPECT_TRUE(twice == values.end()) << twice->toStdString();
}

const QStringList& genresOf(const Scene& scene)
{
    return scene.genres;
}

const QStringList& keysOf(const Scene& scene)
{
    return scene.keys;
}

const QStringList& moodsOf(const Scene& scene)
{
    return scene.moods;
}

const QStringList& voicesOf(const Scene& scene)
{
    return scene.voices;
}

const QStringList& detailsOf(const Scene& scene)
{
    return scene.details;
}

const QStringList& motionsOf(const Scene& scene)
{
    return scene.motions;
}

const QStringList& subjectsOf(const Scene& scene)
{
    return scene.subjects;
}

TEST(Crate, hasItsRowsInItsOrder)
{
    const QStringList ids = column([](const Scene& scene) { return QStringList{scene.id}; });
    const QStringList expected{
        u"chicago-jack-track-86"_s,
        u"detroit-upstairs-room-90"_s,
        u"newark-basement-choir-94"_s,
        u"rotterdam-dock-warehouse-95"_s,
        u"ibiza-terrace-sunrise-01"_s,
        u"berlin-power-station-08"_s,
        u"pretoria-log-drum-19"_s,
        u"paris-nowhere"_s,
        u"vegas-suite-bigroom-13"_s,
        u"bronx-park-jam-79"_s,
        u"long-beach-g-funk-93"_s,
        u"queens-basement-boom-bap-95"_s,
        u"hackney-pirate-jungle-94"_s,
        u"croydon-dubstep-06"_s,
        u"goa-beach-psytrance-97"_s,
        u"echo-park-brostep-11"_s,
        u"atlanta-trap-13"_s,
        u"novosibirsk-drift-phonk-21"_s,
        u"cairo-mahraganat-13"_s,
        u"mile-end-lofi-beats-17"_s,
        u"st-pauls-trip-hop-94"_s,
        u"bow-pirate-grime-03"_s,
        u"south-london-drill-18"_s,
        u"broward-emo-rap-17"_s,
        u"detroit-ballroom-69"_s,
        u"duesseldorf-motorik-73"_s,
        u"lusaka-zamrock-75"_s,
        u"manchester-rehearsal-80"_s,
        u"seattle-1991-grunge"_s,
        u"thames-valley-shoegaze-90"_s,
        u"harrow-road-punk-77"_s,
        u"san-diego-pop-punk-94"_s,
        u"champaign-emo-97"_s,
        u"hertfordshire-prog-72"_s,
        u"macon-southern-rock-73"_s,
        u"south-michigan-ave-blues-58"_s,
        u"worcester-vfw-2003"_s,
        u"birmingham-doom-71"_s,
        u"east-bay-thrash-86"_s,
        u"tampa-death-metal-91"_s,
        u"oslo-farmhouse-black-metal-93"_s,
        u"san-fernando-nu-metal-99"_s,
        u"south-memphis-1967-deep-soul"_s,
        u"new-orleans-1971-second-line-funk"_s,
        u"philadelphia-strings-73"_s,
        u"munich-1978-machine-disco"_s,
        u"northeast-dc-1984-go-go"_s,
        u"crenshaw-1982-boogie"_s,
        u"harlem-stairwell-doowop-58"_s,
        u"detroit-church-gospel-62"_s,
        u"midtown-new-jack-90"_s,
        u"fort-greene-1999-neo-soul"_s,
        u"toronto-condo-rnb-15"_s,
        u"nashville-arena-2016"_s,
        u"hill-country-dance-hall-74"_s,
        u"union-avenue-rockabilly-56"_s,
        u"sixteenth-avenue-countrypolitan-68"_s,
        u"fort-worth-line-dance-93"_s,
        u"laurel-canyon-71"_s,
        u"renfro-valley-51"_s,
        u"sand-mountain-59"_s,
        u"san-antonio-hotel-blues-37"_s,
        u"catskills-barn-indie-folk-11"_s,
        u"gotland-stone-barn-14"_s,
        u"clare-pub-session-75"_s,
        u"kidal-cassette-2004"_s,
        u"lagos-afrobeat-73"_s,
        u"lekki-afrobeats-19"_s,
        u"kingston-dub-76"_s,
        u"waterhouse-dancehall-88"_s,
        u"rio-tropicalia-68"_s,
        u"ipanema-bossa-63"_s,
        u"west-side-salsa-74"_s,
        u"garibaldi-ranchera-58"_s,
        u"rio-piedras-underground-96"_s,
        u"medellin-hillside-reggaeton-19"_s,
        u"culiacan-corridos-22"_s,
        u"monterrey-sonidero-06"_s,
        u"bombay-filmi-disco-81"_s,
        u"sheffield-synth-pop-82"_s,
        u"modena-italo-85"_s,
        u"tokyo-city-pop-88"_s,
        u"stockholm-teen-pop-99"_s,
        u"gangnam-kpop-19"_s,
        u"tokyo-anime-opening-98"_s,
        u"hollywood-august-christmas-63"_s,
        u"warehouse-worship-14"_s,
        u"dallas-synthwave-13"_s,
        u"auckland-bedroom-pop-16"_s,
        u"glendale-hyperpop-20"_s,
        u"maida-vale-tape-room-65"_s,
        u"kreuzberg-chiptune-06"_s,
        u"florida-bedroom-vapor-12"_s,
        u"near-west-side-industrial-89"_s,
        u"mile-end-post-rock-99"_s,
        u"burbank-scoring-stage-97"_s,
        u"soho-trailer-house-11"_s,
        u"west-berlin-sequencer-76"_s,
        u"shibuya-showroom-kankyo-84"_s,
        u"reykjavik-church-hall-15"_s,
        u"amsterdam-canal-noir-jazz-02"_s,
        u"south-side-church-basement-72"_s,
        u"fifty-second-street-bebop-47"_s,
        u"kansas-city-ballroom-38"_s,
        u"manhattan-supper-club-57"_s,
        u"addis-ababa-ethio-jazz-74"_s,
    };
    EXPECT_EQ(ids, expected);
    EXPECT_EQ(ids.size(), 106);
    expectNoneTwice(ids);
}

TEST(Crate, everyFamilyHasItsShare)
{
    QMap<QString, int> rows;
    QStringList order;
    for (const Scene& scene : scenes()) {
        if (++rows[scene.family] == 1)
            order.append(scene.family);
    }
    const QMap<QString, int> expected{{u"house"_s, 6},        {u"techno"_s, 7}, {u"hiphop"_s, 11}, {u"rock"_s, 11},
                                      {u"experimental"_s, 6}, {u"global"_s, 7}, {u"metal"_s, 6},   {u"soul"_s, 11},
                                      {u"country"_s, 5},      {u"folk"_s, 6},   {u"latin"_s, 7},   {u"pop"_s, 12},
                                      {u"ambient"_s, 5},      {u"jazz"_s, 6}};
    EXPECT_EQ(rows, expected);
    EXPECT_EQ(order,
              (QStringList{u"house"_s, u"techno"_s, u"hiphop"_s, u"rock"_s, u"experimental"_s, u"global"_s, u"metal"_s,
                           u"soul"_s, u"country"_s, u"folk"_s, u"latin"_s, u"pop"_s, u"ambient"_s, u"jazz"_s}));
}

TEST(Crate, everyListHasItsSizeInEveryRow)
{
    expectSizes(genresOf, 1, 5);
    expectSizes(keysOf, 1, 2);
    expectSizes(moodsOf, 2, 4);
    expectSizes(voicesOf, 2, 3);
    expectSizes(detailsOf, 5, 6);
    expectSizes(motionsOf, 2, 3);
    expectSizes(subjectsOf, 3, 4);
}

TEST(Crate, everyListHasItsSizeInAll)
{
    EXPECT_EQ(column(genresOf).size(), 421);
    EXPECT_EQ(distinct(column(genresOf)), 372);
    EXPECT_EQ(column(keysOf).size(), 211);
    EXPECT_EQ(column(moodsOf).size(), 414);
    EXPECT_EQ(distinct(column(moodsOf)), 192);
    EXPECT_EQ(column(voicesOf).size(), 317);
    EXPECT_EQ(column(detailsOf).size(), 535);
    EXPECT_EQ(column(motionsOf).size(), 317);
    EXPECT_EQ(column(subjectsOf).size(), 422);
}

TEST(Crate, noLineStandsInItTwice)
{
    expectNoneTwice(column(voicesOf) + column(detailsOf) + column(motionsOf) + column(subjectsOf));
    for (const Scene& scene : scenes()) {
        expectNoneTwice(scene.genres);
        expectNoneTwice(scene.keys);
        expectNoneTwice(scene.moods);
    }
}

TEST(Crate, hasTheseKeysAndNoOthers)
{
    QStringList keys = column(keysOf);
    std::sort(keys.begin(), keys.end());
    keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
    EXPECT_EQ(keys, (QStringList{
                        u"A dorian"_s,
                        u"A harmonic minor"_s,
                        u"A lydian"_s,
                        u"A major"_s,
                        u"A minor"_s,
                        u"A-flat major"_s,
                        u"B harmonic minor"_s,
                        u"B major"_s,
                        u"B minor"_s,
                        u"B-flat major"_s,
                        u"B-flat minor"_s,
                        u"C major"_s,
                        u"C minor"_s,
                        u"C# minor"_s,
                        u"D dorian"_s,
                        u"D hijaz"_s,
                        u"D major"_s,
                        u"D minor"_s,
                        u"E dorian"_s,
                        u"E major"_s,
                        u"E minor"_s,
                        u"E mixolydian"_s,
                        u"E phrygian"_s,
                        u"E-flat major"_s,
                        u"E-flat minor"_s,
                        u"F major"_s,
                        u"F minor"_s,
                        u"F# minor"_s,
                        u"G dorian"_s,
                        u"G major"_s,
                        u"G minor"_s,
                        u"G nahawand"_s,
                        u"ambassel mode"_s,
                        u"chromatic, drifting"_s,
                        u"chromatic, no key centre"_s,
                        u"open G"_s,
                        u"tizita mode"_s,
                        u"whole tone, no root"_s,
                    }));
}

TEST(Crate, temposRunFrom44To288)
{
    int slowest = 1000;
    int fastest = 0;
    for (const Scene& scene : scenes()) {
        EXPECT_LT(scene.bpm.first, scene.bpm.last) << scene.id.toStdString();
        slowest = std::min(slowest, scene.bpm.first);
        fastest = std::max(fastest, scene.bpm.last);
    }
    EXPECT_EQ(slowest, 44);
    EXPECT_EQ(fastest, 288);
}

TEST(Crate, yearsRunFrom1900To2022AndEndTheNamesOfTheirRows)
{
    int first = 3000;
    int last = 0;
    for (const Scene& scene : scenes()) {
        bool isNumber = false;
        const int year = scene.year.toInt(&isNumber);
        EXPECT_TRUE(isNumber && scene.year.size() == 4) << scene.id.toStdString();
        EXPECT_EQ(decade(scene.year), QString::number(year / 10) + u"0s"_s);
        // The one row that is nowhere is in no year that its name could tell.
        EXPECT_TRUE(scene.id.endsWith(scene.year.right(2)) || scene.id.contains(scene.year) ||
                    scene.id == u"paris-nowhere")
            << scene.id.toStdString();
        first = std::min(first, year);
        last = std::max(last, year);
    }
    EXPECT_EQ(first, 1900);
    EXPECT_EQ(last, 2022);
}

TEST(Crate, theFirstSceneThatHasAGenreTellsItsFamily)
{
    EXPECT_EQ(family(u"grunge"_s), u"rock"_s);
    EXPECT_EQ(family(u"electro house"_s), u"house"_s);
    EXPECT_EQ(family(u"kosmische"_s), u"experimental"_s);
    EXPECT_EQ(family(u"Grunge"_s), std::nullopt);
    const Crate two({{.family = u"b"_s, .genres = {u"x"_s}}, {.family = u"a"_s, .genres = {u"x"_s, u"y"_s}}});
    EXPECT_EQ(two.family(u"x"_s), u"b"_s);
    EXPECT_EQ(two.family(u"y"_s), u"a"_s);
}

TEST(Crate, theListsOfTheChipsAreItsColumnsSortedAndOnce)
{
    for (const QStringList& list : {genres(), moods(), voices(), eras()}) {
        EXPECT_TRUE(std::is_sorted(list.begin(), list.end()));
        expectNoneTwice(list);
    }
    EXPECT_EQ(genres().size(), 372);
    EXPECT_EQ(moods().size(), 192);
    QStringList kinds = voiceKinds();
    std::sort(kinds.begin(), kinds.end());
    EXPECT_EQ(voices(), kinds);
    EXPECT_EQ(eras(), (QStringList{u"1900s"_s, u"1930s"_s, u"1940s"_s, u"1950s"_s, u"1960s"_s, u"1970s"_s, u"1980s"_s,
                                   u"1990s"_s, u"2000s"_s, u"2010s"_s, u"2020s"_s}));
}

TEST(CrateFile, readsARowAsItIsWritten)
{
    const QList<Scene> read =
        scenesOf(u"house"_s, R"([{"id": "a-86", "place": "Leeds", "year": "1986", "bpm": [118, 125],
        "genres": ["g"], "keys": ["k"], "moods": ["m"], "voices": ["v"], "details": ["d", "e"], "motions": ["o"],
        "subjects": ["s"]}])");
    const Scene expected{.id = u"a-86"_s,
                         .family = u"house"_s,
                         .place = u"Leeds"_s,
                         .year = u"1986"_s,
                         .genres = {u"g"_s},
                         .bpm = {.first = 118, .last = 125},
                         .keys = {u"k"_s},
                         .moods = {u"m"_s},
                         .voices = {u"v"_s},
                         .details = {u"d"_s, u"e"_s},
                         .motions = {u"o"_s},
                         .subjects = {u"s"_s}};
    EXPECT_EQ(read, QList<Scene>{expected});
}

TEST(CrateFile, noFileHoldsARowThatTheOrderDoesNotName)
{
    qsizetype rows = 0;
    for (const QString& family :
         {u"house"_s, u"techno"_s, u"hiphop"_s, u"rock"_s, u"experimental"_s, u"global"_s, u"metal"_s, u"soul"_s,
          u"country"_s, u"folk"_s, u"latin"_s, u"pop"_s, u"ambient"_s, u"jazz"_s}) {
        QFile file(u":/prompt/crate/"_s + family + u".json"_s);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        rows += scenesOf(family, file.readAll()).size();
    }
    EXPECT_EQ(rows, scenes().size());
}

} // namespace
} // namespace orvane::Prompt
