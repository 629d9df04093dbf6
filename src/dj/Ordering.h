#pragma once

#include "dj/Analysis.h"
#include "main/App/L10n.h"

#include <array>
#include <optional>

namespace orvane::DJ {

/// In which order a set's tracks are played. The numbers are those of the picker.
enum class Ordering
{
    /// From the quietest track to the next that suits it best, rising.
    energyArc = 0,
    /// Once round the wheel of fifths.
    keyJourney = 1,
    shuffle = 2,
    asListed = 3,
};

/// In the order of the picker.
inline constexpr std::array allOrderings{Ordering::energyArc, Ordering::keyJourney, Ordering::shuffle,
                                         Ordering::asListed};

/// The ordering with that number; `energyArc` for a number that none has.
Ordering orderingOf(int rawValue);

/// The text that the ordering's chip shows.
L10n::Key labelOf(Ordering ordering);

/// The choices of how long a set is to be, in minutes, in the order of the picker; 0 for all of it.
inline constexpr std::array setLengths{0, 30, 60, 90};

/// The text that the choice of so many minutes shows.
QString lengthText(int minutes);

/// The set in the order of `style`. A shuffle is new at every call; the others give the same order for the same set.
Set order(const Set& set, Ordering style);

/// What it costs to go from one track to the next: a clash of keys, a change of tempo, a fall in energy. 0 and more.
double cost(const Analysis& from, const Analysis& to);

/// The set's first tracks, up to and with the one that fills `toMinutes`; all of them for no minutes or less than one.
Set trim(const Set& set, std::optional<int> toMinutes);

} // namespace orvane::DJ
