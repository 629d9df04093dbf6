#include "mastering/Format.h"

#include "main/App/Preferences.h"

#include <algorithm>

namespace orvane::Master {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString mp3RateKey = u"mp3Bitrate"_s;
const QString formatKey = u"outputAudioFormat"_s;

struct FormatTexts
{
    const char16_t* rawValue;
    const char16_t* extension;
    bool isLossless;
};

/// In the order of the formats.
constexpr std::array<FormatTexts, allFormats.size()> formatTexts{{
    {u"WAV 24-bit", u"wav", true},
    {u"FLAC", u"flac", true},
    {u"ALAC (m4a)", u"m4a", true},
    {u"AAC (m4a)", u"m4a", false},
    {u"MP3", u"mp3", false},
}};

const FormatTexts& textsOf(Format format)
{
    return formatTexts[static_cast<std::size_t>(format)];
}

} // namespace

QString rawValue(Format format)
{
    return QString::fromUtf16(textsOf(format).rawValue);
}

QString extension(Format format)
{
    return QString::fromUtf16(textsOf(format).extension);
}

bool isLossless(Format format)
{
    return textsOf(format).isLossless;
}

std::optional<Format> formatFromRawValue(const QString& wanted)
{
    const auto found =
        std::find_if(allFormats.begin(), allFormats.end(), [&](Format format) { return rawValue(format) == wanted; });
    return found == allFormats.end() ? std::optional<Format>() : *found;
}

QString title(MP3Rate rate)
{
    return u"%1 kbps"_s.arg(rawValue(rate));
}

double megabytesPerMinute(MP3Rate rate)
{
    switch (rate) {
    case MP3Rate::v128:
        return 960 / 1000.0;
    case MP3Rate::v192:
        return 1440 / 1000.0;
    case MP3Rate::v256:
        return 1920 / 1000.0;
    case MP3Rate::v320:
        break;
    }
    return 2400 / 1000.0;
}

std::optional<MP3Rate> mp3RateFromRawValue(int wanted)
{
    const auto found =
        std::find_if(allMP3Rates.begin(), allMP3Rates.end(), [&](MP3Rate rate) { return rawValue(rate) == wanted; });
    return found == allMP3Rates.end() ? std::optional<MP3Rate>() : *found;
}

MP3Rate chosenMP3Rate(const Preferences& preferences)
{
    const std::optional<int> stored = preferences.integer(mp3RateKey);
    return stored ? mp3RateFromRawValue(*stored).value_or(MP3Rate::v320) : MP3Rate::v320;
}

void setChosenMP3Rate(Preferences& preferences, MP3Rate rate)
{
    preferences.set(mp3RateKey, rawValue(rate));
}

Format chosenFormat(const Preferences& preferences)
{
    const std::optional<QString> stored = preferences.text(formatKey);
    return stored ? formatFromRawValue(*stored).value_or(Format::wav) : Format::wav;
}

void setChosenFormat(Preferences& preferences, Format format)
{
    preferences.set(formatKey, rawValue(format));
}

} // namespace orvane::Master
