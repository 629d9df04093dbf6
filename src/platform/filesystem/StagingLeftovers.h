#pragma once

#include <QString>

namespace orvane {

/// Whether `fileName`, without a folder, is one under which the program stages a file: NAME.mp3.part and the like for
/// downloads, .NAME.wav.new and the like for what it writes itself, .NAME.mp3.tagging for a tag.
bool isStagingName(const QString& fileName);

/// Removes what a killed run left directly in `folder`: regular files with a staging name that no program holds open
/// for writing. Links, folders and whatever cannot be removed stay. Returns the number of files removed.
int removeStagingLeftovers(const QString& folder);

} // namespace orvane
