#include "demonstration/service/Words.h"

#include <QStringList>

#include <array>

namespace orvane::demo {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::array<QStringView, 48> qualities{
    u"Amber",   u"Silver",    u"Quiet",    u"Paper",    u"Velvet",    u"Distant",  u"Hollow",   u"Golden",
    u"Neon",    u"Winter",    u"Salt",     u"Electric", u"Copper",    u"Midnight", u"Restless", u"Tender",
    u"Crimson", u"Wooden",    u"Glass",    u"Northern", u"Slow",      u"Borrowed", u"Wild",     u"Faded",
    u"Hidden",  u"Lunar",     u"Marble",   u"Open",     u"Patient",   u"Rusted",   u"Scarlet",  u"Silent",
    u"Simple",  u"Sleepless", u"Spinning", u"Stolen",   u"Summer",    u"Sunken",   u"Tangled",  u"Thin",
    u"Upward",  u"Violet",    u"Waking",   u"Warm",     u"Weathered", u"Western",  u"White",    u"Yellow"};

constexpr std::array<QStringView, 48> things{
    u"Harbour",  u"Lights",  u"Rivers",   u"Windows", u"Signals",    u"Gardens", u"Trains",   u"Seasons",
    u"Letters",  u"Shores",  u"Engines",  u"Echoes",  u"Lanterns",   u"Maps",    u"Bridges",  u"Clouds",
    u"Feathers", u"Fields",  u"Fires",    u"Ghosts",  u"Hours",      u"Islands", u"Kites",    u"Ladders",
    u"Machines", u"Mirrors", u"Mornings", u"Oceans",  u"Orchards",   u"Pages",   u"Planets",  u"Postcards",
    u"Roads",    u"Roofs",   u"Rooms",    u"Sails",   u"Satellites", u"Shadows", u"Sparrows", u"Stairs",
    u"Stations", u"Stones",  u"Tides",    u"Towers",  u"Valleys",    u"Voices",  u"Waves",    u"Wires"};

constexpr std::array<QStringView, 24> endings{u"",
                                              u" at Dawn",
                                              u" After Rain",
                                              u" in Blue",
                                              u" Again",
                                              u" by the Sea",
                                              u" for Two",
                                              u" in the Attic",
                                              u" on the Radio",
                                              u" Without You",
                                              u" Until Morning",
                                              u" at Low Tide",
                                              u" in Reverse",
                                              u" Overhead",
                                              u" at Home",
                                              u" of My Own",
                                              u" in July",
                                              u" Under Snow",
                                              u" in Stereo",
                                              u" from Afar",
                                              u" by Hand",
                                              u" to the North",
                                              u" in Slow Motion",
                                              u" After All"};

constexpr quint64 titleCount = qualities.size() * things.size() * endings.size();

/// Walks through all titles in an order without a pattern: the step has no divisor in common with their number.
quint64 shuffled(quint64 number)
{
    constexpr quint64 step = 35'317;
    return number * step % titleCount;
}

} // namespace

QString titleOf(unsigned seed, int ordinal)
{
    const quint64 place = shuffled(seed * 7'919ULL + static_cast<quint64>(ordinal));
    const quint64 round = static_cast<quint64>(ordinal) / titleCount;
    const quint64 pair = place / endings.size();
    QString title;
    title += qualities[pair / things.size()];
    title += u' ';
    title += things[pair % things.size()];
    title += endings[place % endings.size()];
    return round == 0 ? title : title + u' ' + QString::number(round + 1);
}

} // namespace orvane::demo
