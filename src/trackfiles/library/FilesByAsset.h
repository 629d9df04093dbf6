#pragma once

#include "trackfiles/keys/TrackKeys.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <initializer_list>
#include <utility>

namespace orvane::Library {

/// Absolute paths by what the files are to a track. One piece of memory: a folder of tens of thousands of files is read
/// into these, and nodes of a map would cost more than the reading.
class FilesByAsset
{
public:
    FilesByAsset() = default;

    FilesByAsset(std::initializer_list<std::pair<Asset, QStringList>> files)
    {
        for (const auto& [asset, paths] : files)
            (*this)[asset] = paths;
    }

    QStringList& operator[](Asset asset) { return paths_[static_cast<std::size_t>(asset)]; }

    const QStringList& operator[](Asset asset) const { return paths_[static_cast<std::size_t>(asset)]; }

    /// Whether there is a file of that kind.
    bool contains(Asset asset) const { return !(*this)[asset].isEmpty(); }

    bool isEmpty() const
    {
        return std::ranges::all_of(paths_, [](const QStringList& paths) { return paths.isEmpty(); });
    }

    bool operator==(const FilesByAsset&) const = default;

private:
    std::array<QStringList, allAssets.size()> paths_;
};

} // namespace orvane::Library
