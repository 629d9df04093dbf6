#include "demonstration/music/Effects.h"

#include "demonstration/music/Song.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace orvane::demo {
namespace {

/// A line that gives back what was put in a fixed number of samples ago.
class Delay
{
public:
    explicit Delay(std::size_t length)
        : samples_(std::max<std::size_t>(1, length))
    {
    }

    double oldest() const { return samples_[at_]; }

    void put(double sample)
    {
        samples_[at_] = sample;
        at_ = at_ + 1 == samples_.size() ? 0 : at_ + 1;
    }

private:
    std::vector<double> samples_;
    std::size_t at_ = 0;
};

/// Four lines that feed each other so that nothing is lost or gained but the share that each keeps.
class Room
{
public:
    void next(double left, double right)
    {
        std::array<double, 4> out{};
        for (std::size_t line = 0; line < 4; ++line) {
            dull_[line] += 0.45 * (lines_[line].oldest() - dull_[line]);
            out[line] = kept * dull_[line];
        }
        const double half = (out[0] + out[1] + out[2] + out[3]) / 2;
        for (std::size_t line = 0; line < 4; ++line)
            lines_[line].put((line % 2 == 0 ? left : right) + out[line] - half);
        left_ = out[0] + out[2];
        right_ = out[1] + out[3];
    }

    double left() const { return left_; }

    double right() const { return right_; }

private:
    static constexpr double kept = 0.84;

    // Lengths without a common divisor, so that their repeats do not meet.
    std::array<Delay, 4> lines_{Delay(1433), Delay(1949), Delay(2473), Delay(3121)};
    std::array<double, 4> dull_{};
    double left_ = 0;
    double right_ = 0;
};

/// Close to the identity when quiet, towards 1 when loud.
double rounded(double sample)
{
    const double limited = std::clamp(sample, -3.0, 3.0);
    const double square = limited * limited;
    return limited * (27 + square) / (27 + 9 * square);
}

double highest(const std::vector<double>& channel)
{
    double peak = 0;
    for (const double sample : channel)
        peak = std::max(peak, std::abs(sample));
    return peak;
}

} // namespace

void duck(Stage& stage, std::span<const std::size_t> kicks, double seconds, double depth)
{
    const auto length = static_cast<std::size_t>(seconds * sampleRate);
    for (const std::size_t kick : kicks) {
        for (std::size_t index = 0; index < length && kick + index < stage.size(); ++index) {
            const double place = static_cast<double>(index) / static_cast<double>(length);
            const double level = 1 - depth * (1 - place) * (1 - place);
            stage.left[kick + index] *= level;
            stage.right[kick + index] *= level;
        }
    }
}

void addEcho(Stage& stage, std::size_t delay, double feedback, double gain)
{
    Delay here(delay);
    Delay there(delay);
    for (std::size_t index = 0; index < stage.size(); ++index) {
        const double left = here.oldest();
        const double right = there.oldest();
        here.put(stage.left[index] + feedback * right);
        there.put(stage.right[index] + feedback * left);
        stage.left[index] += gain * right;
        stage.right[index] += gain * left;
    }
}

void addRoom(Stage& stage, double gain)
{
    Room room;
    for (std::size_t index = 0; index < stage.size(); ++index) {
        room.next(stage.left[index], stage.right[index]);
        stage.left[index] += gain * room.left();
        stage.right[index] += gain * room.right();
    }
}

void finish(Stage& stage, double peak)
{
    for (std::vector<double>* channel : {&stage.left, &stage.right})
        std::transform(channel->begin(), channel->end(), channel->begin(), rounded);
    const double loudest = std::max(highest(stage.left), highest(stage.right));
    const double gain = loudest > 0 ? peak / loudest : 1;
    for (std::vector<double>* channel : {&stage.left, &stage.right})
        std::transform(channel->begin(), channel->end(), channel->begin(), [gain](double x) { return gain * x; });
}

} // namespace orvane::demo
