// The live table of each device, and the running list of its latest scans.
#pragma once

#include "platform/numbers.h"

namespace vantrel {

/// Lays out the live table of `device` and counts its active channels. With a bad link it runs Stop and leaves the
/// table blank.
void Make_Live_Table(Integer device);

/// Make_Live_Table for every device.
void MakeLiveTables();

/// Adds the scan in ScanRow to the See Value table and to its backing copy. Each keeps the latest 160 scans.
void Update_Tables(Integer device);

}  // namespace vantrel
