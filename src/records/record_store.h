// The life of a record: made and opened at Start, closed at the end of the run.
#pragma once

#include "platform/dbengine.h"
#include "platform/files.h"
#include "platform/numbers.h"

namespace vantrel {

// Each takes a device 0 to 3. What the engine or the numbering refuses is a run-time error.

/// Makes the record's file with its empty table if it is not there, and sets RecordPath. A device without a record:
/// nothing.
void CreateRecord(Integer device);
/// Opens the record of `device` for appending, renumbers its rows, and sets RecordBase to their number.
void OpenRecord(Integer device);
void CloseRecord(Integer device);

/// Numbers the rows of a record 1, 2, 3 ... in stored order and removes those without a number. `Counter` counts the
/// rows: an Integer raises error 6 past 32767 rows. A number text that is no number raises error 13. To be called
/// inside a transaction, for one commit of the whole walk. `visit(counter)` is called for each row that stays, while
/// `rows` stands on it.
template <class Counter, class Visit>
void Renumber(Recordset& rows, const Visit& visit) {
    rows.MoveFirst();
    Counter counter = 0;
    while (!rows.Eof()) {
        // Kept: K-renumber
        if (!rows.Value("num").has_value()) {
            rows.Delete();
        } else {
            counter += 1;
            rows.Edit();
            // Kept: K-same-number
            if (CDbl(rows.Text("num")) != counter) {
                rows.Set("num", static_cast<double>(counter));
                rows.Update();
            }
            visit(counter);
        }
        rows.MoveNext();
    }
}

template <class Counter>
void Renumber(Recordset& rows) {
    Renumber<Counter>(rows, [](Counter) {});
}

/// Refuses the rows of a table that is no record's, for want of one of the 22 columns: error 3265. For whoever only
/// looks at records, before the first change: a foreign database stays as it is.
void Require_Record_Columns(const Recordset& rows);

}  // namespace vantrel
