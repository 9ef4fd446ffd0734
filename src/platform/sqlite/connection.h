// One open database file, its prepared statements, and the engine's faults as run-time errors.
#pragma once

#include "platform/open_file.h"
#include "platform/os/new_file.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <sqlite3.h>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vantrel::engine {

using Text = std::optional<std::string>;  // nullopt is Null

/// Equal but for the case of the letters A to Z.
bool SameName(std::string_view a, std::string_view b);

/// `name` as SQL writes a name: in double quotes.
std::string Quoted(std::string_view name);

/// A table as it stands in the file, and the statements that its rows are read and added with.
struct Table {
    std::string name;
    std::vector<std::string> columns;
    std::string first_row;  ///< row id and all columns of the first row with an id from ?1 to ?2
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
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    void Bind(int parameter, std::int64_t value);
    /// `value` must live until the statement is done.
    void Bind(int parameter, const Text& value);
    /// Back to before the first result row.
    void Reset() { sqlite3_reset(statement_); }
    /// Runs to the next result row. False when there is none left.
    bool Step();

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
    bool HasUncommittedChanges() const { return sqlite3_txn_state(database_, nullptr) == SQLITE_TXN_WRITE; }
    /// Undoes an open transaction. Never raises.
    void Rollback() noexcept;
    /// Not for a new database.
    const OpenFile& File() const { return *file_; }
    bool IsNew() const { return new_file_ != nullptr; }

    bool HasTable(std::string_view name);
    /// The table of that name, whatever its case. Error 3078 for none.
    std::shared_ptr<const Table> FindTable(std::string_view name);

private:
    /// Its name as it stands in the file; Null for no such table.
    Text StoredName(std::string_view name);
    void CheckFormat(const std::string& path) const;
    void Open(const std::string& file);
    void Configure();

    std::shared_ptr<OpenFile> file_;
    std::string new_path_;
    std::unique_ptr<os::NewFile> new_file_;
    sqlite3* database_ = nullptr;
    std::unordered_map<std::string, sqlite3_stmt*> statements_;
    std::vector<std::shared_ptr<const Table>> tables_;
};

/// Raises what stands against making a database: exists 3204, no folder 3044, no name 3055, full disk 3026, not
/// permitted 3051, anything else 3000.
void RequireMade(os::Fault fault);

/// Several reads as one consistent picture. Part of the transaction that is open already, if one is.
class ReadScope {
public:
    explicit ReadScope(Connection& connection);
    ~ReadScope();
    ReadScope(const ReadScope&) = delete;
    ReadScope& operator=(const ReadScope&) = delete;

private:
    Connection* connection_ = nullptr;
};

}  // namespace vantrel::engine
