#include "mastering/arithmetic/Likeness.h"

#include "mastering/arithmetic/VectorClones.h"

#include <cstring>

namespace orvane::Master::Likeness {

namespace {

/// Eight places that the processor works on at once, or in two or four goes.
using Lanes [[gnu::vector_size(64)]] = double;
constexpr std::size_t laneCount = 8;
constexpr std::size_t groupCount = placeCount / laneCount;
/// From one place to the next there are two terms, so that even and odd terms of all places stand in a row each.
constexpr std::size_t rowCount = placeStep / termStep;
constexpr std::size_t rowLength = placeCount + termCount / rowCount;

ORVANE_VECTOR_CLONES
void addUp(const double* written, const double rows[rowCount][rowLength], double* sums)
{
    Lanes totals[groupCount] = {};
    for (std::size_t term = 0; term < termCount; ++term) {
        const double* row = rows[term % rowCount] + term / rowCount;
        for (std::size_t group = 0; group < groupCount; ++group) {
            Lanes values;
            std::memcpy(&values, row + group * laneCount, sizeof values);
            totals[group] += written[term * termStep] * values;
        }
    }
    std::memcpy(sums, totals, sizeof totals);
}

} // namespace

std::array<double, placeCount> atEachPlace(const double* written, const double* samples)
{
    double rows[rowCount][rowLength] = {};
    for (std::size_t index = 0; index * termStep < reach; ++index)
        rows[index % rowCount][index / rowCount] = samples[index * termStep];
    std::array<double, placeCount> sums;
    addUp(written, rows, sums.data());
    return sums;
}

} // namespace orvane::Master::Likeness
