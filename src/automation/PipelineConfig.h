#pragma once

#include "suno/Asset.h"

#include <QString>
#include <QUrl>

namespace orvane {

/// What a run needs from the Downloader, taken as a value when it starts and kept to its end.
struct PipelineConfig
{
    /// A project's identifier, or empty for the whole library.
    QString workspace;
    AssetSet assets;
    QUrl destination;
    QString token;

    bool operator==(const PipelineConfig&) const = default;
};

} // namespace orvane
