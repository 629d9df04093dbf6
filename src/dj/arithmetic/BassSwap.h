#pragma once

namespace orvane::DJ {

/// A filter of one pole, which follows a signal from sample to sample.
struct Pole
{
    double state = 0.0;

    /// Takes the signal's next sample and gives what of it lies below `corner`, in Hz; `rate` is the sample rate.
    double lowPass(double sample, double corner, double rate);

    void reset() { state = 0.0; }
};

/// A sample of the track that goes out, without a part of its bass: `amount`, 0 to 1, is how far the blend has come.
/// What is taken away reaches from 30 Hz at the blend's start to 300 Hz at its end. `rate` in Hz.
double highPassed(double sample, double amount, Pole& pole, double rate);

/// A sample of the track that comes in, as above: its bass is held back at first, and comes in as the other's goes.
double lowShelfIn(double sample, double amount, Pole& pole, double rate);

} // namespace orvane::DJ
