#include "suno/TrackNames.h"

#include "platform/filesystem/AtomicFile.h"
#include "platform/text/Characters.h"
#include "trackfiles/keys/TrackKeys.h"

#include <QFileInfo>
#include <QTextBoundaryFinder>

#include <algorithm>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int longestName = 120;
/// Leaves room in the 255 bytes of a file name for the number, the endings and the mark of a temporary sibling.
constexpr qsizetype longestNameBytes = 200;
/// Composing shrinks a text to a third at most, so this many code units always hold the bytes that count.
constexpr qsizetype unitsThatCount = 4096;

/// Bidirectional controls, and the byte order mark, which a reader of the folder takes off the start of a name.
bool isUnseenControl(char16_t unit)
{
    return unit == 0xfeff || unit == 0x061c || unit == 0x200e || unit == 0x200f || (unit >= 0x202a && unit <= 0x202e) ||
           (unit >= 0x2066 && unit <= 0x2069);
}

bool isForbidden(char16_t unit)
{
    constexpr std::u16string_view characters = u"/\\?%*:|\"<>";
    return unit < 0x20 || isNewline(unit) || characters.find(unit) != std::u16string_view::npos;
}

/// The start of `name` as well-formed composed text without unseen controls.
QString composedHead(const QString& name)
{
    QString head;
    head.reserve(std::min(name.size(), unitsThatCount + 1));
    for (qsizetype index = 0; index < name.size() && head.size() < unitsThatCount; ++index) {
        const QChar unit = name[index];
        const bool isPair = unit.isHighSurrogate() && index + 1 < name.size() && name[index + 1].isLowSurrogate();
        if (isPair)
            head.append(unit).append(name[++index]);
        else if (unit.isSurrogate())
            head.append(QChar::ReplacementCharacter);
        else if (!isUnseenControl(unit.unicode()))
            head.append(unit);
    }
    return head.normalized(QString::NormalizationForm_C);
}

bool fits(QStringView text)
{
    return text.toUtf8().size() <= longestNameBytes;
}

/// For a first character that is too long by itself, such as a letter under hundreds of marks.
QStringView cutBetweenCodePoints(QStringView text)
{
    text = text.first(std::min(text.size(), longestNameBytes));
    while (!fits(text) || (!text.isEmpty() && text.back().isHighSurrogate()))
        text.chop(1);
    return text;
}

QStringView headThatFits(const QString& text)
{
    if (text.size() <= longestName && fits(text))
        return text;
    QTextBoundaryFinder border(QTextBoundaryFinder::Grapheme, text);
    qsizetype end = 0;
    for (int count = 0; count < longestName; ++count) {
        const qsizetype next = border.toNextBoundary();
        if (next < 0 || !fits(QStringView(text).first(next)))
            break;
        end = next;
    }
    return end > 0 ? QStringView(text).first(end) : cutBetweenCodePoints(text);
}

bool isSung(QStringView line)
{
    return !line.isEmpty() && !(line.startsWith(u'[') && line.endsWith(u']'));
}

QList<QStringView> sungLines(QStringView lyrics)
{
    QList<QStringView> sung;
    for (const QStringView line : lines(lyrics))
        if (const QStringView trimmed = trimmedBlanks(line); isSung(trimmed))
            sung.append(trimmed);
    return sung;
}

/// A length that a clock can show: what the feed gives may be negative or beyond every integer.
double showableSeconds(double duration)
{
    constexpr double longest = 1e12;
    return duration > 0 ? std::min(duration, longest) : 0;
}

QString timed(double seconds, QStringView line)
{
    const auto whole = static_cast<qint64>(seconds);
    const auto twoDigits = [](qint64 number) { return u"%1"_s.arg(number, 2, 10, QChar(u'0')); };
    return u'[' + twoDigits(whole / 60) + u':' + twoDigits(whole % 60) + u".00]"_s + line.toString() + u'\n';
}

} // namespace

QString safeName(const QString& name, const QString& fallback)
{
    QString cleaned = composedHead(name);
    std::replace_if(
        cleaned.begin(), cleaned.end(), [](QChar unit) { return isForbidden(unit.unicode()); }, QChar(u'_'));
    QStringView kept = headThatFits(cleaned);
    while (kept.endsWith(u'.') || kept.endsWith(u' '))
        kept.chop(1);
    while (kept.startsWith(u'.'))
        kept = kept.sliced(1);
    while (kept.startsWith(u' '))
        kept = kept.sliced(1);
    return kept.isEmpty() ? fallback : kept.toString();
}

ClipNames clipNames(const Clip& clip, int index, const QHash<QString, QString>& existing)
{
    const QString safeTitle = safeName(clip.title, u"track_"_s + QString::number(index + 1));
    return {.safeTitle = safeTitle, .base = ExistingFiles::base(safeTitle, index, existing)};
}

QString artworkExtension(const QString& address)
{
    if (address.contains(u".png"))
        return u"png"_s;
    return address.contains(u".webp") ? u"webp"_s : u"jpg"_s;
}

QString lyricsText(const Clip& clip)
{
    return u"Title: "_s + clip.title + u"\nTags: "_s + clip.tags + u"\n\n"_s + clip.lyrics;
}

QString lrc(const QString& title, const QString& artist, const QString& lyrics, double duration)
{
    QString text = u"[ti:"_s + title + u"]\n[ar:"_s + artist + u"]\n[al:Suno AI]\n"_s;
    const QList<QStringView> sung = sungLines(lyrics);
    if (sung.isEmpty())
        return text + u"[00:00.00]Instrumental / No Lyrics\n"_s;
    const double step = showableSeconds(duration) / static_cast<double>(sung.size() + 1);
    for (qsizetype index = 0; index < sung.size(); ++index)
        text += timed(step * static_cast<double>(index + 1), sung[index]);
    return text;
}

void writeIfAbsent(const QString& path, const QString& contents)
{
    if (!QFileInfo::exists(path))
        writeAtomically(path, contents.toUtf8());
}

} // namespace orvane
