#include "tests/dj/MixFiles.h"

#include <functional>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace orvane;
using namespace orvane::test;

namespace {

/// The largest memory that `work` has in a child process, in MiB.
double peakOf(const std::function<void()>& work)
{
    const pid_t child = ::fork();
    if (child == 0) {
        work();
        ::_exit(0);
    }
    int status = 0;
    rusage usage = {};
    ::wait4(child, &status, 0, &usage);
    EXPECT_EQ(status, 0);
    return double(usage.ru_maxrss) / 1024.0;
}

using RenderMemory = MixFiles;

} // namespace

TEST_F(RenderMemory, aLongSetTakesNoMoreThanAShortOne)
{
    // A track is 21 MiB as doubles.
    const DJ::Set set = noises(12, 30.0);
    const auto peak = [&](qsizetype tracks) { return peakOf([&] { DJ::render(set.first(tracks), {}, out()); }); };
    const double four = peak(4);
    const double twelve = peak(12);
    EXPECT_LT(twelve, four + 15.0);
    RecordProperty("four_mib", std::to_string(four));
    RecordProperty("twelve_mib", std::to_string(twelve));
}
