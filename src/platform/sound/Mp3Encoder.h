#pragma once

#include "platform/sound/Handle.h"

#include <QByteArray>

#include <span>
#include <vector>

struct lame_global_struct;

namespace orvane {

void closeEncoder(lame_global_struct* encoder);

/// A step at which an MP3 encode failed.
enum class Mp3Failure
{
    NoEncoder,
    BadSettings,
    Failed,
};

/// Encodes sound to a plain MP3 stream at a constant bit rate, piece by piece. Mono where one channel was announced,
/// else joint stereo of the first two. For use by one thread at a time; several encoders may run at once.
class Mp3Encoder
{
public:
    /// `sampleRate` in Hz, `bitRate` in kbit/s. Throws Mp3Failure: NoEncoder, BadSettings.
    Mp3Encoder(double sampleRate, std::size_t channelCount, int bitRate);

    /// Encodes `count` frames of `channels` from the frame `start` on and appends what comes out to `stream`. One
    /// channel serves as both. Samples are taken in single precision and may exceed full scale, a thousandfold at most.
    /// Throws Mp3Failure: Failed.
    void encode(std::span<const std::vector<double>> channels, std::size_t start, std::size_t count,
                QByteArray& stream);

    /// Appends what the encoder still holds. Called once, last.
    void flush(QByteArray& stream);

private:
    Handle<lame_global_struct, closeEncoder> lame_;
    std::vector<float> left_;
    std::vector<float> right_;
    std::vector<unsigned char> encoded_;
};

} // namespace orvane
