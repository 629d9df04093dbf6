#include "dj/arithmetic/BassSwap.h"

#include <cmath>
#include <numbers>

namespace orvane::DJ {

double Pole::lowPass(double sample, double corner, double rate)
{
    state += (1.0 - std::exp(-2.0 * std::numbers::pi * corner / rate)) * (sample - state);
    return state;
}

double highPassed(double sample, double amount, Pole& pole, double rate)
{
    return sample - amount * pole.lowPass(sample, 270.0 * amount + 30.0, rate);
}

double lowShelfIn(double sample, double amount, Pole& pole, double rate)
{
    return sample - (1.0 - amount) * pole.lowPass(sample, 300.0 - 270.0 * amount, rate);
}

} // namespace orvane::DJ
