#include "records/record_store.h"

#include "state/shared.h"

#include <cstdint>

namespace vantrel {

namespace {

constexpr int kColumns = 2 + kChannels;
constexpr const char* kLocale = ";LANGID=0x0409;CP=1252;COUNTRY=0";
constexpr int kEncrypt = 2;

std::string ColumnName(int index) {
    if (index == 0) return "NUM";
    if (index == 1) return "Time";
    return "Ch" + Str(index - 1);
}

}  // namespace

void CreateRecord(Integer device) {
    if (!HasRecord(device)) return;
    RecordPath(device) = RecordFilePath(RecordName(device));
    if (FileExists(RecordPath(device))) return;  // Kept: K-any-file
    Database database = TheDBEngine().CreateDatabase(RecordPath(device), kLocale, kEncrypt);
    TableDef table;
    table.Name = "DATA";
    for (const Integer index : Each(kColumns)) table.Fields.Append({ColumnName(index), kDbText});
    database.AppendTableDef(table);
    database.Close();
}

void OpenRecord(Integer device) {
    RecordDb(device) = TheDBEngine().OpenDatabase(RecordPath(device));
    RecordRs(device) = RecordDb(device).OpenRecordset("select * from data");
    Recordset& rows = RecordRs(device);
    if (rows.RecordCount() != 0) {
        Database::Transaction walk(RecordDb(device));
        Renumber<std::int16_t>(rows);  // Kept: K-32767-rows
        walk.Commit();
    }
    if (rows.RecordCount() == 0) {
        RecordBase(device) = 0;
    } else {
        rows.MoveLast();
        RecordBase(device) = static_cast<double>(rows.RecordCount());
    }
}

void RequireRecordColumns(const Recordset& rows) {
    for (const Integer index : Each(kColumns)) rows.Value(ColumnName(index));
}

void CloseRecord(Integer device) { RecordDb(device).Close(); }

}  // namespace vantrel
