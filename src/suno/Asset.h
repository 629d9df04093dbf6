#pragma once

#include <QSet>
#include <QString>

#include <array>

namespace orvane {

/// What can be saved for a track.
enum class Asset
{
    audio,
    lyrics,
    lrc,
    artwork
};

/// All cases, in the order in which they are shown and saved.
inline constexpr std::array allAssets{Asset::audio, Asset::lyrics, Asset::lrc, Asset::artwork};

/// The case's own name: "audio", "lyrics", "lrc" or "artwork".
QString rawValue(Asset asset);

inline size_t qHash(Asset asset, size_t seed = 0) noexcept
{
    return ::qHash(static_cast<int>(asset), seed);
}

using AssetSet = QSet<Asset>;

} // namespace orvane
