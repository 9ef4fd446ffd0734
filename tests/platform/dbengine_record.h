// Records that the tests of the database engine work on.
#pragma once

#include "platform/dbengine.h"
#include "platform/sqlite/numbering.h"
#include "support/temp_folder.h"
#include "support/texts.h"

#include <cerrno>
#include <gtest/gtest.h>

namespace vantrel {

inline TableDef DataTable() {
    TableDef table;
    table.Name = "DATA";
    table.Fields.Append({"NUM", kDbText});
    table.Fields.Append({"Time", kDbText});
    table.Fields.Append({"Ch1", kDbText});
    return table;
}

/// Rows with these texts in NUM; an empty one stays Null.
inline void AddRows(Database& database, const Texts& numbers) {
    Database::Transaction all(database);
    Recordset rows = database.OpenRecordset("select * from data");
    for (const std::string& number : numbers) {
        rows.AddNew();
        if (!number.empty()) rows.Set("NUM", number);
        rows.Set("Ch1", "reading " + number);
        rows.Update();
    }
    all.Commit();
}

inline Texts Walk(Recordset rows, const std::string& column = "num") {
    Texts texts;
    if (rows.RecordCount() == 0) return texts;
    for (rows.MoveFirst(); !rows.Eof(); rows.MoveNext()) texts.push_back(rows.Value(column).value_or("Null"));
    return texts;
}

// The engine's call that writes, and why it may find no room: a full disk and, where the engine keeps the cause, a
// used-up share of it and a file too large.
#ifdef _WIN32
inline constexpr const char* kWritingCall = "WriteFile";
inline constexpr int kFull = 112;
#else
inline constexpr const char* kWritingCall = "pwrite64";
inline constexpr int kFull = ENOSPC;
inline constexpr int kShareUsedUp = EDQUOT;
inline constexpr int kTooLarge = EFBIG;
#endif

inline int cause_of_failed_write = 0;

#ifdef _WIN32
extern "C" __declspec(dllimport) void __stdcall SetLastError(unsigned long error);

inline int __stdcall WriteNothing(void*, const void*, unsigned long, unsigned long*, void*) {
    SetLastError(static_cast<unsigned long>(cause_of_failed_write));
    return 0;
}
#else
inline ssize_t WriteNothing(int, const void*, size_t, off_t) {
    errno = cause_of_failed_write;
    return -1;
}
#endif

/// While it lives, every write of the engine meets a full disk.
class FullDisk {
public:
    explicit FullDisk(int cause = kFull) {
        cause_of_failed_write = cause;
        SetWrite(reinterpret_cast<sqlite3_syscall_ptr>(WriteNothing));
    }
    ~FullDisk() { SetWrite(nullptr); }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    static void SetWrite(sqlite3_syscall_ptr write) {
        sqlite3_vfs* const vfs = sqlite3_vfs_find(nullptr);
        if (vfs->xSetSystemCall(vfs, kWritingCall, write) != SQLITE_OK) throw std::runtime_error("no such system call");
    }
};

/// A record with an empty table DATA, open.
class Record : public testing::Test {
protected:
    Record() {
        database = TheDBEngine().CreateDatabase(path, ";LANGID=0x0409;CP=1252;COUNTRY=0", 2);
        database.AppendTableDef(DataTable());
        database.Close();
        database = TheDBEngine().OpenDatabase(path);
    }

    Recordset All() { return database.OpenRecordset("select * from data"); }
    Recordset Find(const std::string& number) {
        return database.OpenRecordset("select * from data  where NUM='" + number + "'");
    }
    Texts Stored() { return Walk(TheDBEngine().OpenDatabase(path).OpenRecordset("select * from data")); }
    void Delete(const std::string& number) { Find(number).Delete(); }

    TempFolder folder;
    std::string path = folder / "Record1.mdb";
    Database database;
};

}  // namespace vantrel
