#include "platform/sound/SampleFormat.h"

extern "C" {
#include <libavutil/frame.h>
#include <libavutil/samplefmt.h>
}

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <type_traits>

namespace orvane {

namespace {

template <typename Sample>
float toFloat(Sample sample)
{
    if constexpr (std::is_floating_point_v<Sample>) {
        const float value = static_cast<float>(sample);
        return std::isfinite(value) ? value : 0.0F;
    } else if constexpr (std::is_unsigned_v<Sample>) {
        return (static_cast<float>(sample) - 128.0F) / 128.0F;
    } else {
        constexpr float fullScale = -static_cast<float>(std::numeric_limits<Sample>::min());
        return static_cast<float>(sample) / fullScale;
    }
}

template <typename Sample>
void convert(const AVFrame& frame, SoundPlanes& planes)
{
    const bool isPlanar = av_sample_fmt_is_planar(static_cast<AVSampleFormat>(frame.format)) != 0;
    const auto stride = isPlanar ? std::size_t(1) : planes.size();
    for (std::size_t channel = 0; channel < planes.size(); ++channel) {
        const auto* plane = reinterpret_cast<const Sample*>(frame.extended_data[isPlanar ? channel : 0]);
        const Sample* first = isPlanar ? plane : plane + channel;
        for (std::size_t index = 0; index < planes[channel].size(); ++index)
            planes[channel][index] = toFloat(first[index * stride]);
    }
}

float written(double sample)
{
    return std::clamp(static_cast<float>(sample), -1.0F, 1.0F);
}

std::int32_t nearest24Bit(float sample)
{
    constexpr double fullScale = 8388608.0;
    // Added and taken away, it leaves no place for a fraction: the sum is rounded, as the processor rounds.
    constexpr double rounding = 6755399441055744.0;
    const double nearest = double(sample) * fullScale + rounding - rounding;
    return std::int32_t(std::min(nearest, fullScale - 1.0));
}

} // namespace

bool toPlanes(const AVFrame& frame, SoundPlanes& planes)
{
    planes.resize(std::size_t(frame.ch_layout.nb_channels));
    for (auto& plane : planes)
        plane.resize(std::size_t(frame.nb_samples));
    switch (av_get_packed_sample_fmt(static_cast<AVSampleFormat>(frame.format))) {
    case AV_SAMPLE_FMT_U8:
        convert<std::uint8_t>(frame, planes);
        return true;
    case AV_SAMPLE_FMT_S16:
        convert<std::int16_t>(frame, planes);
        return true;
    case AV_SAMPLE_FMT_S32:
        convert<std::int32_t>(frame, planes);
        return true;
    case AV_SAMPLE_FMT_S64:
        convert<std::int64_t>(frame, planes);
        return true;
    case AV_SAMPLE_FMT_FLT:
        convert<float>(frame, planes);
        return true;
    case AV_SAMPLE_FMT_DBL:
        convert<double>(frame, planes);
        return true;
    default:
        return false;
    }
}

void toWritten(std::span<const double> samples, float* target, std::size_t stride)
{
    for (std::size_t index = 0; index < samples.size(); ++index)
        target[index * stride] = written(samples[index]);
}

void to24Bit(std::span<const double> samples, std::int32_t* target, std::size_t stride)
{
    for (std::size_t index = 0; index < samples.size(); ++index)
        target[index * stride] = nearest24Bit(written(samples[index])) * 256;
}

} // namespace orvane
