// The database engine behind the record files: one SQLite file a record, tables of text columns.
// Every fault is a RunTimeError with the engine's number (3000 and up).
#pragma once

#include "platform/clock.h"
#include "platform/numbers.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace vantrel {

inline constexpr int kDbText = 10;  ///< Field.Type of a text column; holds up to 255 characters

/// What is written to a text column: a text as it stands, a number in its shortest decimal form, a date in the one
/// date text.
using FieldInput = std::variant<std::string, double, DateTime>;

/// A column: of a table that is being described, or of the current row of a recordset.
struct Field {
    std::string Name;
    int Type = kDbText;
};

/// The description of a table, complete before it is appended to a database.
struct TableDef {
    class FieldList {
    public:
        void Append(const Field& field) { fields_.push_back(field); }
        const std::vector<Field>& All() const { return fields_; }

    private:
        std::vector<Field> fields_;
    };
    std::string Name;
    FieldList Fields;
};

namespace engine {
struct Connection;
struct Rows;
}  // namespace engine

/// A walk over rows: those that are there when it is opened and those that it adds, in stored order, each row read when
/// it is reached. Stands on the first row at first. A row that someone else deletes meanwhile is stepped over. Holds no
/// lock between two calls. Column names are matched without regard to case. Copies share the one position, as handles
/// do. Used after its database's Close: error 3420.
class Recordset {
public:
    Recordset() = default;
    explicit Recordset(std::shared_ptr<engine::Rows> rows) : rows_(std::move(rows)) {}

    /// True once it has been opened, whatever became of it.
    bool IsSet() const { return rows_ != nullptr; }

    /// Rows reached so far: 0 for an empty set, at least 1 for any other, the true number after MoveLast. Rows that
    /// this recordset deleted do not count.
    std::int64_t RecordCount() const;
    /// Both are true of an empty set; Eof also behind the last row.
    bool Bof() const;
    bool Eof() const;
    /// Error 3021 where there is no row to move to; MoveNext from the last row goes behind it, and fails only from
    /// there.
    void MoveFirst();
    void MoveNext();
    void MoveLast();

    /// Starts a new row; its columns are Null until set. Update stores it behind all rows; the current row stays the
    /// same. A move without Update drops the new row.
    void AddNew();
    /// Starts a change of the current row (else error 3021). A move without Update drops the change.
    void Edit();
    /// Stores the new or changed row: one durable commit, on disk when it returns (inside a Transaction: at its end; in
    /// a new database: at its Close).
    /// Without AddNew or Edit: error 3020. Full disk: 3026. Locked by another for more than 2 s: 3260. Only the columns
    /// that were set are written to a changed row; if someone else has deleted it meanwhile: 3021.
    void Update(int update_type = 1, bool force = false);
    /// Removes the current row (else error 3021). The set stands on no row until the next move.
    void Delete();

    /// Numbers the rows of the table 1, 2, 3 ... in stored order, as a walk over them would: a row with Null in
    /// `column` is removed, a text that is the row's number, however it is written, stays as it is, any other is
    /// replaced. A text that is not a number: error 13; more than `most` rows: error 6; what the walk did before it
    /// stays done. The set is then all rows, those too that others have added meanwhile, and stands behind the last. To
    /// be called inside a Transaction. Rows that are right already are not touched, and it costs one reading of the
    /// column, or nothing as long as the file has not changed since the last one.
    void Renumber(const std::string& column, std::int64_t most);
    /// Reads `columns` of the table's rows in one go, in stored order, from row number `first` on, counted from 1,
    /// until `visit` returns false. The current row stays the same.
    using Visit = std::function<bool(const std::vector<std::optional<std::string>>& texts)>;
    void Scan(std::int64_t first, const std::vector<std::string>& columns, const Visit& visit) const;

    /// The column of the row on hand; nullopt for Null. Error 3265 for no such column, 3021 for no current row.
    std::optional<std::string> Value(const std::string& column) const;
    /// As Value, as text: Null raises error 94.
    std::string Text(const std::string& column) const;
    /// Sets a column of the row being added or edited (else error 3020). Over 255 characters: error 3163.
    void Set(const std::string& column, const FieldInput& value);

private:
    std::shared_ptr<engine::Rows> rows_;
};

/// An open record. Copies share the one connection. A default-made one is closed.
class Database {
public:
    Database() = default;
    explicit Database(std::shared_ptr<engine::Connection> connection) : connection_(std::move(connection)) {}

    /// Adds a table (`database.TableDefs.Append(table)`, said in one call). One of that name exists: error 3010. A
    /// field that is not text: 3259.
    void AppendTableDef(const TableDef& table);
    /// `source`: "select * from <table>" or the same with "where <column>='<text>'"; any case and spacing;
    /// else error 3075. No such table: 3078, no such column: 3265. A row of a column that numbers the rows 1, 2, 3 ...
    /// is found without a scan.
    Recordset OpenRecordset(const std::string& source);
    /// The same with only `columns` of the rows, or none at all. No such column: 3265.
    Recordset OpenRecordset(const std::string& source, const std::vector<std::string>& columns);
    /// Ends the access (an open Transaction is committed first); the database's recordsets end with it. A new database
    /// comes into being: see CreateDatabase. Closing a closed one does nothing; using it raises 3420.
    void Close();

    /// While it lives, all writes on the database are one durable commit, made when it goes (also when an error
    /// unwinds it: what was written stays written). Reading inside it is one consistent picture, and nobody else
    /// writes. Another does for more than 2 s: error 3260.
    class Transaction {
    public:
        explicit Transaction(const Database& database);
        ~Transaction();
        Transaction(const Transaction&) = delete;
        Transaction& operator=(const Transaction&) = delete;
        /// Commits now and raises what goes wrong with it. Called at the regular end; the destructor then does nothing.
        void Commit();
        /// Takes back what was written since it began. The destructor then does nothing.
        void Undo();

    private:
        std::shared_ptr<engine::Connection> connection_;
    };

private:
    std::shared_ptr<engine::Connection> connection_;
};

class DBEngine {
public:
    /// A new database (`locale` and `option` have no use here). It comes into being at its Close, whole and on the disk
    /// with all that was written to it until then; nobody else sees it before, and without Close it never is. A file
    /// that exists, or that another program is just making: error 3204. A missing folder: 3044. A name that no file can
    /// have: 3055. Not permitted: 3051. Each of them, and a full disk (3026), may also be raised by Close; then there
    /// is not a file.
    Database CreateDatabase(const std::string& path, const std::string& locale, int option);
    /// Opens an existing file, shared and writable. Missing: 3024. No database (an empty file is none): 3343, and the
    /// file stays as it was. A folder, or file or folder not writable: 3051. Being deleted: 3045. Locked: 3260.
    Database OpenDatabase(const std::string& path, bool options = false, bool read_only = false,
                          const std::string& connect = "");
};

/// The one engine object, made when first needed and kept for the life of the program.
DBEngine& TheDBEngine();

}  // namespace vantrel
