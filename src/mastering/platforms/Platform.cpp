#include "mastering/platforms/Platform.h"

#include "mastering/platforms/PlatformNames.h"

#include <array>

namespace orvane::Master {

using namespace Qt::Literals::StringLiterals;

QString rawValue(Normalisation normalisation)
{
    switch (normalisation) {
    case Normalisation::upAndDown:
        return u"upAndDown"_s;
    case Normalisation::downOnly:
        return u"downOnly"_s;
    case Normalisation::none:
        return u"none"_s;
    case Normalisation::unknown:
        break;
    }
    return u"unknown"_s;
}

QString rawValue(Confidence confidence)
{
    switch (confidence) {
    case Confidence::official:
        return u"official"_s;
    case Confidence::measured:
        return u"measured"_s;
    case Confidence::community:
        return u"community"_s;
    case Confidence::standard:
        break;
    }
    return u"standard"_s;
}

std::span<const Platform> platforms()
{
    using enum Normalisation;
    using enum Confidence;
    static const std::array table{
        Platform{u"Spotify"_s, -14, -1, upAndDown, official,
                 u"Loud mode -11, Normal -14, Quiet -19. Boost is limited by your headroom, not a fixed amount."_s},
        Platform{u"SoundCloud"_s, -14, -1, upAndDown, official,
                 u"Adds its own limiter when it turns a quiet track up."_s},
        Platform{u"Apple Music"_s, -16, -1, downOnly, measured,
                 u"Apple publishes no LUFS figure at all — its own spec only asks for 1 dB of headroom. -16 is a "
                 u"third-party measurement."_s},
        Platform{u"YouTube / YouTube Music"_s, -14, -1, downOnly, measured,
                 u"Never published. Measured at -14 since 2019, and the reference moves."_s},
        Platform{u"Amazon Music"_s, -14, -1, downOnly, measured, u"From brief third-party testing in 2019."_s},
        Platform{u"Tidal"_s, -14, -1, downOnly, measured,
                 u"-14 on mobile and browser, reportedly -18 over AirPlay. Normalises per album, not per track."_s},
        Platform{u"Deezer"_s, -15, -1, downOnly, community,
                 u"The only source is a 2019 community moderator post. Thinnest evidence of any major service."_s},
        Platform{u"Pandora"_s, -13, -1, unknown, measured, u"Loudest target of the majors. Always on."_s},
        Platform{u"TikTok"_s, -14, -1, unknown, measured, u"Publishes nothing. -14 is the working convention."_s},
        Platform{u"Instagram / Reels"_s, -14, -1, unknown, measured, u"Publishes nothing."_s},
        Platform{u"Facebook"_s, -14, -1, unknown, measured, u"Publishes nothing."_s},
        Platform{u"X"_s, -14, -1, unknown, measured, u"Publishes nothing."_s},
        Platform{u"Bandcamp"_s, -14, -1, none, official,
                 u"Does not normalise at all — your master is played exactly as sent."_s},
        Platform{u"Beatport"_s, -14, -1, none, measured, u"Does not normalise."_s},
        Platform{u"Broadcast (EBU R128)"_s, -23, -1, upAndDown, standard,
                 u"The published European broadcast standard."_s},
        Platform{u"Broadcast (ATSC A/85)"_s, -24, -2, upAndDown, standard, u"The US broadcast standard."_s},
    };
    return table;
}

const QStringList& platformNames()
{
    static const QStringList names = [] {
        QStringList list;
        for (const Platform& platform : platforms())
            list << platform.name;
        return list;
    }();
    return names;
}

} // namespace orvane::Master
