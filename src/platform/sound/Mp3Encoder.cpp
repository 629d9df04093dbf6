#include "platform/sound/Mp3Encoder.h"

#include <algorithm>
#include <lame/lame.h>
#include <limits>

namespace orvane {

namespace {

constexpr std::size_t pieceLength = 65536;
/// What LAME asks for: 1.25 bytes a frame and 7200 on top.
constexpr std::size_t encodedSize = pieceLength * 5 / 4 + 7200;
constexpr int flushedSize = 7200;

void toFloats(const std::vector<double>& samples, std::size_t start, std::size_t count, std::vector<float>& floats)
{
    // What lies far beyond full scale makes the encoder end the program.
    constexpr double most = 1000.0;
    floats.resize(count);
    for (std::size_t frame = 0; frame < count; ++frame)
        floats[frame] = float(std::clamp(samples[start + frame], -most, most));
}

bool fitsInteger(double value)
{
    return value > -2147483649.0 && value < 2147483648.0;
}

} // namespace

void closeEncoder(lame_global_struct* encoder)
{
    lame_close(encoder);
}

Mp3Encoder::Mp3Encoder(double sampleRate, std::size_t channelCount, int bitRate)
    : lame_(lame_init())
    , encoded_(encodedSize)
{
    if (!lame_)
        throw Mp3Failure::NoEncoder;
    if (!fitsInteger(sampleRate))
        throw Mp3Failure::BadSettings;
    const bool isMono = channelCount == 1;
    if (lame_set_in_samplerate(lame_.get(), int(sampleRate)) < 0)
        throw Mp3Failure::BadSettings;
    lame_set_num_channels(lame_.get(), isMono ? 1 : 2);
    lame_set_brate(lame_.get(), bitRate);
    lame_set_quality(lame_.get(), 2);
    lame_set_mode(lame_.get(), isMono ? MONO : JOINT_STEREO);
    if (lame_init_params(lame_.get()) < 0)
        throw Mp3Failure::BadSettings;
}

void Mp3Encoder::encode(std::span<const std::vector<double>> channels, std::size_t start, std::size_t count,
                        QByteArray& stream)
{
    const std::size_t end = start + count;
    for (; start < end; start += pieceLength) {
        const std::size_t length = std::min(pieceLength, end - start);
        toFloats(channels.front(), start, length, left_);
        toFloats(channels[channels.size() > 1 ? 1 : 0], start, length, right_);
        const int size = lame_encode_buffer_ieee_float(lame_.get(), left_.data(), right_.data(), int(length),
                                                       encoded_.data(), int(encoded_.size()));
        if (size < 0)
            throw Mp3Failure::Failed;
        stream.append(reinterpret_cast<const char*>(encoded_.data()), size);
    }
}

void Mp3Encoder::flush(QByteArray& stream)
{
    const int size = lame_encode_flush(lame_.get(), encoded_.data(), flushedSize);
    if (size > 0)
        stream.append(reinterpret_cast<const char*>(encoded_.data()), size);
}

} // namespace orvane
