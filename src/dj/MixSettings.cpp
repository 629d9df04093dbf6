#include "dj/MixSettings.h"

namespace orvane::DJ {

void setTempoPull(MixSettings& settings, int percent)
{
    settings.matchTempo = percent > 0;
    settings.maxStretch = double(percent) / 100.0;
}

} // namespace orvane::DJ
