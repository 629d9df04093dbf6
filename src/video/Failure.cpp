#include "video/Failure.h"

namespace orvane::Video {

using namespace Qt::Literals::StringLiterals;

Failure::Failure(Code code, const QString& sentence)
    : std::runtime_error(sentence.toStdString())
    , code_(code)
{
}

Failure Failure::unreadable(const QString& fileName)
{
    return {Unreadable, u"Could not read "_s + fileName + u'.'};
}

Failure Failure::noAudioTrack(const QString& fileName)
{
    return {NoAudioTrack, fileName + u" has no audio track."_s};
}

Failure Failure::writerFailed(const QString& detail)
{
    return {WriterFailed, u"The video could not be written: "_s + detail};
}

Failure Failure::cancelled()
{
    return {Cancelled, u"Cancelled."_s};
}

} // namespace orvane::Video
