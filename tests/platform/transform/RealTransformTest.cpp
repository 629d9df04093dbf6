#include "platform/transform/RealTransform.h"

#include "tests/mastering/arithmetic/Signals.h"

#include <algorithm>
#include <cmath>
#include <gmock/gmock.h>
#include <numbers>
#include <thread>

using namespace orvane;
using namespace orvane::test;

namespace {

using Bins = std::vector<std::complex<double>>;

Bins transformed(const Samples& samples)
{
    const RealTransform& transform = *RealTransform::ofLength(samples.size());
    RealTransform::Room room(transform);
    std::copy(samples.begin(), samples.end(), room.samples().begin());
    transform.run(room);
    return {room.bins().begin(), room.bins().end()};
}

std::complex<double> binOf(const Samples& samples, std::size_t bin)
{
    std::complex<double> sum;
    for (std::size_t index = 0; index < samples.size(); ++index) {
        const double turns = double(index * bin % samples.size()) / double(samples.size());
        sum += samples[index] * std::polar(1.0, -2.0 * std::numbers::pi * turns);
    }
    return sum;
}

} // namespace

TEST(RealTransform, givesTheSumsOfTheDefinition)
{
    for (const std::size_t length : {2u, 8u, 1024u, 1000u, 4096u}) {
        const Samples samples = noise(length, 1.0);
        const Bins bins = transformed(samples);
        ASSERT_EQ(bins.size(), length / 2);
        for (std::size_t bin = 1; bin < bins.size(); bin += 1 + length / 40)
            EXPECT_LT(std::abs(bins[bin] - binOf(samples, bin)), 1e-10) << bin << " of " << length;
    }
}

TEST(RealTransform, packsTheTopFrequencyBesideTheZeroFrequency)
{
    const Samples samples = noise(64, 1.0);
    const Bins bins = transformed(samples);
    EXPECT_NEAR(bins[0].real(), binOf(samples, 0).real(), 1e-12);
    EXPECT_NEAR(bins[0].imag(), binOf(samples, 32).real(), 1e-12);
}

TEST(RealTransform, keepsTheSamples)
{
    const RealTransform& transform = *RealTransform::ofLength(256);
    RealTransform::Room room(transform);
    const Samples samples = noise(256, 1.0);
    std::copy(samples.begin(), samples.end(), room.samples().begin());
    transform.run(room);
    EXPECT_TRUE(std::equal(samples.begin(), samples.end(), room.samples().begin()));
}

TEST(RealTransform, isPlannedOnceForEachLength)
{
    EXPECT_EQ(RealTransform::ofLength(512), RealTransform::ofLength(512));
    EXPECT_NE(RealTransform::ofLength(512), RealTransform::ofLength(128));
    EXPECT_EQ(RealTransform::ofLength(128)->length(), 128u);
}

TEST(RealTransform, manyThreadsPlanAndRunAtOnce)
{
    constexpr std::size_t threads = 4;
    const Samples samples = noise(2048, 1.0);
    std::vector<Bins> found(threads);
    {
        std::vector<std::jthread> running;
        for (Bins& bins : found) {
            running.emplace_back([&bins, &samples] {
                for (std::size_t length = 2; length <= samples.size(); length *= 2)
                    bins = transformed({samples.begin(), samples.begin() + std::ptrdiff_t(length)});
            });
        }
    }
    const Bins wanted = transformed(samples);
    for (const Bins& bins : found)
        EXPECT_EQ(bins, wanted);
}
