// The life of a record: made and opened at Start, closed at the end of the run.
#pragma once

#include "platform/dbengine.h"
#include "platform/files.h"
#include "platform/numbers.h"

#include <limits>

namespace vantrel {

// Each takes a device 0 to 3. What the engine or the numbering refuses is a run-time error.

/// Makes the record's file with its empty table if it is not there, and sets RecordPath. A device without a record:
/// nothing.
void CreateRecord(Integer device);
/// Opens the record of `device` for appending, renumbers its rows, and sets RecordBase to their number.
void OpenRecord(Integer device);
void CloseRecord(Integer device);

/// Numbers the rows of a record 1, 2, 3 ... in stored order and removes those without a number. `Counter`, an
/// integer type, counts the rows: one of 16 bits raises error 6 past 32767 rows. A number text that is not a number
/// raises error 13. What was set right before an error stays so. To be called inside a transaction, for one commit of
/// the whole.
template <class Counter>
void Renumber(Recordset& rows) {
    static_assert(std::numeric_limits<Counter>::is_integer);
    rows.Renumber("num", std::numeric_limits<Counter>::max());  // Kept: K-renumber, K-same-number
}

/// Refuses the rows of a table that is not a record's, for want of one of the 22 columns: error 3265. For whoever only
/// looks at records, before the first change: a foreign database stays as it is.
void RequireRecordColumns(const Recordset& rows);

}  // namespace vantrel
