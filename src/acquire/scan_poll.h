// Waits for an instrument's scan, fetches its readings and cuts them into rows.
#pragma once

#include "platform/numbers.h"

namespace vantrel {

/// Polls `device` until its pass was fetched, or (except in a one-shot run) until the link went bad. Yields every
/// 200 ms.
void Poll_Scan(Integer device);

/// Notes the present moment as the time stamp of the next row of `device`.
void Add_Fetch_Time(Integer device);

/// Fetches all readings of `device`; each complete row is recorded and shown. Raises error 13 for a row without a
/// time stamp, 11 for a device without active channels, 6 beyond 32767 readings.
void Fetch_Readings(Integer device);

}  // namespace vantrel
