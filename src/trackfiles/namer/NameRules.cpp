#include "trackfiles/namer/NameRules.h"

#include "platform/text/Characters.h"
#include "suno/Clip.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace orvane::TrackNamer {

using namespace Qt::Literals::StringLiterals;

namespace {

/// A pattern with what it puts behind a name.
struct Suffix
{
    QString pattern;
    QString text;
};

const QString titleMark = u"Title:"_s;
const QString tagsMark = u"Tags:"_s;

const std::array allPatterns = {
    Pattern{u"clean"_s, u"Clean"_s},           Pattern{u"numbered"_s, u"01 - Title"_s},
    Pattern{u"dotnumber"_s, u"01. Title"_s},   Pattern{u"extended"_s, u"Extended mix"_s},
    Pattern{u"club"_s, u"Club mix"_s},         Pattern{u"radio"_s, u"Radio edit"_s},
    Pattern{u"vip"_s, u"VIP mix"_s},           Pattern{u"slowed"_s, u"Slowed + reverb"_s},
    Pattern{u"spedup"_s, u"Sped up"_s},        Pattern{u"instrumental"_s, u"Instrumental"_s},
    Pattern{u"acoustic"_s, u"Acoustic"_s},     Pattern{u"live"_s, u"Live"_s},
    Pattern{u"orchestral"_s, u"Orchestral"_s},
};

const std::array suffixes = {
    Suffix{u"extended"_s, u" (Extended Mix)"_s},
    Suffix{u"club"_s, u" [Club Edit]"_s},
    Suffix{u"radio"_s, u" (Radio Edit)"_s},
    Suffix{u"vip"_s, u" [VIP Remix]"_s},
    Suffix{u"slowed"_s, u" [Slowed + Reverb]"_s},
    Suffix{u"spedup"_s, u" [Sped Up / Nightcore]"_s},
    Suffix{u"instrumental"_s, u" [Instrumental Mix]"_s},
    Suffix{u"acoustic"_s, u" (Acoustic Version)"_s},
    Suffix{u"live"_s, u" (Live at Sunset)"_s},
    Suffix{u"orchestral"_s, u" (Orchestral Version)"_s},
};

bool isTrailingPunctuation(QChar character)
{
    return QStringView(u",.;:!?-—").contains(character);
}

QStringView withoutTrailingPunctuation(QStringView text)
{
    while (!text.isEmpty() && isTrailingPunctuation(text.back()))
        text.chop(1);
    return text;
}

QStringView trimmedForTitleView(QStringView text)
{
    return trimmedBlanks(withoutTrailingPunctuation(trimmedWhiteSpace(text)));
}

std::optional<QString> namedBy(QStringView text)
{
    const QString candidate = trimmedForTitle(collapsedWhiteSpace(text));
    return isPlaceholder(candidate) ? std::nullopt : std::optional(candidate);
}

} // namespace

Source Source::of(const Clip& clip)
{
    return {.title = clip.title, .lyrics = clip.lyrics, .tags = clip.tags, .fileStem = {}};
}

std::span<const Pattern> patterns()
{
    return allPatterns;
}

Source sourceFromSidecar(const QString& sidecar, const QString& fileStem)
{
    Source source{.title = {}, .lyrics = {}, .tags = {}, .fileStem = fileStem};
    const QList<QStringView> all = lines(sidecar);
    qsizetype at = 0;
    for (; at < all.size(); ++at) {
        const QStringView line = all[at];
        if (line.startsWith(titleMark)) {
            source.title = trimmedBlanks(line.sliced(titleMark.size())).toString();
        } else if (line.startsWith(tagsMark)) {
            source.tags = trimmedBlanks(line.sliced(tagsMark.size())).toString();
        } else {
            const bool endsHeader = trimmedBlanks(line).isEmpty() && !source.title.isEmpty();
            at += endsHeader ? 1 : 0;
            break;
        }
    }
    for (qsizetype first = at; at < all.size(); ++at) {
        if (at > first)
            source.lyrics += u'\n';
        source.lyrics += all[at];
    }
    return source;
}

QString base(const Source& source, int index)
{
    if (const auto byTitle = namedBy(source.title))
        return *byTitle;
    if (const auto byFile = namedBy(stripIndexPrefix(source.fileStem)))
        return *byFile;
    if (const auto byLyrics = hook(source.lyrics))
        return *byLyrics;
    return u"Track %1"_s.arg(index + 1);
}

QString apply(const QString& pattern, const QString& name, int index)
{
    const QString number = QString::number(index + 1).rightJustified(2, u'0');
    if (pattern == u"numbered")
        return number + u" - "_s + name;
    if (pattern == u"dotnumber")
        return number + u". "_s + name;
    const auto found = std::ranges::find(suffixes, pattern, &Suffix::pattern);
    return found == suffixes.end() ? name : name + found->text;
}

QString name(const Source& source, int index, const QString& pattern)
{
    return apply(pattern, base(source, index), index);
}

bool isPlaceholder(const QString& name)
{
    static const QRegularExpression generic(u"\\A(untitled|track|song|audio|new song)[ _-]*\\d*\\z"_s,
                                            QRegularExpression::UseUnicodePropertiesOption);
    constexpr qsizetype identifierLength = 32;
    const QString plain = trimmedWhiteSpace(name).toString().toLower();
    if (plain.isEmpty() || generic.match(plain).hasMatch())
        return true;
    return plain.size() >= identifierLength && std::ranges::all_of(plain, [](QChar character) {
               return QStringView(u"0123456789abcdef-").contains(character);
           });
}

QString trimmedForTitle(const QString& text)
{
    return trimmedForTitleView(text).toString();
}

} // namespace orvane::TrackNamer
