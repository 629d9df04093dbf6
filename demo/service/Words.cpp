#include "demo/service/Words.h"

#include <QStringList>

#include <random>

namespace orvane::demo {

using namespace Qt::Literals::StringLiterals;

namespace {

const QStringList& qualities()
{
    static const QStringList words{u"Amber"_s,  u"Silver"_s, u"Quiet"_s, u"Paper"_s,  u"Velvet"_s, u"Distant"_s,
                                   u"Hollow"_s, u"Golden"_s, u"Neon"_s,  u"Winter"_s, u"Salt"_s,   u"Electric"_s};
    return words;
}

const QStringList& things()
{
    static const QStringList words{u"Harbour"_s, u"Lights"_s,  u"Rivers"_s,  u"Windows"_s, u"Signals"_s, u"Gardens"_s,
                                   u"Trains"_s,  u"Seasons"_s, u"Letters"_s, u"Shores"_s,  u"Engines"_s, u"Echoes"_s};
    return words;
}

const QStringList& openings()
{
    static const QStringList lines{
        u"The kettle sings before the sun comes in"_s,   u"There is a map of rain across the glass"_s,
        u"I count the lamps from here to the station"_s, u"Your coat still keeps the colour of the sea"_s,
        u"The radio forgets the words again"_s,          u"A paper boat goes under every bridge"_s};
    return lines;
}

const QStringList& answers()
{
    static const QStringList lines{
        u"and every mile is softer than the last"_s,      u"and nobody is asking for the time"_s,
        u"and still the morning has a place to land"_s,   u"and all the doors are open to the wind"_s,
        u"and I have learned the long way by its name"_s, u"and what we carry never weighed us down"_s};
    return lines;
}

const QStringList& choruses()
{
    static const QStringList lines{u"Hold the light until I find the shore"_s, u"We are louder than the weather now"_s,
                                   u"Carry on, carry on, the road is wide"_s, u"Let it ring until the summer ends"_s};
    return lines;
}

const QStringList& styles()
{
    static const QStringList words{u"synthwave"_s, u"indie folk"_s, u"deep house"_s,    u"dream pop"_s,
                                   u"lo-fi"_s,     u"soul"_s,       u"drum and bass"_s, u"ambient"_s};
    return words;
}

/// Rolls that depend on the seed alone, on every machine.
class Dice
{
public:
    explicit Dice(unsigned seed)
        : engine_(seed)
    {
    }

    const QString& pick(const QStringList& words)
    {
        return words.at(static_cast<qsizetype>(engine_() % static_cast<unsigned>(words.size())));
    }

private:
    std::mt19937 engine_;
};

QString verse(Dice& dice)
{
    QString text = u"[Verse]\n"_s;
    for (int couplet = 0; couplet < 2; ++couplet)
        text += dice.pick(openings()) + u",\n"_s + dice.pick(answers()) + u".\n"_s;
    return text + u'\n';
}

} // namespace

QString titleOf(unsigned seed)
{
    Dice dice(seed);
    const QString quality = dice.pick(qualities());
    return quality + u' ' + dice.pick(things());
}

QString tagsOf(unsigned seed)
{
    Dice dice(seed + 7);
    const QString first = dice.pick(styles());
    const QString second = dice.pick(styles());
    return first == second ? first : first + u", "_s + second;
}

QString lyricsOf(unsigned seed)
{
    Dice dice(seed + 13);
    const QString line = dice.pick(choruses());
    const QString chorus = u"[Chorus]\n"_s + line + u"\n"_s + line + u"\n\n"_s;
    return verse(dice) + chorus + verse(dice) + chorus + u"[Outro]\n"_s + dice.pick(answers()) + u'\n';
}

} // namespace orvane::demo
