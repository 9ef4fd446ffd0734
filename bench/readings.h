// What the channels measure.
#pragma once

#include "bench/description.h"

namespace vantrel::bench {

/// An open channel, or one that is too much for its range.
inline constexpr double kOverload = 9.9e37;

/// What channel `number` (from 1) of instrument `instrument` (from 0) measures in sweep `sweep` (from 0, counted on
/// over all scans). The same arguments always give the same reading.
double Reading(int instrument, int number, const ChannelDescription& channel, int sweep);

}  // namespace vantrel::bench
