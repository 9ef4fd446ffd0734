// Turns a complete scan into what is shown and stored.
#pragma once

#include "platform/numbers.h"

namespace vantrel {

/// Counts the scan of `device` in ScanRow, converts its current channels, shows it in the live table and, if the
/// device has a record, appends one row, on disk when it returns. Yields once. A current channel's reading that is no
/// number raises error 13.
void WriteRecord(Integer device);

}  // namespace vantrel
