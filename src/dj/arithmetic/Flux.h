#pragma once

#include <array>
#include <complex>
#include <cstddef>

namespace orvane::DJ {

/// The rise of a spectrum from one frame to the next, of 512 bins, in which high bins count up to four times the
/// lowest.
class Flux
{
public:
    static constexpr std::size_t binCount = 512;

    Flux();

    /// How much louder the bins are than those of the frame before; what fell does not count. 0 for the first frame.
    double next(const std::complex<double>* bins);

private:
    alignas(64) std::array<double, binCount> weights_;
    alignas(64) std::array<double, binCount> previous_ = {};
    bool isFirst_ = true;
};

} // namespace orvane::DJ
