#pragma once

#include "mastering/arithmetic/Reading.h"
#include "mastering/platforms/Platform.h"

#include <QString>

namespace orvane::Master {

/// What the platform will do to this track on playback, in dB: negative turns it down, positive up, 0 nothing.
double penalty(const Platform& platform, const Reading& reading);

/// How the change is to be shown.
enum class ChangeTone
{
    Muted,
    Bad,
    Ok,
};

/// A platform's row in the table for one track.
struct PlatformRow
{
    Platform platform;
    double change = 0.0;

    bool operator==(const PlatformRow&) const = default;
};

/// One row for each platform, in the table's order.
QList<PlatformRow> platformRows(const Reading& reading);

/// The change in words: "+2.0 dB", or that there is none worth naming.
QString changeText(const PlatformRow& row);
ChangeTone changeTone(const PlatformRow& row);
/// Whether the platform's figures are published, so that their source is not shown muted.
bool isPublished(Confidence confidence);

/// In the user's language.
QString text(Normalisation normalisation);
QString text(Confidence confidence);

/// One sentence about a measured file.
QString verdict(const Reading& reading);

/// Loudness, true peak and range of a measured file in one line.
QString readout(const Reading& reading);

/// All that is known of a platform, in one line.
QString summary(const Platform& platform);

} // namespace orvane::Master
