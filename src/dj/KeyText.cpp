#include "dj/KeyText.h"

namespace orvane::DJ {

using namespace Qt::Literals::StringLiterals;

const std::array<QString, 12>& keyNames()
{
    static const std::array names{u"C"_s,  u"C♯"_s, u"D"_s,  u"E♭"_s, u"E"_s,  u"F"_s,
                                  u"F♯"_s, u"G"_s,  u"A♭"_s, u"A"_s,  u"B♭"_s, u"B"_s};
    return names;
}

QString name(const Key& key)
{
    return keyNames().at(std::size_t(key.tonic)) + (key.isMinor ? u" minor"_s : u" major"_s);
}

QString camelot(const Key& key)
{
    return QString::number(key.camelotNumber()) + (key.isMinor ? u'A' : u'B');
}

} // namespace orvane::DJ
