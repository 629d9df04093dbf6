#pragma once

#include <QByteArray>
#include <QtGlobal>

namespace orvane {

/// What a video file is made of: H.264 in High profile and AAC at 44.1 kHz, 2 channels, 192 kbit/s.
struct VideoSettings
{
    /// In pixels, both even.
    int width = 0;
    int height = 0;
    int framesPerSecond = 30;
    /// Of the picture, on average, in bit/s.
    qint64 bitRate = 0;
    /// Frames from one key frame to the next.
    int keyFrameInterval = 60;
    /// Of the sound that is appended, in Hz.
    int sampleRate = 44100;
    int channelCount = 2;
    /// How hard the encoder tries, in its own words; `orvane-video-quality` measures what they cost and give.
    QByteArray preset = "superfast";
    /// What differs from the preset, as "name=value:name=value".
    QByteArray parameters = "weightp=0:subme=0";
};

} // namespace orvane
