#include "tests/dj/arithmetic/Reference.h"

#include "dj/arithmetic/Energy.h"
#include "dj/arithmetic/Grid.h"
#include "dj/arithmetic/KeyFinder.h"
#include "dj/arithmetic/Mono.h"
#include "dj/arithmetic/OnsetEnvelope.h"
#include "dj/arithmetic/Tempo.h"
#include "tests/mastering/arithmetic/Signals.h"

#include <array>
#include <cmath>
#include <gmock/gmock.h>

using namespace orvane;
using namespace orvane::test;

namespace {

enum class Material
{
    Composed,
    Random,
    Silent,
};

struct Case
{
    Material material;
    double rate;
    std::size_t channels;
};

/// Enough of it for every lag of the range.
double secondsOf(double rate)
{
    return rate < 10'000.0 ? 8.0 : 2.0;
}

Channels soundOf(const Case& tried)
{
    const double seconds = secondsOf(tried.rate);
    if (tried.material == Material::Composed)
        return music(seconds, tried.rate, tried.channels);
    Channels channels;
    for (std::size_t channel = 0; channel < tried.channels; ++channel) {
        const auto frames = std::size_t(seconds * tried.rate);
        channels.push_back(tried.material == Material::Random ? noise(frames, 0.2, unsigned(channel))
                                                              : silence(frames));
    }
    return channels;
}

void expectSameEnvelope(const Samples& found, const Samples& wanted)
{
    ASSERT_EQ(found.size(), wanted.size());
    for (std::size_t frame = 0; frame < found.size(); ++frame)
        ASSERT_NEAR(found[frame], wanted[frame], 1e-9 * wanted[frame]) << "frame " << frame;
}

void expectSameGrid(const DJ::Grid& found, const Reference::Grid& wanted)
{
    // Indices that differ by one differ by far more than this.
    EXPECT_NEAR(found.bpm, wanted.bpm, 1e-9) << "tempo step " << wanted.tempoStep;
    EXPECT_NEAR(found.phase, wanted.phase, 1e-9) << "offset step " << wanted.offsetStep;
    EXPECT_EQ(found.downbeat, wanted.downbeat);
    EXPECT_EQ(found.cueIn, wanted.cueIn);
}

void expectSameChroma(const DJ::Chroma& found, const Samples& wanted)
{
    for (std::size_t pitchClass = 0; pitchClass < found.size(); ++pitchClass)
        EXPECT_NEAR(found[pitchClass], wanted[pitchClass], 1e-9 * wanted[pitchClass]) << "class " << pitchClass;
}

class AgainstThePlainDefinition : public testing::TestWithParam<Case>
{
};

std::string nameOf(const testing::TestParamInfo<Case>& info)
{
    static const std::string materials[] = {"composed", "random", "silent"};
    return materials[std::size_t(info.param.material)] + "At" + std::to_string(int(info.param.rate)) + "With" +
           std::to_string(info.param.channels);
}

std::vector<Case> allCases()
{
    std::vector<Case> cases;
    for (const Material material : {Material::Composed, Material::Random, Material::Silent}) {
        for (const double rate : {8000.0, 22050.0, 44100.0, 48000.0, 96000.0}) {
            for (const std::size_t channels : {1u, 2u, 6u})
                cases.push_back({.material = material, .rate = rate, .channels = channels});
        }
    }
    return cases;
}

} // namespace

TEST_P(AgainstThePlainDefinition, everyMeasureIsTheSame)
{
    const double rate = GetParam().rate;
    const Channels sound = soundOf(GetParam());
    const Samples plain = Reference::mono(sound);
    const Samples samples = DJ::toMono(sound);
    EXPECT_EQ(samples, plain);
    const Samples plainEnvelope = Reference::onsetEnvelope(plain);
    const Samples envelope = DJ::onsetEnvelope(samples, rate);
    expectSameEnvelope(envelope, plainEnvelope);
    EXPECT_EQ(DJ::tempoLag(envelope, rate).value_or(0), Reference::tempoLag(plainEnvelope, rate));
    const double bpm = DJ::tempo(envelope, rate);
    EXPECT_EQ(bpm, Reference::tempo(plainEnvelope, rate));
    expectSameGrid(DJ::grid(envelope, bpm, rate), Reference::grid(plainEnvelope, bpm, rate));
    const Samples plainChroma = Reference::chroma(plain, rate);
    expectSameChroma(DJ::chromaOf(samples, rate, RealTransform::ofLength(DJ::keyWindow)), plainChroma);
    const Reference::Key plainKey = Reference::keyOf(plainChroma);
    EXPECT_EQ(DJ::key(samples, rate), (DJ::Key{.tonic = plainKey.tonic, .isMinor = plainKey.isMinor}));
    EXPECT_NEAR(DJ::energy(samples), Reference::energy(plain), 1e-9);
}

INSTANTIATE_TEST_SUITE_P(Sound, AgainstThePlainDefinition, testing::ValuesIn(allCases()), nameOf);

TEST(TempoAndGrid, randomEnvelopesOfEveryLengthGiveWhatThePlainDefinitionSays)
{
    for (unsigned run = 0; run < 60; ++run) {
        Samples envelope = noise(10 + 17 * run, 1.0, run);
        for (double& value : envelope)
            value = std::max(value, 0.0);
        // At the lowest a beat is two to six frames.
        const double rate = std::array{44100.0, 16000.0, 3000.0}[run % 3];
        EXPECT_EQ(DJ::tempoLag(envelope, rate).value_or(0), Reference::tempoLag(envelope, rate));
        const double bpm = 55.0 + 2.5 * run;
        expectSameGrid(DJ::grid(envelope, bpm, rate), Reference::grid(envelope, bpm, rate));
    }
}

TEST(Key, randomPitchesMakeTheKeyThatThePlainDefinitionSays)
{
    // So many lie near enough to where two keys suit alike to tell a hundredth of each number of the profiles.
    constexpr unsigned chromas = 20'000;
    const Samples shares = noise(12 * chromas, 1.0);
    for (unsigned run = 0; run < chromas; ++run) {
        const double loudness = run % 2 == 0 ? 1.0 : 1e-5;
        Samples wanted(12);
        DJ::Chroma chroma = {};
        for (std::size_t pitchClass = 0; pitchClass < 12; ++pitchClass)
            chroma[pitchClass] = wanted[pitchClass] = loudness * std::abs(shares[12 * run + pitchClass]);
        const Reference::Key key = Reference::keyOf(wanted);
        ASSERT_EQ(DJ::keyOf(chroma), (DJ::Key{.tonic = key.tonic, .isMinor = key.isMinor})) << "run " << run;
    }
}

TEST(Key, everyPitchAloneIsHeardAsThePlainDefinitionSays)
{
    for (int semitone = 0; semitone < 24; ++semitone) {
        const Samples samples = tone(110.0 * std::exp2(semitone / 12.0), -12.0, 0.7, 44100.0);
        const Reference::Key wanted = Reference::key(samples, 44100.0);
        EXPECT_EQ(DJ::key(samples, 44100.0), (DJ::Key{.tonic = wanted.tonic, .isMinor = wanted.isMinor}));
    }
}
