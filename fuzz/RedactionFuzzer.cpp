#include "platform/network/Redaction.h"

#include <QString>

#include <cstdint>
#include <cstdlib>

/// What has been redacted once stays as it is.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString once = orvane::redacted(QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size)));
    if (orvane::redacted(once) != once)
        std::abort();
    return 0;
}
