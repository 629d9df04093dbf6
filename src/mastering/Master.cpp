#include "mastering/Master.h"

#include <QFileInfo>
#include <QHash>

#include <limits>

namespace orvane::Master {

namespace {

/// The run's hash of the file's name, not negative: scattered hits differ from file to file.
std::int64_t seedOf(const QString& path)
{
    const std::size_t hash = qHash(QFileInfo(path).fileName(), QHashSeed::globalSeed());
    return std::int64_t(hash & std::size_t(std::numeric_limits<std::int64_t>::max()));
}

} // namespace

Result master(const QString& input, const QString& output, double target, double ceiling, const Output& as,
              const Watermark& watermark)
{
    Sound sound = read(input);
    applyWatermark(watermark, sound.channels, sound.sampleRate, seedOf(input));
    const Result result = apply(target, ceiling, sound.channels, sound.sampleRate);
    write(sound.channels, sound.sampleRate, as, output);
    return result;
}

} // namespace orvane::Master
