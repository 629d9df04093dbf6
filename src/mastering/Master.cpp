#include "mastering/Master.h"

#include "mastering/arithmetic/InParallel.h"

#include <QFileInfo>
#include <QHash>

#include <cmath>
#include <limits>

namespace orvane::Master {

namespace {

/// The run's hash of the file's name, not negative: scattered hits differ from file to file.
std::int64_t seedOf(const QString& path)
{
    const std::size_t hash = qHash(QFileInfo(path).fileName(), QHashSeed::globalSeed());
    return std::int64_t(hash & std::size_t(std::numeric_limits<std::int64_t>::max()));
}

/// The reading of `sound` once the watermark is in it.
Reading markAndMeasure(const Watermark& watermark, MeasuredSound& input, std::int64_t seed)
{
    auto& [sound, reading] = input;
    if (applyWatermark(watermark, sound.channels, sound.sampleRate, seed, reading.integrated) == 0)
        return reading;
    return measure(sound.channels, sound.sampleRate);
}

} // namespace

Result master(const QString& input, const QString& output, double target, double ceiling, const Output& as,
              const Watermark& watermark)
{
    MeasuredSound measured = readAndMeasure(input);
    const Reading before = markAndMeasure(watermark, measured, seedOf(input));
    auto& [channels, sampleRate] = measured.sound;
    if (!std::isfinite(before.integrated)) {
        write(channels, sampleRate, as, output);
        return {.before = before, .after = before};
    }
    const Shaped shaped = shape(before.integrated, target, ceiling, channels, sampleRate);
    Reading after;
    inParallel(2, processorCount(), [&, &channels = channels, &sampleRate = sampleRate](std::size_t job) {
        if (job == 0)
            write(channels, sampleRate, as, output);
        else
            after = measureBeside(shaped.peaks, channels, sampleRate);
    });
    return {.before = before, .after = after, .gainApplied = shaped.gainApplied, .limited = shaped.limited};
}

} // namespace orvane::Master
