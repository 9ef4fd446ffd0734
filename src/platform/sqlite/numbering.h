// The numbering of a table: a column that counts its rows 1, 2, 3 ... in stored order. Proven by reading the column
// once, it stands in for an index.
#pragma once

#include "platform/sqlite/connection.h"

namespace vantrel::engine {

// All but Append are to be called inside a ReadScope or a transaction: while the file, and so its stamp, stands still.

/// A column and what is known of it: whether each of its texts is, as a number, the place of its row in stored order.
struct Numbering {
    bool is_proven = false;
    std::int64_t count = 0;     ///< rows
    std::int64_t first_id = 0;  ///< row id of row 1
    std::int64_t last_id = 0;   ///< row id of row `count`
};

/// Rows that were looked for.
struct Found {
    std::vector<std::int64_t> ids;
    bool is_by_number = false;  ///< whether the row has the very text remains to be seen: if not, no row has
};

/// The rows whose column holds exactly `text`, in stored order: what a scan of the table gives.
///
/// That the column numbers the rows is proven by reading it once, and holds until somebody else changes the file; every
/// search after it reads only a few rows. In a table that is not so numbered each search is a scan.
Found FindRows(Connection& connection, const Table& table, const std::string& column, const std::string& text);

/// Numbers the rows 1, 2, 3 ... in stored order, as a walk over them would: a row with Null in the column is removed, a
/// text that is the number of its row, however it is written, stays as it is, any other is replaced. A text that is no
/// number: error 13; more than `most` rows: error 6; the rows before stay as the walk left them. The table as it is
/// then. To be called inside a transaction.
Numbering Renumber(Connection& connection, const Table& table, const std::string& column, std::int64_t most);

/// The rows of the table up to row id `last_id`, if that is known without a look at them.
std::optional<std::int64_t> KnownCount(Connection& connection, const Table& table, std::int64_t last_id);

/// Where a scan begins that is to read from the row on that has place `number` in stored order: a row id, and the rows
/// to be skipped from there on.
struct ScanStart {
    std::int64_t id, skipped;
};
ScanStart StartAt(Connection& connection, const Table& table, std::int64_t number);

/// To live while a row is stored behind all others in a commit of its own. Carries what is known of the table over that
/// commit, if nobody else has written to the file.
class Append {
public:
    Append(Connection& connection, const Table& table);
    /// The row is stored: under the row id `id`, with the texts `row`, one for each column.
    void Stored(std::int64_t id, const std::vector<Text>& row);

private:
    Connection& connection_;
    const Table& table_;
    bool may_extend_ = false;  ///< what is known of the file held when the row was to be stored
};

/// Scans made so far, by all searches, to prove a numbering or to find a row. For tests and benchmarks.
std::int64_t ScanCount();

}  // namespace vantrel::engine
