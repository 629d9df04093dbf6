#include "trackfiles/keys/TrackKeys.h"

#include "mastering/platforms/PlatformNames.h"
#include "platform/text/Characters.h"

#include <algorithm>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

struct AssetFacts
{
    QString rawValue;
    QString label;
    QString symbol;
    QStringList extensions;
};

const AssetFacts& facts(Library::Asset asset)
{
    static const std::array<AssetFacts, Library::allAssets.size()> table{{
        {u"audio"_s, u"Audio"_s, u"♪"_s, {u"mp3"_s, u"wav"_s, u"m4a"_s, u"flac"_s, u"ogg"_s, u"aac"_s}},
        {u"artwork"_s, u"Art"_s, u"▦"_s, {u"jpg"_s, u"jpeg"_s, u"png"_s, u"webp"_s, u"gif"_s}},
        {u"lyrics"_s, u"Lyrics"_s, u"¶"_s, {u"txt"_s}},
        {u"timed"_s, u"Timed lyrics"_s, u"◷"_s, {u"lrc"_s}},
        {u"mastered"_s, u"Mastered"_s, u"◎"_s, {u"wav"_s, u"flac"_s, u"m4a"_s}},
        {u"video"_s, u"Video"_s, u"▶"_s, {u"mp4"_s, u"mov"_s, u"webm"_s}},
    }};
    return table.at(static_cast<std::size_t>(asset));
}

/// Where the dot of the extension stands, or -1. A dot at the start makes a hidden file, not an extension.
qsizetype extensionDot(QStringView fileName)
{
    const qsizetype dot = fileName.lastIndexOf(u'.');
    return dot > 0 ? dot : -1;
}

QStringView withoutExtension(QStringView fileName)
{
    const qsizetype dot = extensionDot(fileName);
    return dot < 0 ? fileName : fileName.first(dot);
}

QStringView withoutPlatform(QStringView stem)
{
    const qsizetype bracket = stem.lastIndexOf(u'(');
    if (bracket < 0 || !stem.endsWith(u')'))
        return stem;
    const QStringView inside = stem.sliced(bracket + 1).chopped(1);
    return Master::platformNames().contains(inside) ? trimmedBlanks(stem.first(bracket)) : stem;
}

/// Reads a name from its start. Digits and blanks of every script count, as they do to the reader of the name; halves
/// of characters, over which a regular expression gives up, are ordinary characters.
class Reader
{
public:
    explicit Reader(QStringView text)
        : rest_(text)
    {
    }

    QStringView rest() const { return rest_; }

    bool skipWhiteSpace()
    {
        const qsizetype before = rest_.size();
        while (!rest_.isEmpty() && isWhiteSpace(rest_.front().unicode()))
            rest_ = rest_.sliced(1);
        return rest_.size() < before;
    }

    int skipDigits()
    {
        int count = 0;
        for (qsizetype units = unitsOfDigit(); units > 0; units = unitsOfDigit()) {
            rest_ = rest_.sliced(units);
            ++count;
        }
        return count;
    }

    bool skipOneOf(QStringView characters)
    {
        if (rest_.isEmpty() || !characters.contains(rest_.front()))
            return false;
        rest_ = rest_.sliced(1);
        return true;
    }

private:
    /// 0 where no digit comes next.
    qsizetype unitsOfDigit() const
    {
        if (rest_.isEmpty())
            return 0;
        const bool isPair = rest_.size() > 1 && rest_[0].isHighSurrogate() && rest_[1].isLowSurrogate();
        const char32_t next = isPair ? QChar::surrogateToUcs4(rest_[0], rest_[1]) : rest_.front().unicode();
        const qsizetype units = isPair ? 2 : 1;
        return QChar::isDigit(next) ? units : 0;
    }

    QStringView rest_;
};

} // namespace

namespace Library {

QString rawValue(Asset asset)
{
    return facts(asset).rawValue;
}

QString label(Asset asset)
{
    return facts(asset).label;
}

QString symbol(Asset asset)
{
    return facts(asset).symbol;
}

QStringList extensions(Asset asset)
{
    return facts(asset).extensions;
}

std::optional<Asset> classify(QStringView fileName, QStringView folderName)
{
    const qsizetype dot = extensionDot(fileName);
    if (dot < 0)
        return std::nullopt;
    const QStringView extension = fileName.sliced(dot + 1);
    const auto isIt = [extension](const QString& known) {
        return known.size() == extension.size() && extension.compare(known, Qt::CaseInsensitive) == 0;
    };
    const auto ifIs = [isIt](Asset asset) {
        return std::ranges::any_of(facts(asset).extensions, isIt) ? std::optional(asset) : std::nullopt;
    };
    if (folderName == u"Videos")
        return ifIs(Asset::video);
    if (folderName == u"Mastered")
        return ifIs(Asset::mastered);
    for (const Asset asset : {Asset::audio, Asset::artwork, Asset::timed, Asset::lyrics, Asset::video})
        if (const auto found = ifIs(asset))
            return found;
    return std::nullopt;
}

QString trackKey(const QString& fileName)
{
    return trackKeyIn(fileName).toString();
}

QStringView trackKeyIn(QStringView fileName)
{
    QStringView stem = withoutExtension(fileName);
    constexpr QStringView lyrics = u" lyrics";
    if (stem.endsWith(lyrics))
        stem.chop(lyrics.size());
    return withoutPlatform(stem);
}

} // namespace Library

QString TrackNamer::stripIndexPrefix(const QString& name)
{
    constexpr int mostDigits = 4;
    Reader reader(name);
    reader.skipWhiteSpace();
    const int digits = reader.skipDigits();
    if (digits < 1 || digits > mostDigits)
        return name;
    reader.skipWhiteSpace();
    const bool separated = reader.skipOneOf(u"-.)") && reader.skipWhiteSpace();
    return separated ? reader.rest().toString() : name;
}

} // namespace orvane
