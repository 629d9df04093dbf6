#pragma once

#include <QString>

#include <array>
#include <optional>

namespace orvane {
class Preferences;
}

namespace orvane::Master {

/// What a master or a mix is written as.
enum class Format
{
    wav,
    flac,
    alac,
    aac,
    mp3,
};

/// In the order of every picker.
inline constexpr std::array allFormats{Format::wav, Format::flac, Format::alac, Format::aac, Format::mp3};

/// The text that is shown and stored.
QString rawValue(Format format);
/// The file's extension, without a dot.
QString extension(Format format);
bool isLossless(Format format);
/// The format of a stored text.
std::optional<Format> formatFromRawValue(const QString& rawValue);

/// The bit rates of an MP3, in kbit/s.
enum class MP3Rate
{
    v128 = 128,
    v192 = 192,
    v256 = 256,
    v320 = 320,
};

inline constexpr std::array allMP3Rates{MP3Rate::v128, MP3Rate::v192, MP3Rate::v256, MP3Rate::v320};

inline constexpr int rawValue(MP3Rate rate)
{
    return static_cast<int>(rate);
}

QString title(MP3Rate rate);
double megabytesPerMinute(MP3Rate rate);
std::optional<MP3Rate> mp3RateFromRawValue(int rawValue);

/// What sound is written as: the rate counts for MP3 alone.
struct Output
{
    Format format = Format::wav;
    MP3Rate mp3Rate = MP3Rate::v320;

    bool operator==(const Output&) const = default;
};

/// The stored bit rate; 320 kbit/s where none of the four is stored.
MP3Rate chosenMP3Rate(const Preferences& preferences);
void setChosenMP3Rate(Preferences& preferences, MP3Rate rate);

/// The stored format; WAV where none of the five is stored.
Format chosenFormat(const Preferences& preferences);
void setChosenFormat(Preferences& preferences, Format format);

} // namespace orvane::Master
