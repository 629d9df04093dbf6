#include "mastering/arithmetic/PeakKernel.h"

#include "mastering/arithmetic/TruePeak.h"
#include "tests/mastering/arithmetic/Signals.h"

#include <algorithm>
#include <cmath>
#include <gmock/gmock.h>

using namespace orvane;
using namespace orvane::test;
using Master::PeakKernel::blockLength;
using Master::PeakKernel::largestBetween;
using Master::PeakKernel::tapCount;
using Master::PeakKernel::Taps;

namespace {

/// What lies behind the samples, and must be neither read nor overwritten.
constexpr double fence = 1e9;

/// The three values between any two samples are all the taps' sums, one kind of tap at a time.
Taps someTaps()
{
    Taps taps;
    for (std::size_t phase = 0; phase < taps.size(); ++phase) {
        const Samples values = noise(tapCount, 1.0, unsigned(phase) + 100);
        std::copy(values.begin(), values.end(), taps[phase].begin());
    }
    return taps;
}

double plainBetween(const Samples& samples, const Taps& taps, std::size_t positions)
{
    double largest = 0.0;
    for (std::size_t position = 0; position < positions; ++position) {
        for (const auto& phase : taps) {
            double sum = 0.0;
            for (std::size_t tap = 0; tap < tapCount; ++tap)
                sum += samples[position + tap] * phase[tap];
            largest = std::max(largest, std::abs(sum));
        }
    }
    return largest;
}

} // namespace

TEST(PeakKernel, theLargestOfManySamplesIsFoundAtEveryPlace)
{
    for (std::size_t count = 0; count < 70; ++count) {
        for (std::size_t place = 0; place < count; ++place) {
            Samples samples(count, 1e-7);
            samples[place] = -2e-7;
            samples.resize(count + 40, fence);
            ASSERT_EQ(Master::PeakKernel::largestMagnitude(samples.data(), count), 2e-7) << place << " of " << count;
        }
        const Samples silent(count + 1, 0.0);
        EXPECT_EQ(Master::PeakKernel::largestMagnitude(silent.data(), count), 0.0);
    }
}

TEST(PeakKernel, theLargestOfABlockIsFoundAtEveryPlaceAndNothingElseIsWritten)
{
    for (std::size_t blocks = 0; blocks < 4; ++blocks) {
        for (std::size_t place = 0; place < blockLength; ++place) {
            Samples samples(blocks * blockLength, 1e-7);
            for (std::size_t block = 0; block < blocks; ++block)
                samples[block * blockLength + place] = (place % 2 == 0 ? 2e-7 : -2e-7) * double(block + 1);
            samples.resize(samples.size() + blockLength, fence);
            Samples found(5, fence);
            Master::PeakKernel::largestOfBlocks(samples.data(), blocks, found.data());
            for (std::size_t block = 0; block < found.size(); ++block)
                ASSERT_EQ(found[block], block < blocks ? 2e-7 * double(block + 1) : fence) << block << ", " << place;
        }
    }
}

TEST(PeakKernel, theLargestBetweenSamplesIsFoundAtEveryPosition)
{
    const Taps taps = someTaps();
    for (std::size_t place = 0; place < blockLength + tapCount - 1; ++place) {
        Samples samples = noise(blockLength + tapCount - 1, 1e-9, unsigned(place));
        samples[place] = 1e-7;
        const double wanted = plainBetween(samples, taps, blockLength);
        samples.resize(samples.size() + 2 * tapCount, fence);
        ASSERT_NEAR(largestBetween(samples.data(), taps), wanted, 1e-12 * wanted) << place;
    }
}

TEST(PeakKernel, eachTapCountsAtEveryPosition)
{
    for (std::size_t phase = 0; phase < 3; ++phase) {
        for (std::size_t tap = 0; tap < tapCount; ++tap) {
            Taps taps{};
            taps[phase][tap] = -0.5;
            for (std::size_t position = 0; position < blockLength; ++position) {
                Samples samples(blockLength + tapCount - 1, 0.0);
                samples[position + tap] = 3.0;
                ASSERT_EQ(largestBetween(samples.data(), taps), 1.5) << phase << ", " << tap << ", " << position;
            }
        }
    }
}
