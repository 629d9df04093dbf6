#pragma once

#include <QUrl>

#include <functional>
#include <vector>

namespace orvane::Video {

/// A whole track as one channel.
struct MonoSamples
{
    std::vector<float> samples;
    /// In Hz, the file's own.
    int rate = 0;
};

/// The plain average of the channels of the sound file at `url`: no resampling, no normalisation, no filter. It is cut
/// short once `isStopping` says so. Throws Failure: Unreadable.
MonoSamples monoSamples(const QUrl& url, const std::function<bool()>& isStopping = {});

} // namespace orvane::Video
