#include "demonstration/service/Words.h"

#include <QStringBuilder>

#include <array>
#include <random>

namespace orvane::demo {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Lines that rhyme with each other.
using Family = std::array<QStringView, 5>;

constexpr std::array<Family, 9> verseLines{{
    {u"The kettle sings before the break of day", u"A paper boat is on its winding way",
     u"I never found the proper words to say", u"The harbour lights are turning into grey",
     u"We hung the coats and let the records play"},
    {u"There is a map of rain upon the glass", u"The swallows write their letters in the grass",
     u"I count the lamps as all the houses pass", u"The evening hums a trumpet made of brass",
     u"We learned the sky like children in a class"},
    {u"Your window keeps a little of the light", u"The trains go by like thoughts across the night",
     u"I fold the morning till the edges are right", u"A lonely kite is holding on to its height",
     u"The whole wide street is painted silver and white"},
    {u"The radio forgets another song", u"I knew the way but took the turning wrong",
     u"The river has been patient all along", u"The summer days are seven miles long",
     u"A quiet voice can still be very strong"},
    {u"Your coat still keeps the colour of the sea", u"The wind is trying every lock and key",
     u"There is a chair, a candle, and there's me", u"The clock upstairs is always stuck at three",
     u"A garden waits for what it wants to be"},
    {u"We climbed the stairs to find a little air", u"The stars came out like they had time to spare",
     u"You laughed and shook the weather from your hair", u"The city breathes and doesn't seem to care",
     u"I left a note for someone on the chair"},
    {u"The baker lifts the shutters off the street", u"The tide comes in and cools our dusty feet",
     u"My shoes have learned to walk in time to the beat", u"The corner is the place where strangers meet",
     u"The oranges are small this year but sweet"},
    {u"I keep your postcard underneath the clock", u"A yellow boat is sleeping by the dock",
     u"The pigeons hold their meeting round the block", u"There's writing that the rain left on the rock",
     u"The morning came and didn't even knock"},
    {u"The mountain wears its blanket made of snow", u"We asked the road how far it meant to go",
     u"The embers kept the secrets that they know", u"I plant my doubts and wait for them to grow",
     u"The boats are lit and all the lanterns low"},
}};

/// Choruses of four lines, whose second and fourth rhyme.
constexpr std::array<std::array<QStringView, 4>, 6> choruses{{
    {u"So hold the light until I find the shore", u"Hold on, hold on, the night is nearly through",
     u"I never knew what open hands were for", u"And every road is leading back to you"},
    {u"We are louder than the weather now", u"We are brighter than the rain", u"Let the thunder take a bow",
     u"We will sing it all again"},
    {u"Carry on, carry on, the road is wide", u"There's a morning in your name",
     u"Carry on with the moon along your side", u"And we'll never be the same"},
    {u"Let it ring until the summer ends", u"Let it ring across the town", u"For the strangers and the friends",
     u"Till the stars are coming down"},
    {u"Oh, slow down, the world is turning anyway", u"Slow down, and let it turn",
     u"There's a little gold in every ordinary day", u"And a little fire to burn"},
    {u"Wake me when the river meets the sky", u"Wake me when it's time to go", u"I was only learning how to fly",
     u"I was only taking it slow"},
}};

constexpr std::array<QStringView, 12> styles{u"synthwave", u"indie folk",  u"deep house", u"dream pop",
                                             u"lo-fi",     u"soul",        u"ambient",    u"drum and bass",
                                             u"nu disco",  u"chamber pop", u"downtempo",  u"city pop"};

constexpr std::array<QStringView, 8> colours{u"warm",   u"nostalgic", u"female vocals", u"analog synths",
                                             u"mellow", u"uplifting", u"male vocals",   u"late night"};

/// Rolls that depend on the seed alone, on every machine.
class Dice
{
public:
    explicit Dice(unsigned seed)
        : engine_(seed * 2654435761U)
    {
    }

    template <typename List>
    const auto& pick(const List& list)
    {
        return list[engine_() % static_cast<unsigned>(list.size())];
    }

    std::size_t below(std::size_t count) { return engine_() % static_cast<unsigned>(count); }

private:
    std::minstd_rand engine_;
};

void addCouplet(QString& text, Dice& dice, std::size_t family)
{
    const std::size_t first = dice.below(5);
    const std::size_t second = (first + 1 + dice.below(4)) % 5;
    text += verseLines[family][first] % u",\n" % verseLines[family][second] % u".\n";
}

void addVerse(QString& text, Dice& dice, std::size_t family)
{
    text += u"[Verse]\n";
    addCouplet(text, dice, family % verseLines.size());
    addCouplet(text, dice, (family + 4) % verseLines.size());
    text += u'\n';
}

void addChorus(QString& text, std::size_t number)
{
    text += u"[Chorus]\n";
    for (const QStringView line : choruses[number])
        text += line % u'\n';
    text += u'\n';
}

} // namespace

QString tagsOf(unsigned seed)
{
    Dice dice(seed + 7);
    return dice.pick(styles) % u", " % dice.pick(colours);
}

QString lyricsOf(unsigned seed)
{
    Dice dice(seed + 13);
    const std::size_t family = dice.below(verseLines.size());
    const std::size_t chorus = dice.below(choruses.size());
    QString text;
    text.reserve(1024);
    addVerse(text, dice, family);
    addChorus(text, chorus);
    addVerse(text, dice, family + 2);
    addChorus(text, chorus);
    text += u"[Outro]\n";
    addCouplet(text, dice, (family + 1) % verseLines.size());
    return text;
}

} // namespace orvane::demo
