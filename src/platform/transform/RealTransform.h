#pragma once

#include <complex>
#include <cstddef>
#include <memory>
#include <span>

namespace orvane {

/// The discrete Fourier transform of real samples, of one length. Planned once for each length and then shared: it has
/// no state, so that any number of threads use it at once, each with a room of its own. Plans are estimated, never
/// timed, so that a program gives the same numbers at every run on a machine.
class RealTransform
{
public:
    /// What one thread works in: the samples it gives and the bins it gets.
    class Room
    {
    public:
        explicit Room(const RealTransform& transform);
        ~Room();
        Room(Room&&) noexcept;
        Room& operator=(Room&&) noexcept;

        /// The signal to transform, as many values as the transform is long. Kept by `run`.
        std::span<double> samples() const;

        /// The packed spectrum, half as many values: bin k is the sum of sample[n] * e^(-2 pi i k n / length), without
        /// a scale. Bin 0 holds two real values: the zero frequency's, and as its imaginary part the top frequency's.
        std::span<const std::complex<double>> bins() const;

    private:
        friend class RealTransform;
        struct Buffers;
        std::unique_ptr<Buffers> buffers_;
    };

    /// The transform of `length` samples, which is even and at least 2. Null where the library cannot set it up. Any
    /// thread may ask; it lives as long as the program.
    static const RealTransform* ofLength(std::size_t length);

    ~RealTransform();
    RealTransform(const RealTransform&) = delete;
    RealTransform& operator=(const RealTransform&) = delete;

    std::size_t length() const { return length_; }

    /// Fills the bins of `room` from its samples. The room was made for a transform of this length.
    void run(Room& room) const;

private:
    struct Plan;

    RealTransform(std::size_t length, std::unique_ptr<Plan> plan);

    std::size_t length_;
    std::unique_ptr<Plan> plan_;
};

} // namespace orvane
