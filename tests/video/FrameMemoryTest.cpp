#include "tests/mastering/arithmetic/Signals.h"
#include "tests/video/PlainPainter.h"
#include "video/FrameSequence.h"
#include "video/arithmetic/Analyser.h"
#include "video/arithmetic/FrameGrid.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <string>

namespace {

/// While set, this thread's allocations are counted.
constinit thread_local bool isCounting = false;
constinit thread_local int allocations = 0;

void count() noexcept
{
    allocations += isCounting ? 1 : 0;
}

} // namespace

// In place of the C library's own, for every library in the process; what is given back stays with the C library.
extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t number, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);

void* malloc(std::size_t size) noexcept
{
    count();
    return __libc_malloc(size);
}

void* calloc(std::size_t number, std::size_t size) noexcept
{
    count();
    return __libc_calloc(number, size);
}

void* realloc(void* memory, std::size_t size) noexcept
{
    count();
    return __libc_realloc(memory, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept
{
    count();
    return __libc_memalign(alignment, size);
}

int posix_memalign(void** memory, std::size_t alignment, std::size_t size) noexcept
{
    count();
    *memory = __libc_memalign(alignment, size);
    return *memory == nullptr ? 12 : 0;
}

} // extern "C"

using namespace orvane;
using namespace orvane::Video;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int rate = 44100;
constexpr std::size_t fftSize = 1024;

template <typename Work>
int allocationsOf(const Work& work)
{
    allocations = 0;
    isCounting = true;
    work();
    isCounting = false;
    return allocations;
}

class FrameMemory : public testing::TestWithParam<Look::Aspect>
{
};

TEST(FrameMemoryCount, seesWhatPicturesImagesAndContainersTake)
{
    EXPECT_GT(allocationsOf([] { const VideoPicture picture(64, 64); }), 0);
    EXPECT_GT(allocationsOf([] { const QImage image(64, 64, QImage::Format_RGB32); }), 0);
    EXPECT_GT(allocationsOf([] { const std::string text(100, 'a'); }), 0);
}

TEST_P(FrameMemory, nothingIsAllocatedForAFrameOnceEveryLevelOfTheGlowWasSeen)
{
    const test::Samples music = test::music(10.0, rate).front();
    const std::vector<float> track(music.begin(), music.end());
    const FrameGrid grid = frameGrid(std::int64_t(track.size()), rate, 30);
    const Scene scene{.artwork = test::sunset(700), .title = u"Night Drive"_s, .artist = u"synthwave"_s};
    FramePainter painter(u"orvane.example"_s);
    FrameSequence frames(painter, scene, {.aspect = GetParam()});
    Analyser analyser(fftSize, 0.8F);
    const auto firstOfLevel = [&](int level) {
        frames.next(std::vector<float>(fftSize / 2, (float(level) + 0.5F) / float(FramePainter::levelCount)));
    };
    EXPECT_GT(allocationsOf([&] { firstOfLevel(0); }), 0);
    for (int level = 1; level < FramePainter::levelCount; ++level)
        firstOfLevel(level);
    const int taken = allocationsOf([&] {
        for (std::int64_t frame = 0; frame < grid.frameCount; ++frame)
            frames.next(analyser.magnitudes(samplesOf(frame, grid, track, fftSize)));
    });
    EXPECT_EQ(taken, 0) << "for " << grid.frameCount << " frames";
}

INSTANTIATE_TEST_SUITE_P(EveryAspect, FrameMemory, testing::ValuesIn(Look::allAspects));

} // namespace
