#include "mastering/platforms/PlatformNames.h"

namespace orvane::Master {

using namespace Qt::Literals::StringLiterals;

const QStringList& platformNames()
{
    static const QStringList names{
        u"Spotify"_s,
        u"SoundCloud"_s,
        u"Apple Music"_s,
        u"YouTube / YouTube Music"_s,
        u"Amazon Music"_s,
        u"Tidal"_s,
        u"Deezer"_s,
        u"Pandora"_s,
        u"TikTok"_s,
        u"Instagram / Reels"_s,
        u"Facebook"_s,
        u"X"_s,
        u"Bandcamp"_s,
        u"Beatport"_s,
        u"Broadcast (EBU R128)"_s,
        u"Broadcast (ATSC A/85)"_s,
    };
    return names;
}

} // namespace orvane::Master
