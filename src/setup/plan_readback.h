// Reads back from the instruments what each channel measures.
#pragma once

#include "platform/numbers.h"

namespace vantrel {

// Both ask channel by channel and fold the replies into ChannelPlan, so that the two things that an instrument cannot
// know stay: which voltage channels are currents behind a shunt, and which slaves a four-wire master occupies.

/// Refreshes the function names of `device`. Current channels are not asked.
void RefreshChannelFunctions(Integer device);

/// Reads functions, scan timer and sensor types of `device` into ChannelPlan and ScanTimerText, and into the
/// working arrays of the scanner card dialog.
void ReadDevicePlan(Integer device);

}  // namespace vantrel
