#include "tests/platform/desktop/FakeLogind.h"

#include <fcntl.h>
#include <unistd.h>

namespace orvane::test {

using namespace Qt::Literals::StringLiterals;

FakeLogind::FakeLogind()
    : FakeService(u"org.freedesktop.login1"_s, u"/org/freedesktop/login1"_s)
{
}

FakeLogind::~FakeLogind()
{
    for (const int end : ends_)
        ::close(end);
}

int FakeLogind::locksHeld()
{
    char byte = 0;
    return int(std::count_if(ends_.begin(), ends_.end(), [&](int end) { return ::read(end, &byte, 1) != 0; }));
}

QDBusUnixFileDescriptor FakeLogind::Inhibit(const QString& what, const QString& who, const QString& why,
                                            const QString& mode)
{
    int ends[2] = {};
    if (::pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0)
        qFatal("the test gets no pipe");
    QDBusUnixFileDescriptor lock;
    lock.giveFileDescriptor(ends[1]);
    ends_.append(ends[0]);
    noteCall({what, who, why, mode}, {QVariant::fromValue(lock)});
    return lock;
}

} // namespace orvane::test
