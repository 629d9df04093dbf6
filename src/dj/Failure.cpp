#include "dj/Failure.h"

namespace orvane::DJ {

using namespace Qt::Literals::StringLiterals;

Failure::Failure(Code code, const QString& sentence)
    : std::runtime_error(sentence.toStdString())
    , code_(code)
{
}

Failure Failure::unreadable(const QString& fileName)
{
    return {Unreadable, fileName + u" could not be read as audio."_s};
}

Failure Failure::empty()
{
    return {Empty, u"There are no tracks to mix."_s};
}

Failure Failure::cancelled()
{
    return {Cancelled, u"Stopped."_s};
}

} // namespace orvane::DJ
