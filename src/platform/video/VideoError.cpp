#include "platform/video/VideoError.h"

extern "C" {
#include <libavutil/error.h>
}

#include <array>
#include <cerrno>
#include <new>

namespace orvane {

VideoError VideoError::fromLibrary(int code)
{
    std::array<char, AV_ERROR_MAX_STRING_SIZE> words{};
    av_strerror(code, words.data(), words.size());
    return VideoError(QString::fromLocal8Bit(words.data()));
}

void requireVideo(int code)
{
    if (code == AVERROR(ENOMEM))
        throw std::bad_alloc();
    if (code < 0)
        throw VideoError::fromLibrary(code);
}

} // namespace orvane
