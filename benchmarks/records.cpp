// The record store against the bare database library with the same promises.
#include "against_limit.h"
#include "platform/dbengine.h"
#include "platform/files.h"
#include "records/record_store.h"
#include "support/temp_folder.h"

#include <cstdint>
#include <sqlite3.h>
#include <string>

namespace vantrel {
namespace {

constexpr int kColumns = 22;
const std::string kReading = "+1.25009179E+00";

/// A database of its own, with a row as wide as a record's.
class BareDatabase {
public:
    explicit BareDatabase(const std::string& path) {
        sqlite3_open(path.c_str(), &database_);
        Do("PRAGMA journal_mode=DELETE; PRAGMA synchronous=EXTRA");
        std::string columns = "c0 TEXT";
        std::string values = "?";
        for (int i = 1; i < kColumns; ++i) {
            columns += ", c" + std::to_string(i) + " TEXT";
            values += ", ?";
        }
        Do("CREATE TABLE data (" + columns + ")");
        sqlite3_prepare_v2(database_, ("INSERT INTO data VALUES (" + values + ")").c_str(), -1, &insert_, nullptr);
    }
    ~BareDatabase() {
        sqlite3_finalize(insert_);
        sqlite3_close(database_);
    }
    BareDatabase(const BareDatabase&) = delete;
    BareDatabase& operator=(const BareDatabase&) = delete;

    void Do(const std::string& sql) { sqlite3_exec(database_, sql.c_str(), nullptr, nullptr, nullptr); }

    void Insert(int number) {
        const std::string text = std::to_string(number);
        sqlite3_bind_text(insert_, 1, text.c_str(), -1, SQLITE_TRANSIENT);
        for (int i = 2; i <= kColumns; ++i) sqlite3_bind_text(insert_, i, kReading.c_str(), -1, SQLITE_STATIC);
        sqlite3_step(insert_);
        sqlite3_reset(insert_);
    }

    void ReadAll() {
        sqlite3_stmt* select = nullptr;
        sqlite3_prepare_v2(database_, "SELECT c0 FROM data", -1, &select, nullptr);
        while (sqlite3_step(select) == SQLITE_ROW) benchmark::DoNotOptimize(sqlite3_column_text(select, 0));
        sqlite3_finalize(select);
    }

private:
    sqlite3* database_ = nullptr;
    sqlite3_stmt* insert_ = nullptr;
};

Recordset NewRecord(Database& database, const std::string& path) {
    database = TheDBEngine().CreateDatabase(path, "", 2);
    TableDef table;
    table.Name = "DATA";
    table.Fields.Append({"NUM", kDbText});
    table.Fields.Append({"Time", kDbText});
    for (int i = 1; i <= 20; ++i) table.Fields.Append({"Ch" + std::to_string(i), kDbText});
    database.AppendTableDef(table);
    database.Close();
    database = TheDBEngine().OpenDatabase(path);
    return database.OpenRecordset("select * from data");
}

void Append(Recordset& rows, int number) {
    rows.AddNew();
    rows.Set("num", static_cast<double>(number));
    rows.Set("Time", Now());
    for (int i = 1; i <= 20; ++i) rows.Set("CH" + std::to_string(i), kReading);
    rows.Update();
}

/// A scan on its way to the disk. The limit: the same row in one durable commit.
void AppendOneRow(benchmark::State& state) {
    const TempFolder folder;
    Database database;
    Recordset rows = NewRecord(database, folder / "record.mdb");
    BareDatabase bare(folder / "bare.db");
    int number = 0;
    AgainstLimit(
        state, [&] { Append(rows, ++number); }, [&] { bare.Insert(number); });
    database.Close();
}
BENCHMARK(AppendOneRow)->UseManualTime()->Unit(benchmark::kMicrosecond);

/// The walk over a record at Start, with nothing to mend. The limit: reading every number once.
void RenumberAtStart(benchmark::State& state) {
    const TempFolder folder;
    const int count = static_cast<int>(state.range(0));
    Database database;
    Recordset rows = NewRecord(database, folder / "record.mdb");
    BareDatabase bare(folder / "bare.db");
    bare.Do("BEGIN");
    {
        Database::Transaction filling(database);
        for (int i = 1; i <= count; ++i) {
            Append(rows, i);
            bare.Insert(i);
        }
        filling.Commit();
    }
    bare.Do("COMMIT");
    AgainstLimit(
        state,
        [&] {
            Recordset rows_at_start = database.OpenRecordset("select * from data");
            Database::Transaction walk(database);
            Renumber<std::int16_t>(rows_at_start);
            walk.Commit();
        },
        [&] { bare.ReadAll(); });
    database.Close();
}
BENCHMARK(RenumberAtStart)->Arg(1000)->Arg(32767)->UseManualTime()->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace vantrel

BENCHMARK_MAIN();
