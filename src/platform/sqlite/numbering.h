// Finding the row of a number without an index and without reading the whole table.
#pragma once

#include "platform/sqlite/connection.h"

namespace vantrel::engine {

/// The ids of the rows whose column holds exactly `text`, in stored order: what a scan of the table gives.
///
/// Where the column numbers the rows 1, 2, 3 ... in stored order, the rows themselves are the index. That they are so
/// numbered is proven by reading the table once, and holds until the file changes; every search after it reads only a
/// few rows. In a table that is not so numbered each search is a scan.
std::vector<std::int64_t> FindRows(Connection& connection, const Table& table, const std::string& column,
                                   const std::string& text);

/// Scans made so far, by all searches, to prove a numbering or to find a row. For tests and benchmarks.
std::int64_t ScanCount();

}  // namespace vantrel::engine
