#include "demonstration/service/Recording.h"

#include <lame/lame.h>
#include <memory>

namespace orvane::demo {
namespace {

struct CloseEncoder
{
    void operator()(lame_global_flags* encoder) const { lame_close(encoder); }
};

using Encoder = std::unique_ptr<lame_global_flags, CloseEncoder>;

Encoder openEncoder()
{
    Encoder encoder(lame_init());
    lame_set_in_samplerate(encoder.get(), sampleRate);
    lame_set_num_channels(encoder.get(), 2);
    lame_set_brate(encoder.get(), 192);
    lame_set_quality(encoder.get(), 7);
    lame_set_bWriteVbrTag(encoder.get(), 1);
    if (lame_init_params(encoder.get()) < 0)
        qFatal("LAME refuses the settings of the demonstration.");
    return encoder;
}

unsigned char* raw(QByteArray& bytes, qsizetype offset = 0)
{
    return reinterpret_cast<unsigned char*>(bytes.data()) + offset;
}

} // namespace

QByteArray record(const Song& song)
{
    const std::vector<std::vector<double>> channels = compose(song);
    const int frames = static_cast<int>(channels[0].size());
    const Encoder encoder = openEncoder();
    // LAME's own bound on what a call may write.
    QByteArray bytes(frames + frames / 4 + 2 * 7200, '\0');
    qsizetype filled = lame_encode_buffer_ieee_double(encoder.get(), channels[0].data(), channels[1].data(), frames,
                                                      raw(bytes), static_cast<int>(bytes.size()));
    filled += lame_encode_flush(encoder.get(), raw(bytes, filled), static_cast<int>(bytes.size() - filled));
    lame_get_lametag_frame(encoder.get(), raw(bytes), static_cast<std::size_t>(filled));
    bytes.truncate(filled);
    return bytes;
}

} // namespace orvane::demo
