// A stored row survives a power cut: what the engine has the disk write before Update returns.
#include "platform/dbengine.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <vector>

namespace {

std::vector<ino_t> synced;  // what the disk was made to write, in order

int Sync(long call, int descriptor) {
    struct stat status {};
    if (fstat(descriptor, &status) == 0) synced.push_back(status.st_ino);
    return static_cast<int>(syscall(call, descriptor));
}

ino_t FileOf(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? status.st_ino : 0;
}

}  // namespace

// Stand before the C library's, for the engine too.
extern "C" int fsync(int descriptor) { return Sync(SYS_fsync, descriptor); }
extern "C" int fdatasync(int descriptor) { return Sync(SYS_fdatasync, descriptor); }

namespace vantrel {

TEST(DurableCommit, Update_returns_once_the_record_and_then_the_end_of_its_journal_are_on_the_disk) {
    const TempFolder folder;
    const std::string path = folder / "Record1.mdb";
    Database database = TheDBEngine().CreateDatabase(path, ";LANGID=0x0409;CP=1252;COUNTRY=0", 2);
    TableDef table;
    table.Name = "DATA";
    table.Fields.Append({"NUM", kDbText});
    database.AppendTableDef(table);
    Recordset rows = database.OpenRecordset("select * from data");
    rows.AddNew();
    rows.Set("NUM", "1");

    synced.clear();
    rows.Update();

    // The journal's name goes with its folder: only then is the row there for good.
    ASSERT_GE(synced.size(), 2U);
    EXPECT_EQ(synced[synced.size() - 2], FileOf(path));
    EXPECT_EQ(synced.back(), FileOf(folder / ""));
}

}  // namespace vantrel
