#include "platform/network/HttpClient.h"
#include "platform/network/Redaction.h"

namespace orvane {

HttpError::HttpError(Code code, const QString& sentence)
    : std::runtime_error(redacted(sentence).toStdString())
    , code_(code)
    , sentence_(redacted(sentence))
{
}

} // namespace orvane
