#include "trackfiles/keys/TrackKeys.h"

#include "mastering/platforms/PlatformNames.h"
#include "platform/text/Characters.h"

#include <QRegularExpression>

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

std::optional<Asset> classify(const QString& fileName, const QString& folderName)
{
    const qsizetype dot = extensionDot(fileName);
    if (dot < 0)
        return std::nullopt;
    const QString extension = fileName.sliced(dot + 1).toLower();
    const auto ifIs = [&extension](Asset asset) {
        return facts(asset).extensions.contains(extension) ? std::optional(asset) : std::nullopt;
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
    QStringView stem = withoutExtension(fileName);
    constexpr QStringView lyrics = u" lyrics";
    if (stem.endsWith(lyrics))
        stem.chop(lyrics.size());
    return withoutPlatform(stem).toString();
}

} // namespace Library

QString TrackNamer::stripIndexPrefix(const QString& name)
{
    // Digits and blanks of every script count, as they do to the reader of the name.
    static const QRegularExpression prefix(uR"(^\s*\d{1,4}\s*[-.)]\s+)"_s,
                                           QRegularExpression::UseUnicodePropertiesOption);
    const QRegularExpressionMatch match = prefix.match(name);
    return match.hasMatch() ? name.sliced(match.capturedEnd()) : name;
}

} // namespace orvane
