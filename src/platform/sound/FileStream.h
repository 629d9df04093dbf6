#pragma once

#include "platform/filesystem/Descriptor.h"
#include "platform/sound/Handle.h"

extern "C" {
#include <libavformat/avio.h>
}

namespace orvane {

void freeStreamContext(AVIOContext* context);

/// An open file as the decoding library reads and writes it. It does not move while the library uses it.
class FileStream
{
public:
    enum class Mode
    {
        Read,
        Write,
    };

    FileStream(Descriptor descriptor, Mode mode);
    FileStream(const FileStream&) = delete;
    FileStream& operator=(const FileStream&) = delete;

    AVIOContext* context() const { return context_.get(); }

    /// The library's number for the first error of the system, 0 if there was none.
    int error() const { return error_; }

    /// Closes the file; false when the system reports that written bytes were lost.
    bool close() { return descriptor_.close(); }

private:
    static int read(void* stream, std::uint8_t* bytes, int count);
    static int write(void* stream, std::uint8_t* bytes, int count);
    static std::int64_t seek(void* stream, std::int64_t offset, int whence);
    int failed();

    Descriptor descriptor_;
    Handle<AVIOContext, freeStreamContext> context_;
    int error_ = 0;
};

} // namespace orvane
