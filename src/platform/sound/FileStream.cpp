#include "platform/sound/FileStream.h"

extern "C" {
#include <libavutil/error.h>
#include <libavutil/mem.h>
}

#include <new>
#include <sys/stat.h>
#include <unistd.h>

namespace orvane {

namespace {

constexpr int bufferSize = 64 * 1024;

} // namespace

void freeStreamContext(AVIOContext* context)
{
    av_freep(&context->buffer);
    avio_context_free(&context);
}

FileStream::FileStream(Descriptor descriptor, Mode mode)
    : descriptor_(std::move(descriptor))
{
    auto* buffer = static_cast<unsigned char*>(av_malloc(bufferSize));
    context_.reset(avio_alloc_context(buffer, bufferSize, mode == Mode::Write, this, read, write, seek));
    if (!context_) {
        av_free(buffer);
        throw std::bad_alloc();
    }
}

int FileStream::failed()
{
    const int code = AVERROR(errno);
    if (error_ == 0)
        error_ = code;
    return code;
}

int FileStream::read(void* stream, std::uint8_t* bytes, int count)
{
    auto* self = static_cast<FileStream*>(stream);
    const ssize_t got = retried([&] { return ::read(self->descriptor_.number(), bytes, std::size_t(count)); });
    if (got < 0)
        return self->failed();
    return got == 0 ? AVERROR_EOF : int(got);
}

int FileStream::write(void* stream, std::uint8_t* bytes, int count)
{
    auto* self = static_cast<FileStream*>(stream);
    for (int done = 0; done < count;) {
        const ssize_t written =
            retried([&] { return ::write(self->descriptor_.number(), bytes + done, std::size_t(count - done)); });
        if (written < 0)
            return self->failed();
        done += int(written);
    }
    return count;
}

std::int64_t FileStream::seek(void* stream, std::int64_t offset, int whence)
{
    auto* self = static_cast<FileStream*>(stream);
    if (whence == AVSEEK_SIZE) {
        struct stat found = {};
        return ::fstat(self->descriptor_.number(), &found) == 0 ? std::int64_t(found.st_size) : AVERROR(errno);
    }
    const off_t position = ::lseek(self->descriptor_.number(), offset, whence & ~AVSEEK_FORCE);
    return position < 0 ? AVERROR(errno) : std::int64_t(position);
}

} // namespace orvane
