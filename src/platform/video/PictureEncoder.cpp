#include "platform/video/PictureEncoder.h"

#include "platform/video/VideoError.h"

#include <QList>

extern "C" {
#include <libavcodec/packet.h>
#include <libavutil/mem.h>
}

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <thread>
#include <x264.h>

namespace orvane {

namespace {

VideoError refusal()
{
    return VideoError(QStringLiteral("The encoder refuses its settings"));
}

/// Each thread holds frames of its own.
constexpr unsigned mostThreads = 8;

void describePicture(x264_param_t& parameters, const VideoSettings& settings)
{
    parameters.i_width = settings.width;
    parameters.i_height = settings.height;
    parameters.i_csp = X264_CSP_I420;
    parameters.i_fps_num = std::uint32_t(settings.framesPerSecond);
    parameters.i_fps_den = 1;
    parameters.i_timebase_num = 1;
    parameters.i_timebase_den = std::uint32_t(settings.framesPerSecond);
    parameters.b_vfr_input = 0;
    parameters.vui.b_fullrange = 0;
    parameters.vui.i_colorprim = AVCOL_PRI_BT709;
    parameters.vui.i_transfer = AVCOL_TRC_BT709;
    parameters.vui.i_colmatrix = AVCOL_SPC_BT709;
    parameters.vui.i_chroma_loc = AVCHROMA_LOC_CENTER - 1;
}

/// Each picture comes with its kind and its quantizer, so that the encoder looks at none ahead.
void takeDecisionsAway(x264_param_t& parameters, int keyFrameInterval)
{
    parameters.i_keyint_max = keyFrameInterval;
    parameters.i_scenecut_threshold = 0;
    parameters.i_bframe = 0;
    parameters.rc.i_lookahead = 0;
    parameters.i_sync_lookahead = 0;
    parameters.rc.i_rc_method = X264_RC_CQP;
    // A quantizer that is told is held between those that the kinds of pictures have by themselves: as far from the
    // middle as the encoder allows, which is 20 below and above.
    constexpr float farthest = 10.0F;
    constexpr int middle = (RateControl::finest + RateControl::coarsest) / 2;
    static_assert(middle - RateControl::finest <= 20 && RateControl::coarsest - middle <= 20);
    parameters.rc.i_qp_constant = middle;
    parameters.rc.f_ip_factor = farthest;
    parameters.rc.f_pb_factor = farthest;
}

void parse(x264_param_t& parameters, const QByteArray& text)
{
    for (const QByteArray& setting : text.split(':')) {
        const qsizetype equals = setting.indexOf('=');
        if (!setting.isEmpty() &&
            x264_param_parse(&parameters, setting.left(equals).constData(), setting.mid(equals + 1).constData()) != 0)
            throw refusal();
    }
}

struct Parameters : x264_param_t
{
    ~Parameters() { x264_param_cleanup(this); }
};

x264_t* openEncoder(const VideoSettings& settings)
{
    Parameters parameters{};
    if (x264_param_default_preset(&parameters, settings.preset.constData(), nullptr) != 0)
        throw refusal();
    parameters.i_log_level = X264_LOG_NONE;
    parameters.i_threads = int(std::clamp(std::thread::hardware_concurrency() * 2, 1U, mostThreads));
    describePicture(parameters, settings);
    parse(parameters, settings.parameters);
    takeDecisionsAway(parameters, settings.keyFrameInterval);
    // The headers stand once, in the container.
    parameters.b_repeat_headers = 0;
    parameters.b_annexb = 1;
    parameters.analyse.b_mb_info = 1;
    // A stream that uses neither calls itself by a lower profile.
    parameters.analyse.b_transform_8x8 = 1;
    parameters.b_cabac = 1;
    x264_t* encoder = x264_param_apply_profile(&parameters, "high") == 0 ? x264_encoder_open(&parameters) : nullptr;
    if (!encoder)
        throw refusal();
    return encoder;
}

/// What does not change is marked, block by block. The encoder frees the marks.
std::uint8_t* marksOfBlocks(const VideoSettings& settings, const VideoPicture::Area& changed)
{
    constexpr int side = 16;
    const int columns = (settings.width + side - 1) / side;
    const int rows = (settings.height + side - 1) / side;
    auto* marks = static_cast<std::uint8_t*>(std::malloc(std::size_t(columns) * std::size_t(rows)));
    if (!marks)
        throw std::bad_alloc();
    std::fill_n(marks, columns * rows, X264_MBINFO_CONSTANT);
    const int left = changed.left / side;
    const int end = std::min((changed.left + changed.width + side - 1) / side, columns);
    for (int row = changed.top / side; row < rows && row * side < changed.top + changed.height; ++row) {
        std::uint8_t* line = marks + std::ptrdiff_t(row) * columns;
        std::fill(line + left, line + end, 0);
    }
    return marks;
}

} // namespace

void closeEncoder(x264_t* encoder)
{
    x264_encoder_close(encoder);
}

PictureEncoder::PictureEncoder(const VideoSettings& settings)
    : settings_(settings)
    , encoder_(openEncoder(settings))
    , rate_(settings.bitRate, settings.framesPerSecond, settings.keyFrameInterval,
            std::int64_t(settings.width) * settings.height)
{
    if (!packet_)
        throw std::bad_alloc();
}

void PictureEncoder::describe(AVCodecParameters& track) const
{
    track.codec_type = AVMEDIA_TYPE_VIDEO;
    track.codec_id = AV_CODEC_ID_H264;
    track.format = AV_PIX_FMT_YUV420P;
    track.width = settings_.width;
    track.height = settings_.height;
    track.bit_rate = settings_.bitRate;
    track.color_range = AVCOL_RANGE_MPEG;
    track.color_primaries = AVCOL_PRI_BT709;
    track.color_trc = AVCOL_TRC_BT709;
    track.color_space = AVCOL_SPC_BT709;
    track.chroma_location = AVCHROMA_LOC_CENTER;
    x264_nal_t* units = nullptr;
    int count = 0;
    if (x264_encoder_headers(encoder_.get(), &units, &count) < 0)
        throw VideoError::fromLibrary(AVERROR_EXTERNAL);
    // The third is the encoder's name.
    const int size = units[0].i_payload + units[1].i_payload;
    track.extradata = static_cast<std::uint8_t*>(av_mallocz(std::size_t(size) + AV_INPUT_BUFFER_PADDING_SIZE));
    if (!track.extradata)
        throw std::bad_alloc();
    std::memcpy(track.extradata, units[0].p_payload, std::size_t(size));
    track.extradata_size = size;
}

void PictureEncoder::append(VideoPicture& picture, const VideoPicture::Area& changed, const PacketSink& sink)
{
    const auto kind =
        count_ % settings_.keyFrameInterval == 0 ? RateControl::Picture::Key : RateControl::Picture::Between;
    const int quantizer = rate_.quantizer(kind);
    x264_picture_t input;
    x264_picture_init(&input);
    input.i_type = kind == RateControl::Picture::Key ? X264_TYPE_IDR : X264_TYPE_P;
    input.i_qpplus1 = quantizer + 1;
    input.i_pts = count_;
    const auto planes = picture.planes();
    input.img.i_csp = X264_CSP_I420;
    input.img.i_plane = int(planes.size());
    for (std::size_t index = 0; index < planes.size(); ++index) {
        input.img.plane[index] = planes[index].bytes;
        input.img.i_stride[index] = planes[index].stride;
    }
    quantizers_.push_back(quantizer);
    ++count_;
    input.prop.mb_info = marksOfBlocks(settings_, changed);
    input.prop.mb_info_free = std::free;
    encode(&input, sink);
}

void PictureEncoder::flush(const PacketSink& sink)
{
    while (x264_encoder_delayed_frames(encoder_.get()) > 0)
        encode(nullptr, sink);
}

void PictureEncoder::encode(x264_picture_t* picture, const PacketSink& sink)
{
    x264_nal_t* units = nullptr;
    int count = 0;
    x264_picture_t output;
    const int size = x264_encoder_encode(encoder_.get(), &units, &count, picture, &output);
    if (size < 0)
        throw VideoError::fromLibrary(AVERROR_EXTERNAL);
    if (size == 0)
        return;
    const auto kind = output.b_keyframe ? RateControl::Picture::Key : RateControl::Picture::Between;
    rate_.spend(kind, quantizers_.front(), std::int64_t(size) * 8);
    quantizers_.pop_front();
    packet_->data = units[0].p_payload;
    packet_->size = size;
    packet_->pts = output.i_pts;
    packet_->dts = output.i_dts;
    packet_->duration = 1;
    packet_->flags = output.b_keyframe ? AV_PKT_FLAG_KEY : 0;
    sink(*packet_, {.num = 1, .den = settings_.framesPerSecond});
}

} // namespace orvane
