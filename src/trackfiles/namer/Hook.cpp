#include "platform/text/Characters.h"
#include "trackfiles/namer/NameRules.h"

#include <QHash>
#include <QSet>

namespace orvane::TrackNamer {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype leastCharacters = 6;
constexpr qsizetype mostCharacters = 48;

bool isSung(QStringView line)
{
    return !line.isEmpty() && !QStringView(u"[(*").contains(line.front()) && !line.startsWith(u"Title:") &&
           !line.startsWith(u"Tags:");
}

/// The lines that could be a title, in order.
QList<QString> candidates(const QString& lyrics)
{
    QList<QString> kept;
    for (const QStringView line : lines(lyrics)) {
        const QStringView trimmed = trimmedBlanks(line);
        if (!isSung(trimmed))
            continue;
        QString candidate = trimmedForTitle(trimmed.toString());
        if (characterCount(candidate) >= leastCharacters)
            kept.append(std::move(candidate));
    }
    return kept;
}

/// The first line that is sung more than once and short enough, else the first of all.
QString chosen(const QList<QString>& kept)
{
    QHash<QString, int> counts;
    for (const QString& line : kept)
        ++counts[line.toLower()];
    for (const QString& line : kept) {
        if (counts[line.toLower()] > 1 && characterCount(line) <= mostCharacters)
            return line;
    }
    return kept.first();
}

QString shortened(const QString& line)
{
    if (characterCount(line) <= mostCharacters)
        return line;
    const QString start = firstCharacters(line, mostCharacters).toString();
    const qsizetype blank = start.lastIndexOf(u' ');
    return blank < 0 ? start : trimmedForTitle(start.first(blank));
}

bool isSmallWord(const QString& word)
{
    static const QSet<QString> words{u"a"_s,    u"an"_s,   u"and"_s,  u"the"_s,  u"of"_s,  u"in"_s,
                                     u"on"_s,   u"to"_s,   u"for"_s,  u"with"_s, u"at"_s,  u"by"_s,
                                     u"from"_s, u"into"_s, u"over"_s, u"as"_s,   u"but"_s, u"or"_s};
    return words.contains(word);
}

QString capitalised(const QString& word)
{
    const QStringView first = firstCharacters(word, 1);
    return first.toString().toUpper() + word.sliced(first.size());
}

QString titleCased(const QString& line)
{
    QStringList words = line.toLower().split(u' ');
    for (qsizetype index = 0; index < words.size(); ++index) {
        if (index == 0 || !isSmallWord(words[index]))
            words[index] = capitalised(words[index]);
    }
    return words.join(u' ');
}

bool isOneCase(const QString& line)
{
    return line == line.toLower() || line == line.toUpper();
}

} // namespace

std::optional<QString> hook(const QString& lyrics)
{
    const QList<QString> kept = candidates(lyrics);
    if (kept.isEmpty())
        return std::nullopt;
    const QString line = shortened(chosen(kept));
    // Where nothing but marks stands before the cut, nothing remains.
    if (line.isEmpty())
        return std::nullopt;
    return isOneCase(line) ? titleCased(line) : line;
}

} // namespace orvane::TrackNamer
