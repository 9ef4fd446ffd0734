// One open database file, its prepared statements, and the engine's faults as run-time errors.
#pragma once

#include "platform/open_file.h"
#include "platform/os/new_file.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <sqlite3.h>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace vantrel::engine {

using Text = std::optional<std::string>;                      // nullopt is Null
using ColumnNames = std::optional<std::vector<std::string>>;  // nullopt is all columns

/// Equal but for the case of the letters A to Z.
bool SameName(std::string_view a, std::string_view b);

/// `name` as SQL writes a name: in double quotes.
std::string Quoted(std::string_view name);

/// A table, or some columns of it, and the statements that its rows are read and added with.
struct Table {
    std::string name;    ///< in small letters
    ColumnNames wanted;  ///< the columns that were asked for
    std::vector<std::string> columns;
    std::string first_row;  ///< row id and columns of the first row with an id from ?1 to ?2
    std::string last_row;   ///< the same of the last row
    std::string add_row;    ///< ?1, ?2 ... are the columns

    /// The index of a column, whatever its case. Error 3265 for none.
    std::size_t ColumnIndex(std::string_view column) const;
};

/// A prepared statement on loan from its connection. Goes back, and with it every lock that it took, at the end of the
/// scope.
class Statement {
public:
    explicit Statement(sqlite3_stmt* statement) : statement_(statement) {}
    Statement(Statement&& other) noexcept : statement_(std::exchange(other.statement_, nullptr)) {}
    Statement& operator=(Statement&&) = delete;
    ~Statement();

    void Bind(int parameter, std::int64_t value);
    /// `value` must live until the statement is done.
    void Bind(int parameter, const Text& value);
    /// An object of ours, which a function of ours knows by the name of its kind.
    void Bind(int parameter, void* object, const char* kind);
    /// Back to before the first result row.
    void Reset() { sqlite3_reset(statement_); }
    /// Runs to the next result row. False when there is none left.
    bool Step();

    int ColumnCount() const { return sqlite3_column_count(statement_); }
    std::string ColumnName(int column) const { return sqlite3_column_name(statement_, column); }
    std::int64_t Int(int column) const { return sqlite3_column_int64(statement_, column); }
    bool IsNull(int column) const { return sqlite3_column_type(statement_, column) == SQLITE_NULL; }
    bool IsText(int column) const { return sqlite3_column_type(statement_, column) == SQLITE_TEXT; }
    /// Valid until the next step. Empty for Null.
    std::string_view View(int column) const;
    void Read(int column, Text* value) const;

private:
    sqlite3_stmt* statement_;
};

struct Connection {
public:
    /// Opens the database at `path`.
    explicit Connection(const std::string& path);
    /// A new database, in memory until Finish gives it `file`, the one that was begun for `path`.
    Connection(const std::string& path, std::unique_ptr<os::NewFile> file);
    ~Connection() { Close(); }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Ends the access. What an open transaction wrote is committed. A new database is gone.
    void Close() noexcept;
    /// As Close, but a new database comes into being with all that it holds, on the disk when this returns. What stands
    /// against it is raised, and then there is no file.
    void Finish();
    /// The statement for `sql`, prepared once. Error 3420 after Close.
    Statement Prepare(const std::string& sql);
    void Run(const std::string& sql) { Prepare(sql).Step(); }
    /// Rows changed by the last statement.
    int Changes() const { return sqlite3_changes(database_); }
    std::int64_t LastRowId() const { return sqlite3_last_insert_rowid(database_); }

    bool IsOpen() const { return database_ != nullptr; }
    bool IsInTransaction() const { return IsOpen() && sqlite3_get_autocommit(database_) == 0; }
    /// True while what this connection reads stands still: in a transaction that has begun to read, or in a ReadScope.
    bool IsReading() const { return sqlite3_txn_state(database_, nullptr) != SQLITE_TXN_NONE; }
    /// `begin`: the statement that begins it.
    void Begin(const std::string& begin);
    void Commit();
    /// Has `action` done right behind the commit of the open transaction. Not if it is undone.
    void OnCommit(std::function<void()> action) { on_commit_ = std::move(action); }
    /// True once a row has been changed in the open transaction.
    bool HasUncommittedChanges() const { return IsInTransaction() && TotalChanges() != changes_before_; }
    /// Rows changed so far, by all statements.
    int TotalChanges() const { return sqlite3_total_changes(database_); }
    /// True while the file stands for what this connection reads: it has its name, and no change waits for a commit.
    bool IsAsStored() const { return !IsNew() && !HasUncommittedChanges(); }
    /// Lets statements call a function of ours.
    void AddFunction(const char* name, int arguments, void (*function)(sqlite3_context*, int, sqlite3_value**));
    /// Undoes an open transaction. Never raises.
    void Rollback() noexcept;
    /// Not for a new database.
    const OpenFile& File() const { return *file_; }
    bool IsNew() const { return new_file_ != nullptr; }

    bool HasTable(const std::string& name);
    /// The table of that name, whatever its case, or the `wanted` ones of its columns. Error 3078 for no such table,
    /// 3265 for no such column.
    std::shared_ptr<const Table> FindTable(const std::string& name, const ColumnNames& wanted);

private:
    /// Column `column` of a table; the table itself for nullptr.
    bool Has(const std::string& table, const char* column);
    /// Returns the file's header.
    std::string CheckFormat(const std::string& path) const;
    void Open(const std::string& file);
    void Configure(std::string_view header);

    std::shared_ptr<OpenFile> file_;
    std::string path_;  // of the file itself, as the engine takes it; of a new one, where it is to lie
    std::unique_ptr<os::NewFile> new_file_;
    sqlite3* database_ = nullptr;
    int changes_before_ = 0;  // of the open transaction
    std::function<void()> on_commit_;
    std::unordered_map<std::string, sqlite3_stmt*> statements_;
    std::vector<std::shared_ptr<const Table>> tables_;
};

/// Raises what stands against making a database: exists 3204, no folder 3044, no name 3055, full disk 3026, not
/// permitted 3051, anything else 3000.
void RequireMade(os::Fault fault);

/// Several reads as one consistent picture, during which nobody else changes the file. Part of the transaction or the
/// scope that is open already, if one is.
class ReadScope {
public:
    explicit ReadScope(Connection& connection);

private:
    std::optional<Statement> reading_;  // holds the lock for as long as it is not done
};

}  // namespace vantrel::engine
