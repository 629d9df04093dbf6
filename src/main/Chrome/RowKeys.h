#pragma once

class QWidget;

namespace orvane {

/// Where a key leads in a row of `count` things of which `current` is selected: an arrow to the neighbour, in the
/// direction in which `row` is laid out and no further than its ends; Home and End to these. Below 0 for any other key.
int indexForKey(int key, const QWidget& row, int current, int count);

} // namespace orvane
