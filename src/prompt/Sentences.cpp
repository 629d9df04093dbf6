#include "prompt/Sentences.h"

#include "platform/text/Characters.h"

namespace orvane::Prompt {

using namespace Qt::Literals::StringLiterals;

namespace {

/// So many characters in voice and details are too many for the last form.
constexpr qsizetype wordy = 119;

QString capitalised(const QString& text)
{
    const QStringView first = firstCharacters(text, 1);
    return first.toString().toUpper() + text.mid(first.size());
}

QString firstPart(const QString& place)
{
    return place.section(u',', 0, 0);
}

bool beginsWithArticle(const QString& text)
{
    const QString lower = text.toLower();
    return lower.startsWith(u"a "_s) || lower.startsWith(u"an "_s) || lower.startsWith(u"the "_s);
}

/// Where a place begins with an article, "Play it like a" wants its tail.
QString shortPlace(const QString& place)
{
    const QString first = firstPart(place);
    return beginsWithArticle(first) ? trimmedBlanks(place.section(u',', -1)).toString() : first;
}

} // namespace

int suitableStyleForms(const Picked& picked)
{
    const qsizetype characters =
        characterCount(picked.voice) + characterCount(picked.detailOne) + characterCount(picked.detailTwo);
    return characters >= wordy ? styleForms - 1 : styleForms;
}

QString style(int form, const Picked& picked)
{
    const auto& [place, year, genre, mood, voice, motion, key, one, two, beats] = picked;
    const QString bpm = QString::number(beats) + u" BPM"_s;
    const QString details = one + u", "_s + two;
    const QString Genre = capitalised(genre);
    const QString Motion = capitalised(motion);
    const QString first = firstPart(place);
    switch (form) {
    case 0:
        return Genre + u" from "_s + first + u", "_s + year + u": "_s + voice + u", "_s + details + u". "_s + bpm +
               u", "_s + motion + u'.';
    case 1:
        return first + u", "_s + year + u" — "_s + details + u", "_s + voice + u". "_s + Motion + u", "_s + bpm + u'.';
    case 2:
        return capitalised(one) + u" and "_s + two + u" — "_s + genre + u", "_s + year + u", "_s + voice + u". "_s +
               bpm + u" in "_s + key + u'.';
    case 3:
        return Genre + u" the way it sounded in "_s + place + u", "_s + year + u": "_s + bpm + u", "_s + one + u", "_s +
               motion + u", "_s + voice + u'.';
    case 4:
        return u"Play it like a "_s + year + u' ' + shortPlace(place) + u" record nobody reissued: "_s + details +
               u", "_s + voice + u". "_s + Motion + u", "_s + bpm + u'.';
    case 5:
        return capitalised(mood) + u' ' + genre + u" from "_s + place + u", "_s + year + u". "_s + capitalised(one) +
               u", "_s + two + u", "_s + voice + u". "_s + bpm + u", "_s + key + u'.';
    default:
        return Genre + u", "_s + year + u", "_s + first + u". "_s + capitalised(voice) + u" over "_s + one + u' ' +
               two + u". "_s + Motion + u". "_s + bpm + u", "_s + key + u'.';
    }
}

QString idea(int form, const QString& subject)
{
    static const QString openings[ideaForms] = {u"A song about "_s, u"About "_s, u"Write it about "_s,
                                                u"The song is about "_s};
    return subject.isEmpty() ? QString() : openings[form] + subject + u'.';
}

} // namespace orvane::Prompt
