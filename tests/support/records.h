// Record files made by the program's own engine, for tests of what reads them.
#pragma once

#include "platform/clock.h"
#include "platform/dbengine.h"

#include <functional>
#include <string>

namespace vantrel {

/// The reading of channel `channel`, from 1, in row `row`, from 1, as a record holds it.
using ReadingOf = std::function<std::string(int row, int channel)>;

/// The time of row `row`, from 1, in a record that MakeRecord made: one second for each row, from
/// 2026-03-01 08:00:01 on.
inline std::string RowTime(int row) {
    constexpr int kMsPerSecond = 1000;
    return DateText({CDate("2026-03-01 08:00:00").ms + kMsPerSecond * row});
}

/// Makes a database without a table, and opens it.
inline Database NewDatabase(const std::string& path) {
    TheDBEngine().CreateDatabase(path, "", 0).Close();
    return TheDBEngine().OpenDatabase(path);
}

/// Makes the record file `path` with rows numbered from 1, in one commit.
inline void MakeRecord(
    const std::string& path, int rows, const ReadingOf& reading = [](int, int) { return " "; }) {
    constexpr int kChannelColumns = 20;
    Database database = TheDBEngine().CreateDatabase(path, "", 0);
    TableDef table;
    table.Name = "DATA";
    table.Fields.Append({"NUM"});
    table.Fields.Append({"Time"});
    for (int k = 1; k <= kChannelColumns; ++k) table.Fields.Append({"Ch" + std::to_string(k)});
    database.AppendTableDef(table);
    Recordset data = database.OpenRecordset("select * from data");
    Database::Transaction all(database);
    for (int row = 1; row <= rows; ++row) {
        data.AddNew();
        data.Set("NUM", std::to_string(row));
        data.Set("Time", RowTime(row));
        for (int k = 1; k <= kChannelColumns; ++k) data.Set("Ch" + std::to_string(k), reading(row, k));
        data.Update();
    }
    all.Commit();
    database.Close();
}

}  // namespace vantrel
