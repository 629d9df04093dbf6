#include "platform/video/RateControl.h"

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

constexpr double quantizersToHalf = 6.0;
constexpr double keyQuantizersLess = 6.0;

constexpr double secondsToMakeUp = 10.0;
constexpr double secondsRemembered = 2.0;

/// What a picture may be given of its share, at least and at most, to make up for others.
constexpr double leastOfShare = 0.25;
constexpr double mostOfShare = 4.0;

/// Costs for a pixel before any is known: those of a title, artwork and a row of bars.
constexpr double keyCostOfPixel = 1.7;
constexpr double betweenCostOfPixel = 0.05;

double step(double quantizer)
{
    return std::exp2(quantizer / quantizersToHalf);
}

} // namespace

RateControl::RateControl(std::int64_t bitRate, int framesPerSecond, int keyInterval, std::int64_t pixels)
    : bitsPerPicture_(double(bitRate) / framesPerSecond)
    , keyInterval_(keyInterval)
    , horizon_(secondsToMakeUp * framesPerSecond)
    , memory_(secondsRemembered * framesPerSecond)
    , keyCost_(keyCostOfPixel * double(pixels))
    , betweenCost_(betweenCostOfPixel * double(pixels))
{
}

int RateControl::quantizer(Picture picture) const
{
    const double share =
        std::clamp(bitsPerPicture_ - debt_ / horizon_, leastOfShare * bitsPerPicture_, mostOfShare * bitsPerPicture_);
    const double costOfAll = keyCost_ * step(keyQuantizersLess) + betweenCost_ * (keyInterval_ - 1);
    const double between = quantizersToHalf * std::log2(std::max(costOfAll / (keyInterval_ * share), 1.0));
    const double exact = picture == Picture::Key ? between - keyQuantizersLess : between;
    return int(std::lrint(std::clamp(exact, double(finest), double(coarsest))));
}

void RateControl::spend(Picture picture, int quantizer, std::int64_t bits)
{
    debt_ += double(bits) - bitsPerPicture_;
    const double cost = double(bits) * step(quantizer);
    if (picture == Picture::Key) {
        keyCost_ = cost;
        return;
    }
    betweenCount_ = std::min(betweenCount_ + 1.0, memory_ - 1.0);
    betweenCost_ += (cost - betweenCost_) / (betweenCount_ + 1.0);
}

} // namespace orvane
