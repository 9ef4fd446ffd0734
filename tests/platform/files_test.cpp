#include "platform/files.h"

#include "platform/dbengine.h"
#include "support/child_process.h"
#include "support/errors.h"
#include "support/records.h"
#include "support/temp_folder.h"

#include <algorithm>
#include <dirent.h>
#include <filesystem>
#include <gtest/gtest.h>

namespace vantrel {
namespace {

TEST(AppPath, Is_the_folder_of_the_program_file) {
#ifdef _WIN32
    EXPECT_TRUE(FileExists(AppPath() + "/tests_platform.exe")) << AppPath();
#else
    EXPECT_EQ(AppPath(), std::filesystem::canonical("/proc/self/exe").parent_path().string());
#endif
}

TEST(AppPath, Can_be_another_folder_for_a_test) {
    UseAppPath("/somewhere");
    EXPECT_EQ(AppPath(), "/somewhere");
}

TEST(RecordFilePath, Leads_into_the_folder_db_of_the_program) {
    UseAppPath("/somewhere");
    EXPECT_EQ(RecordFilePath("Record3"), "/somewhere/db/Record3.mdb");
    EXPECT_EQ(RecordFilePath(" my Record.x "), "/somewhere/db/ my Record.x .mdb");
}

TEST(RecordFilePath, Refuses_a_name_that_could_lead_elsewhere) {
    for (const char* name : {"/Record", "Record/1", "../Record", "..\\Record", "Record\\1", "", ".", ".."})
        EXPECT_EQ(ErrorOf([&] { RecordFilePath(name); }), kNotAValidName) << name;
}

TEST(RecordFilePath, Refuses_characters_that_no_file_name_can_hold) {
    for (const char* name :
         {"Record\n", "Record:1", "Record*", "Record?", "Record\"", "<Record>", "Record|1", "\tRecord", "Record\x7f"})
        EXPECT_EQ(ErrorOf([&] { RecordFilePath(name); }), kNotAValidName) << name;
    EXPECT_EQ(ErrorOf([] { RecordFilePath(std::string("Record\0", 7)); }), kNotAValidName);
}

TEST(RecordFilePath, Takes_a_name_as_long_as_file_and_journal_can_have_and_no_longer) {
    const TempAppFolder folder;
    const std::string longest(243, 'R');
    Database database = NewDatabase(RecordFilePath(longest));
    TableDef table;
    table.Name = "DATA";
    table.Fields.Append({"NUM"});
    database.AppendTableDef(table);
    EXPECT_EQ(ErrorOf([&] { RecordFilePath(longest + "R"); }), kNotAValidName);
}

TEST(DbEntryPath, Leads_to_an_entry_of_the_folder_db_and_nowhere_else) {
    UseAppPath("/somewhere");
    EXPECT_EQ(DbEntryPath("Record3.mdb"), "/somewhere/db/Record3.mdb");
    for (const char* entry : {"../Record3.mdb", "x/Record3.mdb", "..\\Rec.mdb", "", ".", ".."})
        EXPECT_EQ(ErrorOf([&] { DbEntryPath(entry); }), kNotAValidName) << entry;
}

#ifndef _WIN32  // an entry cannot have such a name
TEST(DbEntryPath, Takes_any_other_name_that_an_entry_can_have) {
    UseAppPath("/somewhere");
    EXPECT_EQ(DbEntryPath(" my Rec:x.MDB "), "/somewhere/db/ my Rec:x.MDB ");
    EXPECT_EQ(DbEntryPath("..Rec"), "/somewhere/db/..Rec");
    EXPECT_EQ(ErrorOf([] { DbEntryPath(std::string(248, 'R')); }), kNotAValidName);
    EXPECT_EQ(ErrorOf([] { DbEntryPath(std::string("Rec\0.mdb", 8)); }), kNotAValidName);
}
#endif

TEST(DbEntries, Are_those_that_end_in_exactly_mdb_folders_and_hidden_files_among_them) {
    const TempAppFolder folder;
    for (const char* name : {"Record1.mdb", "x.mdb", ".mdb", ".Record2.mdb", "Record3.MDB", "Record4.Mdb", "Record5",
                             "Record6.mdb-journal", "Record7.mdb.bak", "Record8mdb"})
        WriteFileBytes((folder / "db/") + name, "");
    std::filesystem::create_directory(folder / "db/Folder.mdb");
    std::filesystem::create_directory(folder / "db/Sub");
    WriteFileBytes(folder / "db/Sub/Record9.mdb", "");
    std::vector<std::string> entries = DbEntries();
    std::ranges::sort(entries);
    EXPECT_EQ(entries, (std::vector<std::string>{".Record2.mdb", ".mdb", "Folder.mdb", "Record1.mdb", "x.mdb"}));
}

TEST(DbEntries, Come_in_the_order_in_which_the_system_lists_them) {
    const TempAppFolder folder;
    for (const char* name : {"m", "a", "z", "Q", "k", "b", "y", "R"})
        WriteFileBytes((folder / "db/") + name + ".mdb", "");
    std::vector<std::string> listed;
    DIR* const directory = opendir((folder / "db").c_str());
    while (const dirent* const entry = readdir(directory))
        if (entry->d_name[0] != '.') listed.emplace_back(entry->d_name);
    closedir(directory);
    EXPECT_EQ(DbEntries(), listed);
}

TEST(DbEntries, Are_none_where_the_folder_cannot_be_read) {
    const TempFolder folder;
    UseAppPath(folder.Path());
    EXPECT_TRUE(DbEntries().empty());
}

TEST(FileExists, Finds_files_of_any_kind) {
    const TempFolder folder;
    WriteFileBytes(folder / "plain", "x");
    WriteFileBytes(folder / ".hidden", "");
    WriteFileBytes(folder / "read-only", "x");
    std::filesystem::permissions(folder / "read-only", std::filesystem::perms::owner_read);
    EXPECT_TRUE(FileExists(folder / "plain"));
    EXPECT_TRUE(FileExists(folder / ".hidden"));
    EXPECT_TRUE(FileExists(folder / "read-only"));
}

TEST(FileExists, Takes_no_folder_and_no_missing_file_for_a_file) {
    const TempFolder folder;
    EXPECT_FALSE(FileExists(folder.Path()));
    EXPECT_FALSE(FileExists(folder / "missing"));
    EXPECT_FALSE(FileExists(folder / "missing/file"));
    EXPECT_FALSE(FileExists(""));
}

TEST(Kill, Deletes_a_file) {
    const TempFolder folder;
    WriteFileBytes(folder / "file", "x");
    Kill(folder / "file");
    EXPECT_FALSE(FileExists(folder / "file"));
}

TEST(Kill, Raises_error_53_for_a_missing_file) {
    const TempFolder folder;
    EXPECT_EQ(ErrorOf([&] { Kill(folder / "missing"); }), kFileNotFound);
}

TEST(Kill, Raises_error_53_for_a_folder_and_leaves_it) {
    const TempFolder folder;
    std::filesystem::create_directory(folder / "sub");
    EXPECT_EQ(ErrorOf([&] { Kill(folder / "sub"); }), kFileNotFound);
    EXPECT_TRUE(std::filesystem::is_directory(folder / "sub"));
}

TEST(Kill, Deletes_the_journal_beside_a_database_and_no_other_file) {
    const TempFolder folder;
    for (const char* name : {"Record1.mdb", "Record1.mdb-journal", "Record10.mdb-journal"})
        WriteFileBytes(folder / name, "x");
    Kill(folder / "Record1.mdb");
    EXPECT_FALSE(FileExists(folder / "Record1.mdb-journal"));
    EXPECT_TRUE(FileExists(folder / "Record10.mdb-journal"));
}

TEST(Kill, Raises_error_70_while_this_program_has_the_database_open_and_leaves_the_file) {
    const TempFolder folder;
    Database database = NewDatabase(folder / "a.mdb");
    const std::string bytes = FileBytes(folder / "a.mdb");
    EXPECT_EQ(ErrorOf([&] { Kill(folder / "a.mdb"); }), kPermissionDenied);
    EXPECT_EQ(FileBytes(folder / "a.mdb"), bytes);
}

TEST(Kill, Raises_error_70_until_the_last_of_two_connections_is_closed) {
    const TempFolder folder;
    Database first = NewDatabase(folder / "a.mdb");
    Database second = TheDBEngine().OpenDatabase(folder / "a.mdb");
    first.Close();
    EXPECT_EQ(ErrorOf([&] { Kill(folder / "a.mdb"); }), kPermissionDenied);
    second.Close();
    Kill(folder / "a.mdb");
    EXPECT_FALSE(FileExists(folder / "a.mdb"));
}

TEST(Kill, Sees_through_another_path_to_an_open_database) {
    const TempFolder folder;
    const Database database = NewDatabase(folder / "a.mdb");
    EXPECT_EQ(ErrorOf([&] { Kill(folder.Path() + "/./a.mdb"); }), kPermissionDenied);
    EXPECT_TRUE(FileExists(folder / "a.mdb"));
}

#ifndef _WIN32  // a process cannot be forked
TEST(Kill, Raises_error_70_while_another_program_has_the_database_open_and_leaves_the_file) {
    const TempFolder folder;
    NewDatabase(folder / "a.mdb");
    ChildProcess other([&](const ChildProcess::Contact& test) {
        const Database database = TheDBEngine().OpenDatabase(folder / "a.mdb");
        test.Send();
        test.Await();
    });
    ASSERT_TRUE(other.Talk().Await());
    EXPECT_EQ(ErrorOf([&] { Kill(folder / "a.mdb"); }), kPermissionDenied);
    EXPECT_TRUE(FileExists(folder / "a.mdb"));

    other.Kill();
    Kill(folder / "a.mdb");
    EXPECT_FALSE(FileExists(folder / "a.mdb"));
}

TEST(Kill, That_was_refused_leaves_an_open_transaction_its_lock) {
    const TempFolder folder;
    Database database = NewDatabase(folder / "a.mdb");
    TableDef table;
    table.Name = "DATA";
    table.Fields.Append({"NUM"});
    Database::Transaction transaction(database);
    database.AppendTableDef(table);
    EXPECT_EQ(ErrorOf([&] { Kill(folder / "a.mdb"); }), kPermissionDenied);
    ChildProcess other([&](const ChildProcess::Contact&) {
        Database same = TheDBEngine().OpenDatabase(folder / "a.mdb");
        const int error = ErrorOf([&] { same.AppendTableDef(table); });
        if (error != kLockedByOther) throw std::runtime_error("the lock was gone");
    });
    EXPECT_EQ(other.End(), 0);
    transaction.Commit();
}
#endif

}  // namespace
}  // namespace vantrel
