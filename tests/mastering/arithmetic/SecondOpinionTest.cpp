#include "mastering/arithmetic/Loudness.h"
#include "tests/mastering/arithmetic/LibraryOpinion.h"
#include "tests/mastering/arithmetic/Signals.h"

#include <gmock/gmock.h>

using namespace orvane;
using namespace orvane::test;

namespace {

void expectAlike(double rate, std::size_t count)
{
    const Channels channels = sections(rate, count);
    const Master::Reading opinion = libraryOpinion(channels, rate);
    const Master::Reading reading = Master::measure(channels, rate);
    EXPECT_NEAR(reading.integrated, opinion.integrated, 0.05) << count << " channels at " << rate;
    EXPECT_NEAR(reading.range, opinion.range, 0.05) << count << " channels at " << rate;
    EXPECT_NEAR(reading.samplePeak, opinion.samplePeak, 1e-9);
    EXPECT_NEAR(reading.truePeak, opinion.truePeak, 0.6) << count << " channels at " << rate;
}

} // namespace

TEST(SecondOpinion, libebur128ReadsStereoAlike)
{
    expectAlike(44100.0, 2);
    expectAlike(48000.0, 2);
    expectAlike(96000.0, 2);
}

TEST(SecondOpinion, libebur128ReadsMonoAndSixChannelsAlike)
{
    expectAlike(44100.0, 1);
    expectAlike(48000.0, 6);
}
