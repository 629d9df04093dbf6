#include "platform/sound/QuietLibrary.h"

extern "C" {
#include <libavutil/log.h>
}

namespace orvane {

void silenceLibrary()
{
    static const bool done = [] {
        av_log_set_level(AV_LOG_QUIET);
        return true;
    }();
    static_cast<void>(done);
}

} // namespace orvane
