#include "dj/Ordering.h"

#include <QRandomGenerator>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <tuple>
#include <utility>
#include <vector>

namespace orvane::DJ {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double costOfKeyStep = 3.0;
constexpr double costOfBeatAMinute = 0.5;
constexpr double costOfFallingEnergy = 4.0;
constexpr double secondsInMinute = 60.0;

/// Sorts as the wheel's codes do: by their number, and of one number the minor key, "A", first.
auto placeOnWheel(const Analysis& track)
{
    return std::tuple(track.key.camelotNumber(), !track.key.isMinor, track.bpm);
}

Set keyJourney(Set set)
{
    std::stable_sort(set.begin(), set.end(), [](const Analysis& left, const Analysis& right) {
        return placeOnWheel(left) < placeOnWheel(right);
    });
    return set;
}

Set shuffled(Set set)
{
    std::shuffle(set.begin(), set.end(), *QRandomGenerator::system());
    return set;
}

Set energyArc(const Set& set)
{
    if (set.size() < 2)
        return set;
    std::vector<const Analysis*> remaining;
    for (const Analysis& track : set)
        remaining.push_back(&track);
    auto next = std::min_element(remaining.begin(), remaining.end(), [](const Analysis* left, const Analysis* right) {
        return left->energy < right->energy;
    });
    Set result;
    while (next != remaining.end()) {
        const Analysis& last = **next;
        result.append(last);
        remaining.erase(next);
        next =
            std::min_element(remaining.begin(), remaining.end(), [&last](const Analysis* left, const Analysis* right) {
                return cost(last, *left) < cost(last, *right);
            });
    }
    return result;
}

} // namespace

Ordering orderingOf(int rawValue)
{
    const bool isOne = rawValue >= 0 && rawValue < int(allOrderings.size());
    return isOne ? Ordering(rawValue) : Ordering::energyArc;
}

L10n::Key labelOf(Ordering ordering)
{
    constexpr std::array labels{L10n::Key::djOrderEnergy, L10n::Key::djOrderKey, L10n::Key::djOrderShuffle,
                                L10n::Key::djOrderListed};
    return labels.at(std::size_t(ordering));
}

QString lengthText(int minutes)
{
    return minutes < 1 ? L10n::t(L10n::Key::djLengthAll) : u"~%1 min"_s.arg(minutes);
}

Set order(const Set& set, Ordering style)
{
    switch (style) {
    case Ordering::energyArc:
        return energyArc(set);
    case Ordering::keyJourney:
        return keyJourney(set);
    case Ordering::shuffle:
        return shuffled(set);
    case Ordering::asListed:
        break;
    }
    return set;
}

double cost(const Analysis& from, const Analysis& to)
{
    return costOfKeyStep * from.key.distanceTo(to.key) + costOfBeatAMinute * std::abs(from.bpm - to.bpm) +
           costOfFallingEnergy * std::max(from.energy - to.energy, 0.0);
}

Set trim(const Set& set, std::optional<int> toMinutes)
{
    if (!toMinutes || *toMinutes < 1)
        return set;
    Set result;
    double seconds = 0.0;
    for (const Analysis& track : set) {
        result.append(track);
        seconds += track.duration;
        if (seconds >= *toMinutes * secondsInMinute)
            break;
    }
    return result;
}

} // namespace orvane::DJ
