#include "platform/sqlite/numbering.h"

#include "platform/errors.h"
#include "platform/numbers.h"

#include <array>
#include <charconv>
#include <limits>
#include <map>
#include <numeric>
#include <utility>

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

/// What is known of a table at one stamp of its file: its columns that have been looked at, each with its numbering.
struct Known {
    Stamp stamp;
    std::map<std::string, Numbering> columns;
};

using TableKey = std::pair<os::FileIdentity, std::string>;

/// Kept beyond a connection, as a reader may open a record for each row that it shows.
std::map<TableKey, Known>& AllKnown() {
    static auto* const known = new std::map<TableKey, Known>;
    return *known;
}

/// A row number as the program writes it.
class Plain {
public:
    explicit Plain(std::int64_t number) : end_(std::to_chars(text_.data(), text_.data() + text_.size(), number).ptr) {}
    std::string_view View() const { return {text_.data(), end_}; }

private:
    std::array<char, 24> text_;
    char* end_;
};

/// True if `text`, however written, is the number `number`.
bool Is(std::string_view text, std::int64_t number) {
    if (text == Plain(number).View()) return true;
    return IsNumeric(text) && CDbl(text) == static_cast<double>(number);
}

/// Reads the column as far as it numbers the rows; `count` and the ids are those of the rows up to there.
Numbering Prove(Connection& connection, const Table& table, const std::string& column) {
    ++scan_count;
    Numbering numbering;
    const std::string id_and_number = "select _rowid_," + Quoted(column) + " from " + Quoted(table.name);
    Statement rows = connection.Prepare(id_and_number + " order by _rowid_");
    while (rows.Step()) {
        if (!rows.IsText(1) || !Is(rows.View(1), numbering.count + 1)) return numbering;
        numbering.last_id = rows.Int(0);
        if (++numbering.count == 1) numbering.first_id = numbering.last_id;
    }
    numbering.is_proven = true;
    return numbering;
}

/// What is known of the table, which is nothing if the file has changed.
Known& KnownNow(Connection& connection, const Table& table) {
    const Stamp stamp = StampOf(connection.File());
    Known& known = AllKnown()[{connection.File().Identity(), table.name}];
    if (!(known.stamp == stamp)) known = {.stamp = stamp, .columns = {}};
    return known;
}

const Numbering& NumberingOf(Connection& connection, const Table& table, const std::string& column) {
    auto& columns = KnownNow(connection, table).columns;
    const auto known = columns.find(column);
    return known != columns.end() ? known->second
                                  : columns.emplace(column, Prove(connection, table, column)).first->second;
}

/// The id of row `number`, 1 to `count`, of a proven numbering: where no ids are missing it is a matter of counting,
/// else of search.
std::int64_t IdOf(Connection& connection, const Table& table, const std::string& column, const Numbering& numbering,
                  std::int64_t number) {
    const auto span = static_cast<std::uint64_t>(numbering.last_id) - static_cast<std::uint64_t>(numbering.first_id);
    if (span == static_cast<std::uint64_t>(numbering.count) - 1) return numbering.first_id + (number - 1);
    const std::string id_and_number = "select _rowid_," + Quoted(column) + " from " + Quoted(table.name);
    Statement probe = connection.Prepare(id_and_number + " where _rowid_>=?1 order by _rowid_ limit 1");
    std::int64_t low = numbering.first_id;
    std::int64_t high = numbering.last_id;
    while (low < high) {  // the row lies between them, both included
        const std::int64_t middle = std::midpoint(low, high);
        probe.Reset();
        probe.Bind(1, middle);
        if (!probe.Step()) break;
        const auto found = static_cast<std::int64_t>(CDbl(probe.View(1)));
        if (found == number) return probe.Int(0);
        if (found < number)
            low = probe.Int(0) + 1;
        else
            high = middle - 1;
    }
    return low;
}

Found Scan(Connection& connection, const Table& table, const std::string& column, const std::string& text) {
    ++scan_count;
    const std::string id = "select _rowid_ from " + Quoted(table.name);
    const Text wanted(text);
    Statement rows = connection.Prepare(id + " where " + Quoted(column) + "=?1 collate binary order by _rowid_");
    rows.Bind(1, wanted);
    Found found;
    while (rows.Step()) found.ids.push_back(rows.Int(0));
    return found;
}

// ---- Renumbering, as one UPDATE with two functions of its own: which rows have a wrong number, and the right one.

/// A walk over the rows that the functions count.
struct Walk {
    std::int64_t number;  ///< of the last row that was counted
    std::int64_t most;
    std::int64_t first_id, last_id;                                  ///< of the rows that were counted
    std::int64_t end_id = std::numeric_limits<std::int64_t>::max();  ///< the row that it stops at
    int fault = 0;                                                   ///< the error that it stops with
    bool has_met_null = false;

    void Stop(std::int64_t id, int error) {
        end_id = id;
        fault = error;
    }
};

constexpr const char* kWalk = "walk";

Walk& WalkOf(sqlite3_value** arguments) { return *static_cast<Walk*>(sqlite3_value_pointer(arguments[0], kWalk)); }

std::string_view TextOf(sqlite3_value* value) {
    const auto* const text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    if (text == nullptr) return {};
    return {text, static_cast<std::size_t>(sqlite3_value_bytes(value))};
}

/// is_wrong(walk, row id, number): goes on to the next row. Behind the row that the walk stops at none is wrong.
void IsWrong(sqlite3_context* context, int, sqlite3_value** arguments) {
    Walk& walk = WalkOf(arguments);
    const std::int64_t id = sqlite3_value_int64(arguments[1]);
    sqlite3_result_int(context, 0);
    if (walk.fault != 0) return;
    if (sqlite3_value_type(arguments[2]) == SQLITE_NULL) {
        walk.has_met_null = true;
        return;
    }
    if (walk.number == walk.most) return walk.Stop(id, kOverflow);
    const std::string_view text = TextOf(arguments[2]);
    try {
        const std::int64_t next = walk.number + 1;
        const bool is_right = text == Plain(next).View() || CDbl(text) == static_cast<double>(next);
        walk.number = next;
        walk.last_id = id;
        if (next == 1) walk.first_id = id;
        sqlite3_result_int(context, is_right ? 0 : 1);
    } catch (const RunTimeError& error) {
        walk.Stop(id, error.Number());
    }
}

/// right_number(walk, row id), of the row that has just been found wrong.
void RightNumber(sqlite3_context* context, int, sqlite3_value** arguments) {
    const Walk& walk = WalkOf(arguments);
    if (sqlite3_value_int64(arguments[1]) != walk.last_id)
        return sqlite3_result_error(context, "rows are not changed one by one", -1);
    const Plain number(walk.number);
    sqlite3_result_text(context, number.View().data(), static_cast<int>(number.View().size()), SQLITE_TRANSIENT);
}

/// Walks over the rows behind those that `walk` has counted already.
void WalkOn(Connection& connection, const Table& table, const std::string& column, Walk& walk) {
    const std::string name = Quoted(table.name);
    const std::string number = Quoted(column);
    connection.AddFunction("is_wrong", 3, IsWrong);
    connection.AddFunction("right_number", 2, RightNumber);
    {
        Statement change =
            connection.Prepare("update " + name + " set " + number +
                               "=right_number(?1,_rowid_) where _rowid_>=?2 and is_wrong(?1,_rowid_," + number + ")");
        change.Bind(1, &walk, kWalk);
        change.Bind(2, walk.number == 0 ? std::numeric_limits<std::int64_t>::min() : walk.last_id + 1);
        change.Step();
    }
    if (!walk.has_met_null) return;
    Statement remove = connection.Prepare("delete from " + name + " where " + number + " is null and _rowid_<=?1");
    remove.Bind(1, walk.end_id);
    remove.Step();
}

/// True if the file has been committed to once since `before`. More commits are somebody else's.
bool IsNextOf(const Stamp& before, const Stamp& stamp) {
    const auto count = [](const std::string& big_endian) {
        std::uint32_t number = 0;
        for (const char byte : big_endian) number = number << 8 | static_cast<unsigned char>(byte);
        return number;
    };
    return count(stamp.change_counter) == count(before.change_counter) + 1;
}

/// Has `numbering`, which the open transaction has come to, known once it is committed, if no row is changed until
/// then.
void KeepOnCommit(Connection& connection, const Table& table, const std::string& column, const Numbering& numbering) {
    connection.OnCommit([&connection, name = table.name, column, numbering, changes = connection.TotalChanges(),
                         before = StampOf(connection.File())] {
        const Stamp stamp = StampOf(connection.File());
        if (connection.TotalChanges() != changes || !IsNextOf(before, stamp)) return;
        AllKnown()[{connection.File().Identity(), name}] = {.stamp = stamp, .columns = {{column, numbering}}};
    });
}

}  // namespace

Found FindRows(Connection& connection, const Table& table, const std::string& column, const std::string& text) {
    if (!connection.IsAsStored()) return Scan(connection, table, column, text);
    const Numbering& numbering = NumberingOf(connection, table, column);
    if (!numbering.is_proven) return Scan(connection, table, column, text);
    const double number = IsNumeric(text) ? CDbl(text) : 0;
    if (number < 1 || number > static_cast<double>(numbering.count)) return {};
    const std::int64_t id = IdOf(connection, table, column, numbering, static_cast<std::int64_t>(number));
    return {.ids = {id}, .is_by_number = true};
}

Numbering Renumber(Connection& connection, const Table& table, const std::string& column, std::int64_t most) {
    const Numbering numbering =
        connection.IsAsStored() ? NumberingOf(connection, table, column) : Prove(connection, table, column);
    if (numbering.count > most) throw RunTimeError(kOverflow);
    if (numbering.is_proven) return numbering;
    Walk walk{.number = numbering.count, .most = most, .first_id = numbering.first_id, .last_id = numbering.last_id};
    WalkOn(connection, table, column, walk);
    if (walk.fault != 0) throw RunTimeError(walk.fault);
    const Numbering renumbered{
        .is_proven = true, .count = walk.number, .first_id = walk.first_id, .last_id = walk.last_id};
    if (!connection.IsNew()) KeepOnCommit(connection, table, column, renumbered);
    return renumbered;
}

std::optional<std::int64_t> KnownCount(Connection& connection, const Table& table, std::int64_t last_id) {
    if (!connection.IsAsStored()) return std::nullopt;
    for (const auto& [column, numbering] : KnownNow(connection, table).columns)
        if (numbering.is_proven && numbering.count > 0 && numbering.last_id == last_id) return numbering.count;
    return std::nullopt;
}

ScanStart StartAt(Connection& connection, const Table& table, std::int64_t number) {
    if (connection.IsAsStored())
        for (const auto& [column, numbering] : KnownNow(connection, table).columns)
            if (numbering.is_proven && number >= 1 && number <= numbering.count)
                return {.id = IdOf(connection, table, column, numbering, number), .skipped = 0};
    return {.id = std::numeric_limits<std::int64_t>::min(), .skipped = number - 1};
}

Append::Append(Connection& connection, const Table& table) : connection_(connection), table_(table) {
    if (connection.IsNew()) return;
    const auto known = AllKnown().find({connection.File().Identity(), table.name});
    may_extend_ =
        known != AllKnown().end() && !connection.IsInTransaction() && known->second.stamp == StampOf(connection.File());
}

void Append::Stored(std::int64_t id, const std::vector<Text>& row) {
    if (!may_extend_) return;
    Known& known = AllKnown().at({connection_.File().Identity(), table_.name});
    const Stamp stamp = StampOf(connection_.File());
    if (!IsNextOf(known.stamp, stamp)) return;
    known.stamp = stamp;
    for (auto& [column, numbering] : known.columns) {
        const Text& text = row[table_.ColumnIndex(column)];
        const bool is_behind = numbering.count == 0 || id > numbering.last_id;
        numbering.is_proven = numbering.is_proven && is_behind && text && Is(*text, numbering.count + 1);
        if (!numbering.is_proven) continue;
        numbering.last_id = id;
        if (++numbering.count == 1) numbering.first_id = id;
    }
}

std::int64_t ScanCount() { return scan_count; }

}  // namespace vantrel::engine
