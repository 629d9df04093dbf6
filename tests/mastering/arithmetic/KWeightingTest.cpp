#include "mastering/arithmetic/Biquad.h"
#include "tests/mastering/arithmetic/Reference.h"
#include "tests/mastering/arithmetic/Signals.h"

#include <cmath>
#include <gmock/gmock.h>

using namespace orvane;
using namespace orvane::test;
using Master::Biquad;

namespace {

Samples weighted(const Samples& samples, double rate)
{
    Biquad shelf = Biquad::kWeightingStage1(rate);
    Biquad highPass = Biquad::kWeightingStage2(rate);
    return highPass.process(shelf.process(samples));
}

/// What a tone comes out as, in dB, once the filters have settled: from its amplitude over whole seconds.
double gainAt(double frequency, double rate)
{
    const Samples samples = weighted(tone(frequency, 0.0, 3.0, rate), rate);
    const auto second = std::size_t(rate);
    double squares = 0.0;
    for (std::size_t frame = 2 * second; frame < 3 * second; ++frame)
        squares += samples[frame] * samples[frame];
    return 10.0 * std::log10(2.0 * squares / rate);
}

struct Response
{
    double frequency;
    double gain;
};

/// Of the filter pair that ITU-R BS.1770-4 prints for 48 kHz.
constexpr Response published[] = {
    {25, -10.393}, {31, -7.956},  {40, -5.567},   {50, -3.934},   {63, -2.664},   {80, -1.732},
    {100, -1.133}, {125, -0.728}, {160, -0.435},  {200, -0.265},  {250, -0.153},  {315, -0.075},
    {400, -0.015}, {500, 0.042},  {630, 0.134},   {800, 0.328},   {1000, 0.698},  {1250, 1.342},
    {1600, 2.290}, {2000, 3.071}, {2500, 3.580},  {3150, 3.848},  {4000, 3.968},  {5000, 4.013},
    {6300, 4.032}, {8000, 4.039}, {10000, 4.042}, {12500, 4.043}, {16000, 4.043}, {20000, 4.043},
};

void expectNear(const Samples& found, const Samples& wanted, double tolerance)
{
    ASSERT_EQ(found.size(), wanted.size());
    for (std::size_t frame = 0; frame < found.size(); ++frame)
        ASSERT_NEAR(found[frame], wanted[frame], tolerance) << "at frame " << frame;
}

} // namespace

TEST(KWeighting, theResponseAt48kHzIsThePublishedOne)
{
    for (const Response& response : published)
        EXPECT_NEAR(gainAt(response.frequency, 48000.0), response.gain, 0.02) << response.frequency << " Hz";
}

TEST(KWeighting, theResponseBelow2kHzIsTheSameAtEveryRate)
{
    for (const double rate : {44100.0, 88200.0, 96000.0, 192000.0}) {
        for (const Response& response : published) {
            if (response.frequency > 1000.0)
                continue;
            // The high pass is not made up for its pass band's gain, which differs by so much.
            EXPECT_NEAR(gainAt(response.frequency, rate), response.gain, 0.04) << response.frequency << " Hz";
        }
    }
}

TEST(KWeighting, ratesWithinOneHertzOf48kHzTakeThePublishedCoefficients)
{
    const double published48 = Biquad::kWeightingStage1(48000.0).b0;
    EXPECT_EQ(published48, 1.53512485958697);
    EXPECT_EQ(Biquad::kWeightingStage1(48000.5).b0, published48);
    EXPECT_EQ(Biquad::kWeightingStage2(48000.5).a1, -1.99004745483398);
    EXPECT_EQ(Biquad::kWeightingStage1(47999.5).b0, published48);
    EXPECT_NE(Biquad::kWeightingStage1(47999.0).b0, published48);
    EXPECT_NE(Biquad::kWeightingStage1(48001.0).b0, published48);
    EXPECT_NE(Biquad::kWeightingStage2(47999.0).a1, -1.99004745483398);
    EXPECT_NE(Biquad::kWeightingStage1(44100.0).b0, published48);
}

TEST(KWeighting, derivedCoefficientsMeetThePublishedOnesBesideThem)
{
    const Biquad derived = Biquad::kWeightingStage1(47999.0);
    const Biquad table = Biquad::kWeightingStage1(48000.0);
    EXPECT_NEAR(derived.b1, table.b1, 1e-4);
    EXPECT_NEAR(derived.b2, table.b2, 1e-4);
    EXPECT_NEAR(derived.a2, table.a2, 1e-4);
    EXPECT_NEAR(Biquad::kWeightingStage2(47999.0).a2, Biquad::kWeightingStage2(48000.0).a2, 1e-6);
}

TEST(KWeighting, aSignalComesOutAsThePlainDefinitionSays)
{
    for (const double rate : {8000.0, 44100.0, 47999.0, 48000.0, 96000.0}) {
        const Samples samples = noise(5000, 0.3);
        expectNear(weighted(samples, rate), Reference::kWeighted(samples, rate), 1e-10);
    }
}

TEST(Biquad, aSignalInPiecesComesOutAsInOne)
{
    const Samples samples = noise(1000, 0.3);
    Biquad whole = Biquad::kWeightingStage1(44100.0);
    Biquad pieces = Biquad::kWeightingStage1(44100.0);
    Samples joined;
    for (std::size_t start = 0; start < samples.size(); start += 37) {
        const auto piece = std::span(samples).subspan(start, std::min<std::size_t>(37, samples.size() - start));
        const Samples out = pieces.process(piece);
        joined.insert(joined.end(), out.begin(), out.end());
    }
    expectNear(joined, whole.process(samples), 1e-14);
}

TEST(Biquad, twoSectionsAtOnceGiveWhatOneAfterTheOtherGives)
{
    const Samples samples = noise(1000, 0.3);
    Biquad shelf = Biquad::kWeightingStage1(44100.0);
    Biquad highPass = Biquad::kWeightingStage2(44100.0);
    Samples found = samples;
    filterBy(shelf, highPass, std::span(found).first(300));
    filterBy(shelf, highPass, std::span(found).subspan(300));
    expectNear(found, weighted(samples, 44100.0), 1e-12);
    Biquad wanted = Biquad::kWeightingStage1(44100.0);
    wanted.process(samples);
    EXPECT_NEAR(shelf.y1, wanted.y1, 1e-12);
    EXPECT_NEAR(shelf.y2, wanted.y2, 1e-12);
}

TEST(Biquad, aResetForgetsTheSignalButNotTheFilter)
{
    const Samples samples = noise(100, 0.3);
    Biquad section = Biquad::kWeightingStage2(44100.0);
    const Samples first = section.process(samples);
    EXPECT_NE(section.process(samples), first);
    section.reset();
    EXPECT_EQ(section.process(samples), first);
}

TEST(Biquad, onlyStateTooSmallToHearIsLetGo)
{
    Biquad section = Biquad::kWeightingStage2(44100.0);
    section.y1 = 1e-100;
    section.y2 = -1e-100;
    section.filter({});
    EXPECT_EQ(section.y1, 1e-100);
    EXPECT_EQ(section.y2, -1e-100);
    section.y1 = 0.999e-100;
    section.y2 = -0.999e-100;
    section.filter({});
    EXPECT_EQ(section.y1, 0.0);
    EXPECT_EQ(section.y2, 0.0);
}

TEST(Biquad, theTailOfASignalFallsToRest)
{
    Biquad section = Biquad::kWeightingStage2(44100.0);
    section.process(noise(100, 0.3));
    for (int second = 0; second < 30; ++second)
        section.process(silence(44100));
    EXPECT_EQ(section.y1, 0.0);
    EXPECT_EQ(section.y2, 0.0);
    Biquad shelf = Biquad::kWeightingStage1(44100.0);
    Samples burst = noise(100, 0.3);
    filterBy(shelf, section, burst);
    for (int second = 0; second < 30; ++second) {
        Samples rest = silence(44100);
        filterBy(shelf, section, rest);
    }
    EXPECT_EQ(shelf.y1, 0.0);
    EXPECT_EQ(section.y1, 0.0);
    EXPECT_EQ(section.y2, 0.0);
}
