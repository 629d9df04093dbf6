#include "platform/filesystem/DestinationTest.h"

#include "platform/filesystem/StagingFile.h"

#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace orvane {

void destinationWriteTest(const QString& folder)
{
    const QByteArray name = systemName(folder);
    std::error_code refusal;
    std::filesystem::create_directories(name.constData(), refusal);
    if (refusal)
        throw FileError(folder, refusal.value());

    const QByteArray file = name + "/.orvane-write-test";
    constexpr int flags = O_WRONLY | O_CREAT | O_TRUNC | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC;
    Descriptor written(retried([&] { return ::open(file.constData(), flags, 0666); }));
    if (!written.isOpen() || !written.close())
        throw FileError(folder, errno);
    ::unlink(file.constData());
}

} // namespace orvane
