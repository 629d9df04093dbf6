#include "platform/text/Characters.h"

#include <QTextBoundaryFinder>

#include <algorithm>

namespace orvane {
namespace {

/// Below the combining marks every code unit but a line feed behind a carriage return is a character of its own.
bool isPlain(QStringView text)
{
    constexpr char16_t firstCombining = 0x0300;
    return std::all_of(text.utf16(), text.utf16() + text.size(),
                       [](char16_t unit) { return unit < firstCombining && unit != u'\r' && unit != 0x00AD; });
}

template <typename Belongs>
QStringView trimmed(QStringView text, Belongs belongs)
{
    while (!text.isEmpty() && belongs(text.front().unicode()))
        text = text.sliced(1);
    while (!text.isEmpty() && belongs(text.back().unicode()))
        text.chop(1);
    return text;
}

} // namespace

qsizetype characterCount(QStringView text)
{
    if (isPlain(text))
        return text.size();
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype count = 0;
    while (finder.toNextBoundary() != -1)
        ++count;
    return count;
}

QStringView firstCharacters(QStringView text, qsizetype count)
{
    if (count >= text.size())
        return text;
    if (isPlain(text.first(count + 1)))
        return text.first(count);
    // Boundaries depend on what lies before them only, so a part suffices that is sure to hold the characters wanted.
    constexpr qsizetype generousUnitsPerCharacter = 64;
    const QStringView part = text.first(std::min(text.size(), count * generousUnitsPerCharacter));
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, part);
    qsizetype end = 0;
    for (qsizetype found = 0; found < count; ++found) {
        const qsizetype next = finder.toNextBoundary();
        if (next == -1)
            return part;
        end = next;
    }
    return text.first(end);
}

bool isWhiteSpace(char16_t unit)
{
    return isNewline(unit) || isBlank(unit);
}

bool isBlank(char16_t unit)
{
    return unit == u'\t' || unit == u' ' || unit == 0x00A0 || unit == 0x1680 || (unit >= 0x2000 && unit <= 0x200A) ||
           unit == 0x202F || unit == 0x205F || unit == 0x3000;
}

bool isNewline(char16_t unit)
{
    return (unit >= 0x000A && unit <= 0x000D) || unit == 0x0085 || unit == 0x2028 || unit == 0x2029;
}

QStringView trimmedBlanks(QStringView text)
{
    return trimmed(text, isBlank);
}

QStringView trimmedWhiteSpace(QStringView text)
{
    return trimmed(text, isWhiteSpace);
}

QString collapsedWhiteSpace(QStringView text)
{
    QString result;
    result.reserve(text.size());
    bool inRun = false;
    for (const QChar character : text) {
        const bool white = isWhiteSpace(character.unicode());
        if (!white)
            result.append(character);
        else if (!inRun)
            result.append(u' ');
        inRun = white;
    }
    return result;
}

QList<QStringView> lines(QStringView text)
{
    QList<QStringView> result;
    qsizetype start = 0;
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (!isNewline(text[at].unicode()))
            continue;
        result.append(text.sliced(start, at - start));
        if (text[at] == u'\r' && at + 1 < text.size() && text[at + 1] == u'\n')
            ++at;
        start = at + 1;
    }
    result.append(text.sliced(start));
    return result;
}

} // namespace orvane
