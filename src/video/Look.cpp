#include "video/Look.h"

#include <algorithm>

namespace orvane::Video {

using namespace Qt::Literals::StringLiterals;

QString rawValue(Look::Aspect aspect)
{
    switch (aspect) {
    case Look::Aspect::square:
        return u"1:1"_s;
    case Look::Aspect::landscape:
        return u"16:9"_s;
    case Look::Aspect::portrait:
        break;
    }
    return u"9:16"_s;
}

Look::Aspect aspectNamed(const QString& raw)
{
    const auto found = std::find_if(Look::allAspects.begin(), Look::allAspects.end(),
                                    [&](Look::Aspect aspect) { return rawValue(aspect) == raw; });
    return found == Look::allAspects.end() ? Look::Aspect::portrait : *found;
}

QSize size(Look::Aspect aspect)
{
    switch (aspect) {
    case Look::Aspect::square:
        return {1080, 1080};
    case Look::Aspect::landscape:
        return {1920, 1080};
    case Look::Aspect::portrait:
        break;
    }
    return {1080, 1920};
}

} // namespace orvane::Video
