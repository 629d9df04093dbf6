#pragma once

#include <QString>

#include <span>

namespace orvane::Master {

/// What a platform does to a track's loudness on playback.
enum class Normalisation
{
    upAndDown,
    downOnly,
    none,
    unknown,
};

/// How well a platform's figures are known.
enum class Confidence
{
    official,
    measured,
    community,
    standard,
};

/// The name of the case.
QString rawValue(Normalisation normalisation);
QString rawValue(Confidence confidence);

/// A streaming platform or broadcast standard that a track can be mastered for.
struct Platform
{
    QString name;
    /// In LUFS.
    double target = 0.0;
    /// In dBTP.
    double ceiling = 0.0;
    Normalisation normalisation = Normalisation::unknown;
    Confidence confidence = Confidence::community;
    /// In English in every language, as is the name.
    QString note;

    bool operator==(const Platform&) const = default;
};

/// All of them, in the order in which the user picks from them; the first is the default.
std::span<const Platform> platforms();

} // namespace orvane::Master
