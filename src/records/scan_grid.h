// The grid of stored or recent scans, as See Value and the record browser show it.
#pragma once

#include "platform/toolkit/grid.h"

namespace vantrel {

/// Gives `grid` its headings: "Scan Cycle", "Time" and one column for each of `channels` channels under two fixed rows,
/// and one empty row.
void LayOutScanGrid(MSFlexGrid& grid, int channels);

}  // namespace vantrel
