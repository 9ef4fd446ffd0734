// A stored row survives a power cut: what the engine has the disk write before Update returns. The deletion of a
// journal could not be brought to the disk here, so it is emptied.
#include "platform/dbengine.h"
#include "support/records.h"
#include "support/temp_folder.h"
#include "support/texts.h"

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <windows.h>

namespace vantrel {
namespace {

Texts calls;

std::string NameOf(HANDLE file) {
    wchar_t path[1024];
    GetFinalPathNameByHandleW(file, path, 1024, 0);
    return std::filesystem::path(path).filename().string();
}

BOOL WINAPI Flush(HANDLE file) {
    calls.push_back("flush " + NameOf(file));
    return FlushFileBuffers(file);
}

BOOL WINAPI Cut(HANDLE file) {
    calls.push_back("cut " + NameOf(file));
    return SetEndOfFile(file);
}

BOOL WINAPI Remove(const wchar_t* path) {
    calls.push_back("remove " + std::filesystem::path(path).filename().string());
    return DeleteFileW(path);
}

TEST(DurableCommit, Update_returns_once_the_record_and_then_the_end_of_its_journal_are_on_the_disk) {
    const TempFolder folder;
    MakeRecord(folder / "Record1.mdb", 1);
    Database database = TheDBEngine().OpenDatabase(folder / "Record1.mdb");
    Recordset rows = database.OpenRecordset("select * from data");
    sqlite3_vfs* const vfs = sqlite3_vfs_find(nullptr);
    vfs->xSetSystemCall(vfs, "FlushFileBuffers", reinterpret_cast<sqlite3_syscall_ptr>(Flush));
    vfs->xSetSystemCall(vfs, "SetEndOfFile", reinterpret_cast<sqlite3_syscall_ptr>(Cut));
    vfs->xSetSystemCall(vfs, "DeleteFileW", reinterpret_cast<sqlite3_syscall_ptr>(Remove));
    for (const char* number : {"2", "3"}) {
        calls.clear();
        rows.AddNew();
        rows.Set("NUM", number);
        rows.Update();

        ASSERT_GE(calls.size(), 4U);
        const Texts last(calls.end() - 4, calls.end());
        EXPECT_EQ(last, (Texts{"flush Record1.mdb-journal", "flush Record1.mdb", "cut Record1.mdb-journal",
                               "flush Record1.mdb-journal"}));
    }
}

}  // namespace
}  // namespace vantrel
