#include "platform/filesystem/Descriptor.h"

#include <unistd.h>

namespace orvane {

bool Descriptor::close() noexcept
{
    if (number_ < 0)
        return true;
    // The system frees the number also when a signal interrupts the call: a second close could hit somebody else's
    // file.
    return ::close(std::exchange(number_, -1)) == 0 || errno == EINTR;
}

} // namespace orvane
