#include "suno/Asset.h"

namespace orvane {

using namespace Qt::Literals::StringLiterals;

QString rawValue(Asset asset)
{
    static const std::array<QString, allAssets.size()> names{u"audio"_s, u"lyrics"_s, u"lrc"_s, u"artwork"_s};
    return names.at(static_cast<std::size_t>(asset));
}

} // namespace orvane
