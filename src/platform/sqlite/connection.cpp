#include "platform/sqlite/connection.h"

#include "platform/clock.h"
#include "platform/errors.h"
#include "platform/files.h"

#include <algorithm>
#include <iterator>

namespace vantrel::engine {

namespace {

constexpr int kBusyStepMs = 10;
constexpr int kBusySteps = 200;  // 2 s in all
constexpr const char* kAnyTable = "select 1 from sqlite_master";

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

int ErrorNumberOf(int code) {
    switch (code & 0xff) {
        case SQLITE_FULL:
            return kEngineFull;
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return kLockedByOther;
        case SQLITE_NOTADB:
        case SQLITE_CORRUPT:
            return kNotADatabase;
        case SQLITE_READONLY:
        case SQLITE_PERM:
            return kReadOnly;
        case SQLITE_CANTOPEN:
            return kNoPermission;
        default:
            return kEngineOther;
    }
}

void Check(int code) {
    if (code != SQLITE_OK) throw RunTimeError(ErrorNumberOf(code));
}

/// The engine knows of a full disk and not of a user's share of it.
bool IsShareUsedUp(int code, sqlite3* database) {
    return (code & 0xff) == SQLITE_IOERR && os::FaultOf(sqlite3_system_errno(database)) == os::Fault::kFull;
}

/// The size of a database's pages in bytes, from its header.
std::int64_t PageSize(std::string_view header) {
    constexpr std::size_t kOffset = 16;
    constexpr std::int64_t kLargest = 65536;  // does not fit into its two bytes and is written as 1
    const auto byte = [&](std::size_t i) { return static_cast<std::int64_t>(static_cast<unsigned char>(header[i])); };
    const std::int64_t size = byte(kOffset) * 256 + byte(kOffset + 1);
    return size <= 1 ? kLargest : size;
}

/// True of a file that another program left with a write-ahead log; all others have a journal that is deleted.
bool HasWriteAheadLog(std::string_view header) {
    constexpr std::size_t kReadVersionOffset = 19;
    constexpr char kWriteAheadLog = 2;
    return header[kReadVersionOffset] == kWriteAheadLog;
}

/// The engine's way to files: the one for paths of any length where there are two, as on Windows; nullptr is the only
/// one.
const char* FileSystem() {
    constexpr const char* kForLongPaths = "win32-longpath";
    return sqlite3_vfs_find(kForLongPaths) != nullptr ? kForLongPaths : nullptr;
}

/// Called while another has the file locked: nonzero to try again.
int WaitForLock(void*, int tries) {
    if (tries >= kBusySteps) return 0;
    Sleep(kBusyStepMs);
    return 1;
}

}  // namespace

bool SameName(std::string_view a, std::string_view b) { return std::ranges::equal(a, b, {}, Lower, Lower); }

std::string Quoted(std::string_view name) {
    std::string quoted = "\"";
    for (const char c : name) {
        if (c == '"') quoted += c;
        quoted += c;
    }
    return quoted + '"';
}

std::size_t Table::ColumnIndex(std::string_view column) const {
    const auto found = std::ranges::find_if(columns, [&](const std::string& known) { return SameName(known, column); });
    if (found == columns.end()) throw RunTimeError(kItemNotFound);
    return static_cast<std::size_t>(found - columns.begin());
}

Statement::~Statement() {
    if (statement_ == nullptr) return;
    sqlite3_reset(statement_);
    sqlite3_clear_bindings(statement_);
}

void Statement::Bind(int parameter, std::int64_t value) { sqlite3_bind_int64(statement_, parameter, value); }

void Statement::Bind(int parameter, const Text& value) {
    if (value)
        sqlite3_bind_text64(statement_, parameter, value->data(), value->size(), SQLITE_STATIC, SQLITE_UTF8);
    else
        sqlite3_bind_null(statement_, parameter);
}

void Statement::Bind(int parameter, void* object, const char* kind) {
    sqlite3_bind_pointer(statement_, parameter, object, kind, nullptr);
}

bool Statement::Step() {
    const int code = sqlite3_step(statement_);
    if (code == SQLITE_ROW) return true;
    if (code == SQLITE_DONE) return false;
    throw RunTimeError(IsShareUsedUp(code, sqlite3_db_handle(statement_)) ? kEngineFull : ErrorNumberOf(code));
}

std::string_view Statement::View(int column) const {
    const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
    if (text == nullptr) return {};
    return {text, static_cast<std::size_t>(sqlite3_column_bytes(statement_, column))};
}

void Statement::Read(int column, Text* value) const {
    if (IsNull(column)) {
        value->reset();
        return;
    }
    if (!*value) value->emplace();
    (*value)->assign(View(column));
}

Connection::Connection(const std::string& path) : file_(OpenFile::Hold(path)) {
    // The journal lies beside the file itself, whatever link leads to it.
    path_ = os::TruePath(path);
    if (path_.empty()) throw RunTimeError(kFileMissing);
    const std::string header = CheckFormat(path_);
    // Without the right to make a journal every write would fail later.
    if (!os::MayMakeFilesIn(os::FolderOf(path_))) throw RunTimeError(kNoPermission);
    try {
        Open(path_);
        if (sqlite3_db_readonly(database_, "main") != 0) throw RunTimeError(kNoPermission);
        Configure(header);
    } catch (...) {
        Close();
        throw;
    }
}

Connection::Connection(const std::string& path, std::unique_ptr<os::NewFile> file)
    : path_(path), new_file_(std::move(file)) {
    try {
        Open(":memory:");
        Run("pragma user_version=1");  // a database from the start, without any table too
    } catch (...) {
        Close();
        throw;
    }
}

void Connection::Open(const std::string& file) {
    constexpr int kForOneThread = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX;
    Check(sqlite3_open_v2(file.c_str(), &database_, kForOneThread, FileSystem()));
}

/// Looked at before the engine touches the file, since the engine takes an empty file for a database and may play a
/// journal back into any.
std::string Connection::CheckFormat(const std::string& path) const {
    constexpr std::string_view kMagic("SQLite format 3\0", 16);
    constexpr std::size_t kHeaderSize = 100;
    std::string header = file_->Read(0, kHeaderSize);
    if (header.size() < kHeaderSize || !header.starts_with(kMagic)) throw RunTimeError(kNotADatabase);
    // The engine misses whole pages by itself, but reads zeros where a part of the last one is missing. A journal tells
    // of a write that was broken off, which the engine takes back.
    const bool is_whole = file_->Stamp().size % PageSize(header) == 0;
    if (!is_whole && !FileExists(path + "-journal")) throw RunTimeError(kNotADatabase);
    return header;
}

void Connection::Configure(std::string_view header) {
    sqlite3_busy_handler(database_, WaitForLock, nullptr);
    sqlite3_db_config(database_, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    Prepare(kAnyTable);  // reads what tables there are; fails, and writes nothing, if the rest is not a database
    if (HasWriteAheadLog(header)) {
        Statement journal = Prepare("pragma journal_mode=delete");
        if (!journal.Step() || journal.View(0) != "delete") throw RunTimeError(kLockedByOther);
    }
    Run("pragma synchronous=extra");
    // Where the deletion of a journal cannot be brought to the disk, the journal is emptied at each commit.
    if (!os::CanSyncFolders()) Run("pragma journal_mode=truncate");
}

void Connection::Close() noexcept {
    if (database_ != nullptr) {
        if (IsInTransaction()) sqlite3_exec(database_, "commit", nullptr, nullptr, nullptr);
        for (const auto& [sql, statement] : statements_) sqlite3_finalize(statement);
        statements_.clear();
        sqlite3_close(database_);
        database_ = nullptr;
        if (!os::CanSyncFolders() && !IsNew()) DeleteEmptyJournal(path_);
    }
    file_.reset();
    new_file_.reset();
}

void Connection::Finish() {
    if (!IsNew()) return Close();
    if (IsInTransaction()) Run("commit");
    sqlite3_int64 size = 0;
    const std::unique_ptr<unsigned char, void (*)(void*)> bytes(sqlite3_serialize(database_, "main", &size, 0),
                                                                sqlite3_free);
    const std::unique_ptr<os::NewFile> file = std::move(new_file_);
    Close();
    if (bytes == nullptr) throw RunTimeError(kEngineOther);
    DeleteLeftovers(path_);  // of an earlier database of this name
    RequireMade(file->Finish({reinterpret_cast<const char*>(bytes.get()), static_cast<std::size_t>(size)}));
}

Statement Connection::Prepare(const std::string& sql) {
    if (!IsOpen()) throw RunTimeError(kObjectClosed);
    const auto known = statements_.find(sql);
    if (known != statements_.end()) return Statement(known->second);
    sqlite3_stmt* statement = nullptr;
    const int length = static_cast<int>(sql.size());
    Check(sqlite3_prepare_v3(database_, sql.data(), length, SQLITE_PREPARE_PERSISTENT, &statement, nullptr));
    statements_.emplace(sql, statement);
    return Statement(statement);
}

void Connection::Begin(const std::string& begin) {
    Run(begin);
    changes_before_ = TotalChanges();
    on_commit_ = nullptr;
}

void Connection::Commit() {
    Run("commit");
    if (const auto action = std::exchange(on_commit_, nullptr)) action();
}

void Connection::AddFunction(const char* name, int arguments,
                             void (*function)(sqlite3_context*, int, sqlite3_value**)) {
    Check(sqlite3_create_function(database_, name, arguments, SQLITE_UTF8, nullptr, function, nullptr, nullptr));
}

void Connection::Rollback() noexcept {
    if (IsInTransaction()) sqlite3_exec(database_, "rollback", nullptr, nullptr, nullptr);
}

bool Connection::Has(const std::string& table, const char* column) {
    const ReadScope schema_as_it_is_now(*this);
    return sqlite3_table_column_metadata(database_, "main", table.c_str(), column, nullptr, nullptr, nullptr, nullptr,
                                         nullptr) == SQLITE_OK;
}

bool Connection::HasTable(const std::string& name) { return Has(name, nullptr); }

std::shared_ptr<const Table> Connection::FindTable(const std::string& name, const ColumnNames& wanted) {
    for (const auto& table : tables_)
        if (SameName(table->name, name) && table->wanted == wanted) return table;

    if (!HasTable(name)) throw RunTimeError(kTableMissing);
    auto table = std::make_shared<Table>();
    std::ranges::transform(name, std::back_inserter(table->name), Lower);
    table->wanted = wanted;
    std::string names = wanted ? "" : ",*";
    for (const std::string& column : wanted.value_or(std::vector<std::string>{})) {
        if (!Has(name, column.c_str())) throw RunTimeError(kItemNotFound);
        names += "," + Quoted(column);
    }
    const std::string quoted = Quoted(table->name);
    const std::string rows =
        "select _rowid_" + names + " from " + quoted + " where _rowid_ between ?1 and ?2 order by _rowid_";
    table->first_row = rows + " limit 1";
    table->last_row = rows + " desc limit 1";
    const Statement described = Prepare(table->first_row);
    std::string columns;
    std::string places;
    for (int i = 1; i < described.ColumnCount(); ++i) {
        table->columns.push_back(described.ColumnName(i));
        const std::string comma = columns.empty() ? "" : ",";
        columns += comma + Quoted(table->columns.back());
        places += comma + "?" + std::to_string(i);
    }
    table->add_row = "insert into " + quoted + "(" + columns + ") values(" + places + ")";
    tables_.push_back(table);
    return table;
}

void RequireMade(os::Fault fault) {
    switch (fault) {
        case os::Fault::kNone:
            return;
        case os::Fault::kExists:
            throw RunTimeError(kFileExists);
        case os::Fault::kMissing:
            throw RunTimeError(kNotAValidPath);
        case os::Fault::kBadName:
            throw RunTimeError(kNotAValidName);
        case os::Fault::kFull:
            throw RunTimeError(kEngineFull);
        case os::Fault::kInUse:
        case os::Fault::kDenied:
            throw RunTimeError(kNoPermission);
        case os::Fault::kOther:
            throw RunTimeError(kEngineOther);
    }
}

ReadScope::ReadScope(Connection& connection) {
    if (connection.IsOpen() && connection.IsReading()) return;
    reading_.emplace(connection.Prepare(kAnyTable));
    reading_->Step();
}

}  // namespace vantrel::engine
