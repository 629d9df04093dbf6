#include "prompt/Traits.h"

#include "platform/text/Characters.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <iterator>
#include <span>
#include <string_view>
#include <vector>

using namespace Qt::StringLiterals;

namespace orvane::Prompt {
namespace {

constexpr int bandEnds[] = {90, 120, 140};

constexpr QStringView noVoice[] = {u"no vocal",        u"no voice",     u"instrumental",    u"wordless",
                                   u"no singing",      u"no words",     u"not a lyric",     u"no word legible",
                                   u"used as texture", u"stop landing", u"never comes back"};
constexpr QStringView severalVoices[] = {u"chorus of",
                                         u"women's chorus",
                                         u"male chorus",
                                         u"choir",
                                         u"harmon",
                                         u"unison",
                                         u"group of voices",
                                         u"backing singers",
                                         u"session singers",
                                         u"everyone",
                                         u"whole band",
                                         u"the band shouting",
                                         u"the band answering",
                                         u"together",
                                         u"two singers",
                                         u"three ",
                                         u"several ",
                                         u"stacked",
                                         u"doubled by",
                                         u"answering every line",
                                         u"a crowd",
                                         u"call and response"};
constexpr QStringView spokenOrRapped[] = {u" rap",    u"mc ",     u"spoken",      u"toast",          u"chant",
                                          u"shout",   u"whisper", u"instruction", u"producer's tag", u"talkbox",
                                          u"vocoder", u"vocoded", u"sampled",     u"sermon",         u"narrat"};
constexpr QStringView female[] = {u"female", u"woman", u"women", u"soprano", u"contralto", u"mezzo",
                                  u"girl",   u" she ", u" her ", u"herself", u"diva"};
constexpr QStringView male[] = {u"male", u" man ", u" men ", u"baritone", u"tenor",  u"falsetto",
                                u"boy",  u" he ",  u" his ", u"himself",  u"crooner"};

struct Kind
{
    qsizetype name;
    std::span<const QStringView> words;
};

/// In the order of their right: the first whose word is found decides.
constexpr Kind kinds[] = {{5, noVoice}, {2, severalVoices}, {3, spokenOrRapped}, {0, female}, {1, male}};
constexpr qsizetype singleVoice = 4;

struct Word
{
    std::u16string_view text;
    std::size_t rank;
};

/// All words by their first letter, so that one walk over a line finds them all.
class WordIndex
{
public:
    WordIndex()
    {
        for (std::size_t rank = 0; rank < std::size(kinds); ++rank) {
            for (const QStringView word : kinds[rank].words)
                byFirstLetter_[word.front().unicode()].push_back(
                    {std::u16string_view(word.utf16(), std::size_t(word.size())), rank});
        }
    }

    /// The lowest rank of a word in `line`; the number of ranks where it has none.
    std::size_t lowestRank(std::u16string_view line) const
    {
        std::size_t lowest = std::size(kinds);
        for (std::size_t start = 0; start < line.size(); ++start) {
            const char16_t letter = line[start];
            if (letter >= byFirstLetter_.size())
                continue;
            for (const Word& word : byFirstLetter_[letter]) {
                if (word.rank < lowest && line.substr(start, word.text.size()) == word.text)
                    lowest = word.rank;
            }
        }
        return lowest;
    }

private:
    std::array<std::vector<Word>, 128> byFirstLetter_;
};

} // namespace

const QStringList& tempos()
{
    static const QStringList names{u"under 90 BPM"_s, u"90–120 BPM"_s, u"120–140 BPM"_s, u"over 140 BPM"_s};
    return names;
}

const QString& tempo(int bpm)
{
    return tempos()[std::distance(std::begin(bandEnds),
                                  std::upper_bound(std::begin(bandEnds), std::end(bandEnds), bpm))];
}

const QStringList& voiceKinds()
{
    static const QStringList names{u"female voice"_s,     u"male voice"_s,     u"several voices"_s,
                                   u"spoken or rapped"_s, u"a single voice"_s, u"no voice"_s};
    return names;
}

QString kind(QStringView voice)
{
    static const WordIndex words;
    const QString line = u' ' + voice.toString().toLower() + u' ';
    const std::size_t rank = words.lowestRank(std::u16string_view(QStringView(line).utf16(), std::size_t(line.size())));
    return voiceKinds()[rank < std::size(kinds) ? kinds[rank].name : singleVoice];
}

QString decade(const QString& year)
{
    static const QRegularExpression wholeNumber(u"\\A[+-]?[0-9]+\\z"_s);
    const QString digits = firstCharacters(year, 4).toString();
    return wholeNumber.match(digits).hasMatch() ? QString::number(digits.toInt() / 10 * 10) + u's' : year;
}

} // namespace orvane::Prompt
