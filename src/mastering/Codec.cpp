#include "mastering/Codec.h"

namespace orvane::Master {

AudioCodec codecOf(Format format)
{
    switch (format) {
    case Format::flac:
        return AudioCodec::Flac24;
    case Format::alac:
        return AudioCodec::Alac24;
    case Format::aac:
        return AudioCodec::Aac256;
    case Format::wav:
    case Format::mp3:
        break;
    }
    return AudioCodec::Wav24;
}

} // namespace orvane::Master
