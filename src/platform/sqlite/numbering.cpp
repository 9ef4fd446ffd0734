#include "platform/sqlite/numbering.h"

#include <charconv>
#include <map>
#include <tuple>

namespace vantrel::engine {

namespace {

std::int64_t scan_count = 0;

/// A state of a file's content. The engine counts every change in the file's header; size and time tell a new file
/// from a deleted one whose place on the disk it took.
struct Stamp {
    std::string change_counter;
    os::FileStamp file;
    bool operator==(const Stamp&) const = default;
};

Stamp StampOf(const OpenFile& file) {
    constexpr std::size_t kChangeCounterOffset = 24;
    constexpr std::size_t kChangeCounterSize = 4;
    return {.change_counter = file.Read(kChangeCounterOffset, kChangeCounterSize), .file = file.Stamp()};
}

/// What is known of a column at one stamp of its file.
struct Numbering {
    Stamp stamp;
    bool is_proven = false;     ///< the column counts the rows 1, 2, 3 ... in stored order
    std::int64_t count = 0;     ///< rows
    std::int64_t first_id = 0;  ///< row id of row 1
    std::int64_t last_id = 0;   ///< row id of row `count`
};

using ColumnKey = std::tuple<os::FileIdentity, std::string, std::string>;  // file, table, column
using Numberings = std::map<ColumnKey, Numbering>;

/// Kept beyond a connection, as a reader may open a record for each row that it shows.
Numberings& KnownNumberings() {
    static auto* const known = new Numberings;
    return *known;
}

Numbering Prove(Connection& connection, const Table& table, const std::string& column) {
    ++scan_count;
    Numbering numbering;
    const std::string id_and_number = "select _rowid_," + Quoted(column) + " from " + Quoted(table.name);
    Statement rows = connection.Prepare(id_and_number + " order by _rowid_");
    while (rows.Step()) {
        numbering.last_id = rows.Int(0);
        if (++numbering.count == 1) numbering.first_id = numbering.last_id;
        if (!rows.IsText(1) || rows.View(1) != std::to_string(numbering.count)) return numbering;
    }
    numbering.is_proven = true;
    return numbering;
}

const Numbering& NumberingOf(Connection& connection, const Table& table, const std::string& column) {
    const Stamp stamp = StampOf(connection.File());
    Numbering& known = KnownNumberings()[{connection.File().Identity(), table.name, column}];
    if (!(known.stamp == stamp)) {
        known = Prove(connection, table, column);
        known.stamp = stamp;
    }
    return known;
}

/// The number that `text` is, written as a numbering writes it; 0 for any other text.
std::int64_t PlainNumber(const std::string& text) {
    std::int64_t number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return std::to_string(number) == text ? number : 0;
}

/// The id of row `number` of a numbered column: where no ids are missing it is a matter of counting, else of search.
std::int64_t IdOf(Connection& connection, const Table& table, const std::string& column, const Numbering& numbering,
                  std::int64_t number) {
    if (numbering.last_id - numbering.first_id == numbering.count - 1) return numbering.first_id + number - 1;
    const std::string id_and_number = "select _rowid_," + Quoted(column) + " from " + Quoted(table.name);
    Statement probe = connection.Prepare(id_and_number + " where _rowid_>=?1 order by _rowid_ limit 1");
    std::int64_t low = numbering.first_id;
    std::int64_t high = numbering.last_id;
    while (low < high) {
        const std::int64_t middle = low + (high - low) / 2;
        probe.Reset();
        probe.Bind(1, middle);
        if (!probe.Step()) break;
        const std::int64_t found = PlainNumber(std::string(probe.View(1)));
        if (found == number) return probe.Int(0);
        if (found < number)
            low = probe.Int(0) + 1;
        else
            high = middle - 1;
    }
    return low;
}

bool Holds(Connection& connection, const Table& table, const std::string& column, std::int64_t id,
           const std::string& text) {
    const std::string number = "select " + Quoted(column) + " from " + Quoted(table.name);
    Statement row = connection.Prepare(number + " where _rowid_=?1");
    row.Bind(1, id);
    return row.Step() && row.IsText(0) && row.View(0) == text;
}

std::vector<std::int64_t> Scan(Connection& connection, const Table& table, const std::string& column,
                               const std::string& text) {
    ++scan_count;
    const std::string id = "select _rowid_ from " + Quoted(table.name);
    const Text wanted(text);
    Statement rows = connection.Prepare(id + " where " + Quoted(column) + "=?1 collate binary order by _rowid_");
    rows.Bind(1, wanted);
    std::vector<std::int64_t> ids;
    while (rows.Step()) ids.push_back(rows.Int(0));
    return ids;
}

}  // namespace

std::vector<std::int64_t> FindRows(Connection& connection, const Table& table, const std::string& column,
                                   const std::string& text) {
    const ReadScope one_picture(connection);
    // The first read takes the lock under which the file, and so its stamp, stands still.
    connection.Run("select _rowid_ from " + Quoted(table.name) + " limit 1");
    if (connection.IsNew() || connection.HasUncommittedChanges()) return Scan(connection, table, column, text);
    const Numbering& numbering = NumberingOf(connection, table, column);
    if (!numbering.is_proven) return Scan(connection, table, column, text);
    const std::int64_t number = PlainNumber(text);
    if (number < 1 || number > numbering.count) return {};
    const std::int64_t id = IdOf(connection, table, column, numbering, number);
    if (Holds(connection, table, column, id, text)) return {id};
    return Scan(connection, table, column, text);
}

std::int64_t ScanCount() { return scan_count; }

}  // namespace vantrel::engine
