#include "mastering/Failure.h"
#include "mastering/Write.h"
#include "tests/support/TraceMark.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

using namespace orvane;

namespace {

/// Half a second in two channels.
Channels sound()
{
    Channels channels(2, std::vector<double>(22'050));
    for (std::size_t frame = 0; frame < channels[0].size(); ++frame) {
        channels[0][frame] = 0.5 * std::sin(0.05 * double(frame));
        channels[1][frame] = 0.4 * std::sin(0.07 * double(frame * frame % 1000));
    }
    return channels;
}

} // namespace

/// mastering_worker FORMAT PATH: writes always the same sound to PATH in the format of that number. Exits with 1 and a
/// sentence where that fails.
int main(int argc, char** argv)
{
    if (argc != 3)
        return 2;
    const Channels channels = sound();
    const Master::Output output{.format = Master::allFormats.at(std::size_t(std::atoi(argv[1])))};
    try {
        test::markTrace();
        Master::write(channels, 44100.0, output, QString::fromLocal8Bit(argv[2]));
        test::markTrace();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", qPrintable(Master::sentenceOf(error)));
        return 1;
    }
    return 0;
}
