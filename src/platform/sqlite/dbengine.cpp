#include "platform/dbengine.h"

#include "platform/sqlite/rows.h"

#include <filesystem>

namespace vantrel {

namespace {

template <class T>
T& Opened(const std::shared_ptr<T>& object) {
    if (object == nullptr) throw RunTimeError(kObjectClosed);
    return *object;
}

std::string TextOf(const FieldInput& value) {
    if (const auto* number = std::get_if<double>(&value)) return Str(*number);
    if (const auto* date = std::get_if<DateTime>(&value)) return DateText(*date);
    return std::get<std::string>(value);
}

void CheckFileName(const std::string& path) {
    const std::string name = os::TextOf(os::PathOf(path).filename());
    const bool is_a_name = !name.empty() && name != "." && name != ".." && path.find('\0') == std::string::npos;
    if (!is_a_name) throw RunTimeError(kNotAValidName);
}

}  // namespace

std::int64_t Recordset::RecordCount() const { return Opened(rows_).RecordCount(); }
bool Recordset::Bof() const { return Opened(rows_).Bof(); }
bool Recordset::Eof() const { return Opened(rows_).Eof(); }
void Recordset::MoveFirst() { Opened(rows_).MoveFirst(); }
void Recordset::MoveNext() { Opened(rows_).MoveNext(); }
void Recordset::MoveLast() { Opened(rows_).MoveLast(); }
void Recordset::AddNew() { Opened(rows_).AddNew(); }
void Recordset::Edit() { Opened(rows_).Edit(); }
void Recordset::Update(int, bool) { Opened(rows_).Update(); }
void Recordset::Delete() { Opened(rows_).Delete(); }

std::optional<std::string> Recordset::Value(const std::string& column) const { return Opened(rows_).Value(column); }

std::string Recordset::Text(const std::string& column) const {
    const std::optional<std::string>& value = Opened(rows_).Value(column);
    if (!value) throw RunTimeError(kInvalidNull);
    return *value;
}

void Recordset::Set(const std::string& column, const FieldInput& value) { Opened(rows_).Set(column, TextOf(value)); }

void Recordset::Renumber(const std::string& column, std::int64_t most) { Opened(rows_).Renumber(column, most); }

void Recordset::Scan(std::int64_t first, const std::vector<std::string>& columns, const Visit& visit) const {
    Opened(rows_).Scan(first, columns, visit);
}

void Database::AppendTableDef(const TableDef& table) {
    engine::Connection& connection = Opened(connection_);
    if (connection.HasTable(table.Name)) throw RunTimeError(kTableExists);
    std::string columns;
    for (const Field& field : table.Fields.All()) {
        if (field.Type != kDbText) throw RunTimeError(kFieldType);
        columns += (columns.empty() ? "" : ",") + engine::Quoted(field.Name) + " TEXT";
    }
    connection.Run("create table " + engine::Quoted(table.Name) + "(" + columns + ")");
}

Recordset Database::OpenRecordset(const std::string& source) {
    if (!Opened(connection_).IsOpen()) throw RunTimeError(kObjectClosed);
    return Recordset(std::make_shared<engine::Rows>(connection_, engine::ParseSource(source), std::nullopt));
}

Recordset Database::OpenRecordset(const std::string& source, const std::vector<std::string>& columns) {
    if (!Opened(connection_).IsOpen()) throw RunTimeError(kObjectClosed);
    return Recordset(std::make_shared<engine::Rows>(connection_, engine::ParseSource(source), columns));
}

void Database::Close() {
    if (connection_ != nullptr) connection_->Finish();
}

Database::Transaction::Transaction(const Database& database) {
    engine::Connection& connection = Opened(database.connection_);
    if (connection.IsInTransaction()) return;  // part of the one that is under way
    // With the lock for writing from the start: who took it behind a first reading could meet a program that waits for
    // the end of that reading, and would have to give up.
    connection.Begin("begin immediate");
    connection_ = database.connection_;
}

void Database::Transaction::Commit() {
    const auto connection = std::move(connection_);
    if (connection == nullptr || !connection->IsInTransaction()) return;
    try {
        connection->Commit();
    } catch (const RunTimeError&) {
        connection->Rollback();
        throw;
    }
}

void Database::Transaction::Undo() {
    const auto connection = std::move(connection_);
    if (connection != nullptr) connection->Rollback();
}

Database::Transaction::~Transaction() {
    try {
        Commit();
    } catch (const RunTimeError&) {
        // An error is unwinding already, or nobody is left to tell.
    }
}

Database DBEngine::CreateDatabase(const std::string& path, const std::string&, int) {
    CheckFileName(path);
    auto file = std::make_unique<os::NewFile>();
    engine::RequireMade(file->Begin(path));
    return Database(std::make_shared<engine::Connection>(path, std::move(file)));
}

Database DBEngine::OpenDatabase(const std::string& path, bool, bool, const std::string&) {
    return Database(std::make_shared<engine::Connection>(path));
}

DBEngine& TheDBEngine() {
    static DBEngine engine;
    return engine;
}

}  // namespace vantrel
