#pragma once

#include <cstdint>
#include <vector>

namespace orvane::demo {

/// Sound being mixed: two channels of one length.
struct Stage
{
    std::vector<double> left;
    std::vector<double> right;

    /// Adds a sample at `at`, placed from -1 (left) to 1 (right); nothing outside the length.
    void add(std::size_t at, double value, double place);
};

/// Where and how loud a note sounds.
struct Note
{
    std::size_t start = 0;
    double seconds = 0.2;
    double hertz = 440;
    double gain = 0.2;
    double place = 0;
};

void playKick(Stage& stage, std::size_t start, double gain);
void playSnare(Stage& stage, std::size_t start, double gain, std::uint32_t seed);
void playHat(Stage& stage, std::size_t start, double gain, double place, std::uint32_t seed);
void playBass(Stage& stage, const Note& note);
void playPad(Stage& stage, const Note& note);
void playPluck(Stage& stage, const Note& note);

} // namespace orvane::demo
