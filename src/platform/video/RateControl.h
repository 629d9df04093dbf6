#pragma once

#include <cstdint>

namespace orvane {

/// Chooses how coarsely each picture is quantized, so that a video of hardly moving pictures keeps to an average bit
/// rate. A key picture, of which the pictures after it show most unchanged, is quantized half as coarsely as those.
/// What pictures cost is learnt from those encoded so far; what was spent too much or too little is made up for over
/// the next ten seconds. It holds H.264 quantizers: 6 more halve a picture's size, about.
class RateControl
{
public:
    enum class Picture
    {
        Key,
        Between,
    };

    static constexpr int finest = 12;
    static constexpr int coarsest = 51;

    /// For pictures of `pixels` pixels, every `keyInterval`th a key picture; all above 0, `bitRate` in bit/s.
    RateControl(std::int64_t bitRate, int framesPerSecond, int keyInterval, std::int64_t pixels);

    /// The quantizer of the next picture, from `finest` to `coarsest`.
    int quantizer(Picture picture) const;

    /// A picture came out of the encoder with `bits` bits at `quantizer`. Called in the order of the pictures; some may
    /// have been asked for meanwhile.
    void spend(Picture picture, int quantizer, std::int64_t bits);

private:
    double bitsPerPicture_;
    int keyInterval_;
    double horizon_;
    double memory_;
    /// Bits of a picture times the quantizer's step: about the same however coarsely it is quantized.
    double keyCost_;
    double betweenCost_;
    double betweenCount_ = 0.0;
    /// Bits above what the pictures so far were given.
    double debt_ = 0.0;
};

} // namespace orvane
