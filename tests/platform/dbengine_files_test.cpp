// Record files: making and opening them, tables and queries, closing.
#include "platform/dbengine_record.h"
#include "platform/files.h"
#include "support/anybody.h"
#include "support/child_process.h"
#include "support/errors.h"
#include "support/virtual_clock.h"

#include <filesystem>
#include <gtest/gtest.h>
#ifndef _WIN32
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#endif

namespace vantrel {
namespace {

// ---- Files

TEST_F(Record, Is_a_database_of_the_expected_format) { EXPECT_TRUE(FileBytes(path).starts_with("SQLite format 3")); }

TEST_F(Record, Cannot_be_made_where_a_file_stands_and_leaves_it_as_it_was) {
    WriteFileBytes(folder / "other.mdb", "text");
    EXPECT_EQ(ErrorOf([&] { TheDBEngine().CreateDatabase(folder / "other.mdb", "", 0); }), kFileExists);
    EXPECT_EQ(FileBytes(folder / "other.mdb"), "text");
    EXPECT_EQ(ErrorOf([&] { TheDBEngine().CreateDatabase(path, "", 0); }), kFileExists);
}

TEST(CreateDatabase, Raises_3044_in_a_missing_folder) {
    const TempFolder folder;
    EXPECT_EQ(ErrorOf([&] { TheDBEngine().CreateDatabase(folder / "db/a.mdb", "", 0); }), kNotAValidPath);
    EXPECT_FALSE(std::filesystem::exists(folder / "db"));
}

TEST(CreateDatabase, Raises_3055_for_what_can_be_no_file_name) {
    const TempFolder folder;
    for (const std::string& name :
         {std::string(""), std::string("."), std::string(".."), std::string(300, 'x'), std::string("a\0b", 3)})
        EXPECT_EQ(ErrorOf([&] { TheDBEngine().CreateDatabase(folder / name, "", 0); }), kNotAValidName) << name;
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST(CreateDatabase, Never_meets_a_journal_that_a_missing_record_left) {
    const TempFolder folder;
    WriteFileBytes(folder / "a.mdb-journal", "left over");
    Database database = TheDBEngine().CreateDatabase(folder / "a.mdb", "", 0);
    database.AppendTableDef(DataTable());
    database.Close();
    EXPECT_FALSE(FileExists(folder / "a.mdb-journal"));
    EXPECT_EQ(TheDBEngine().OpenDatabase(folder / "a.mdb").OpenRecordset("select * from data").RecordCount(), 0);
}

TEST(CreateDatabase, Makes_a_file_whose_path_names_no_folder_in_the_current_one) {
    const TempFolder folder;
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.Path());
    TheDBEngine().CreateDatabase("a.mdb", "", 0).Close();
    std::filesystem::current_path(before);
    EXPECT_TRUE(FileExists(folder / "a.mdb"));
}

TEST(CreateDatabase, Leaves_a_database_even_if_nothing_is_added) {
    const TempFolder folder;
    TheDBEngine().CreateDatabase(folder / "a.mdb", "", 0).Close();
    Database database = TheDBEngine().OpenDatabase(folder / "a.mdb");
    EXPECT_EQ(ErrorOf([&] { database.OpenRecordset("select * from data"); }), kTableMissing);
}

TEST(CreateDatabase, Shows_nobody_the_database_before_its_Close) {
    const TempAppFolder folder;
    Database database = TheDBEngine().CreateDatabase(folder / "db/a.mdb", "", 0);
    database.AppendTableDef(DataTable());
    EXPECT_FALSE(FileExists(folder / "db/a.mdb"));
    EXPECT_EQ(DbEntries(), Texts{});
    database.Close();
    EXPECT_EQ(DbEntries(), Texts{"a.mdb"});
}

TEST(CreateDatabase, Leaves_nothing_of_a_database_that_is_not_closed) {
    const TempFolder folder;
    {
        Database database = TheDBEngine().CreateDatabase(folder / "a.mdb", "", 0);
        database.AppendTableDef(DataTable());
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST(CreateDatabase, Keeps_what_was_written_before_its_Close) {
    const TempFolder folder;
    Database database = TheDBEngine().CreateDatabase(folder / "a.mdb", "", 0);
    database.AppendTableDef(DataTable());
    AddRows(database, {"1", "2", "3"});
    EXPECT_EQ(Walk(database.OpenRecordset("select * from data where num='2'")), Texts{"2"});
    const Database::Transaction open(database);
    AddRows(database, {"4"});
    database.Close();
    EXPECT_EQ(Walk(TheDBEngine().OpenDatabase(folder / "a.mdb").OpenRecordset("select * from data")), Counting(4));
}

TEST(CreateDatabase, Makes_the_same_file_as_the_engine_itself_could) {
    const TempFolder folder;
    Database database = TheDBEngine().CreateDatabase(folder / "a.mdb", "", 0);
    database.AppendTableDef(DataTable());
    database.Close();
    sqlite3* file = nullptr;
    ASSERT_EQ(sqlite3_open((folder / "a.mdb").c_str(), &file), SQLITE_OK);
    std::string verdict;
    sqlite3_exec(
        file, "pragma integrity_check",
        [](void* to, int, char** values, char**) {
            *static_cast<std::string*>(to) += values[0];
            return 0;
        },
        &verdict, nullptr);
    sqlite3_close(file);
    EXPECT_EQ(verdict, "ok");
}

TEST(CreateDatabase, Replaces_no_file_that_came_before_its_Close) {
    const TempFolder folder;
    Database database = TheDBEngine().CreateDatabase(folder / "a.mdb", "", 0);
    WriteFileBytes(folder / "a.mdb", "somebody else's");
    EXPECT_EQ(ErrorOf([&] { database.Close(); }), kFileExists);
    EXPECT_EQ(FileBytes(folder / "a.mdb"), "somebody else's");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
    EXPECT_EQ(ErrorOf([&] { database.OpenRecordset("select * from data"); }), kObjectClosed);
}

#ifndef _WIN32  // a process cannot be forked
TEST(CreateDatabase, Raises_3204_while_another_program_is_making_the_same) {
    const TempFolder folder;
    ChildProcess other([&](const ChildProcess::Contact& test) {
        Database database = TheDBEngine().CreateDatabase(folder / "a.mdb", "", 0);
        test.Send();
        test.Await();
        database.Close();
    });
    ASSERT_TRUE(other.Talk().Await());
    EXPECT_EQ(ErrorOf([&] { TheDBEngine().CreateDatabase(folder / "a.mdb", "", 0); }), kFileExists);
    EXPECT_EQ(ErrorOf([&] { TheDBEngine().CreateDatabase(folder / "b.mdb", "", 0); }), 0);
    other.Talk().Send();
    EXPECT_EQ(other.End(), 0);
    EXPECT_EQ(ErrorOf([&] { TheDBEngine().OpenDatabase(folder / "a.mdb"); }), 0);
}

TEST(CreateDatabase, Goes_on_from_what_a_killed_program_left) {
    const TempFolder folder;
    ChildProcess other([&](const ChildProcess::Contact& test) {
        const Database database = TheDBEngine().CreateDatabase(folder / "a.mdb", "", 0);
        test.Send();
        test.Await();
    });
    ASSERT_TRUE(other.Talk().Await());
    other.Kill();
    EXPECT_FALSE(std::filesystem::is_empty(folder.Path()));  // the leftover
    TheDBEngine().CreateDatabase(folder / "a.mdb", "", 0).Close();
    EXPECT_TRUE(FileExists(folder / "a.mdb"));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
}
#endif

TEST(OpenDatabase, Never_makes_a_missing_file) {
    const TempFolder folder;
    EXPECT_EQ(ErrorOf([&] { TheDBEngine().OpenDatabase(folder / "a.mdb"); }), kFileMissing);
    EXPECT_EQ(ErrorOf([&] { TheDBEngine().OpenDatabase(folder / "db/a.mdb"); }), kFileMissing);
    EXPECT_EQ(ErrorOf([&] { TheDBEngine().OpenDatabase(""); }), kFileMissing);
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST(OpenDatabase, Raises_3343_for_a_file_that_is_no_database_and_leaves_it_as_it_was) {
    const TempFolder folder;
    const std::string magic("SQLite format 3\0", 16);
    const Texts contents{"",
                         "x",
                         "hello, this is text\n" + std::string(5000, 'y'),
                         magic,
                         magic + std::string(84, '\0'),
                         magic + std::string(8000, '\xff')};
    for (const std::string& bytes : contents) {
        WriteFileBytes(folder / "a.mdb", bytes);
        EXPECT_EQ(ErrorOf([&] { TheDBEngine().OpenDatabase(folder / "a.mdb"); }), kNotADatabase) << bytes.size();
        EXPECT_EQ(FileBytes(folder / "a.mdb"), bytes);
        EXPECT_FALSE(FileExists(folder / "a.mdb-journal"));
    }
}

TEST(OpenDatabase, Leaves_a_file_that_is_no_database_beside_a_journal_as_it_was) {
    const TempFolder folder;
    WriteFileBytes(folder / "a.mdb", "");
    WriteFileBytes(folder / "a.mdb-journal",
                   std::string("\xd9\xd5\x05\xf9\x20\xa1\x63\xd7", 8) + std::string(600, '\0'));
    EXPECT_EQ(ErrorOf([&] { TheDBEngine().OpenDatabase(folder / "a.mdb"); }), kNotADatabase);
    EXPECT_EQ(FileBytes(folder / "a.mdb"), "");
}

TEST(OpenDatabase, Refuses_a_folder) {
    const TempFolder folder;
    std::filesystem::create_directory(folder / "abc.mdb");
    EXPECT_EQ(ErrorOf([&] { TheDBEngine().OpenDatabase(folder / "abc.mdb"); }), kNoPermission);
}

#ifndef _WIN32  // a process cannot be forked
TEST_F(Record, That_another_program_has_locked_for_2_seconds_is_refused) {
    ChildProcess other([&](const ChildProcess::Contact& test) {
        sqlite3* file = nullptr;
        sqlite3_open(path.c_str(), &file);
        if (sqlite3_exec(file, "begin exclusive", nullptr, nullptr, nullptr) != SQLITE_OK)
            throw std::runtime_error("not locked");
        test.Send();
        test.Await();
    });
    ASSERT_TRUE(other.Talk().Await());
    VirtualClock clock;
    EXPECT_EQ(ErrorOf([&] { TheDBEngine().OpenDatabase(path); }), kLockedByOther);
    EXPECT_EQ(clock.Elapsed(), 2000);
}

TEST_F(Record, That_another_program_is_deleting_is_refused) {
    database.Close();
    const int deletion = open(path.c_str(), O_RDONLY);
    ASSERT_EQ(flock(deletion, LOCK_EX), 0);
    EXPECT_EQ(ErrorOf([&] { TheDBEngine().OpenDatabase(path); }), kFileInUse);
    close(deletion);
    EXPECT_EQ(ErrorOf([&] { TheDBEngine().OpenDatabase(path); }), 0);
}
#endif

TEST_F(Record, That_may_not_be_written_is_refused) {
    if (WritesToEveryFile()) GTEST_SKIP() << "the user of this Wine may write to every file";
    database.Close();
    std::filesystem::permissions(folder.Path(), std::filesystem::perms::all);
    std::filesystem::permissions(path, std::filesystem::perms::owner_read | std::filesystem::perms::others_read);
    EXPECT_TRUE(HoldsForAnybody([&] { return ErrorOf([&] { TheDBEngine().OpenDatabase(path); }) == kNoPermission; }));
    std::filesystem::permissions(path, std::filesystem::perms::owner_all);
}

#ifndef _WIN32  // under Wine, no access list binds the superuser
TEST_F(Record, In_a_folder_that_may_not_be_written_is_refused_and_none_can_be_made) {
    database.Close();
    std::filesystem::permissions(path, std::filesystem::perms::all);
    std::filesystem::permissions(folder.Path(), static_cast<std::filesystem::perms>(0555));
    EXPECT_TRUE(HoldsForAnybody([&] {
        return ErrorOf([&] { TheDBEngine().OpenDatabase(path); }) == kNoPermission &&
               ErrorOf([&] { TheDBEngine().CreateDatabase(folder / "b.mdb", "", 0); }) == kNoPermission;
    }));
    std::filesystem::permissions(folder.Path(), std::filesystem::perms::owner_all);
}
#endif

#ifndef _WIN32  // a link takes a right that users lack
TEST_F(Record, Behind_a_link_into_a_folder_that_may_not_be_written_is_refused) {
    database.Close();
    const TempFolder elsewhere;
    std::filesystem::permissions(path, std::filesystem::perms::all);
    std::filesystem::rename(path, elsewhere / "a.mdb");
    std::filesystem::create_symlink(elsewhere / "a.mdb", path);
    std::filesystem::permissions(folder.Path(), std::filesystem::perms::all);
    std::filesystem::permissions(elsewhere.Path(), static_cast<std::filesystem::perms>(0555));
    EXPECT_TRUE(HoldsForAnybody([&] { return ErrorOf([&] { TheDBEngine().OpenDatabase(path); }) == kNoPermission; }));
    std::filesystem::permissions(elsewhere.Path(), std::filesystem::perms::owner_all);
}
#endif

TEST_F(Record, Leaves_nothing_beside_its_file) {
    AddRows(database, {"1", "2"});
    database.Close();
    const std::filesystem::directory_iterator entries(folder.Path());
    EXPECT_EQ(std::distance(begin(entries), end(entries)), 1);
}

// ---- Tables and queries

TEST_F(Record, Refuses_a_second_table_of_the_same_name) {
    TableDef again = DataTable();
    again.Name = "data";
    EXPECT_EQ(ErrorOf([&] { database.AppendTableDef(again); }), kTableExists);
}

TEST_F(Record, Keeps_the_rows_of_two_tables_apart) {
    TableDef other;
    other.Name = "other_2";
    other.Fields.Append({"NUM", kDbText});
    database.AppendTableDef(other);
    AddRows(database, {"1"});
    Recordset rows = database.OpenRecordset("select * from other_2");
    rows.AddNew();
    rows.Set("NUM", "2");
    rows.Update();
    for (int time = 0; time < 2; ++time) {
        EXPECT_EQ(Walk(All()), Texts{"1"});
        EXPECT_EQ(Walk(database.OpenRecordset("select * from other_2")), Texts{"2"});
    }
}

TEST_F(Record, May_have_a_column_whose_name_holds_a_quotation_mark) {
    TableDef table;
    table.Name = "other";
    table.Fields.Append({"12\"", kDbText});
    database.AppendTableDef(table);
    Recordset rows = database.OpenRecordset("select * from other");
    rows.AddNew();
    rows.Set("12\"", "a foot");
    rows.Update();
    EXPECT_EQ(Walk(database.OpenRecordset("select * from other"), "12\""), Texts{"a foot"});
}

TEST_F(Record, Refuses_a_column_that_is_no_text) {
    TableDef table;
    table.Name = "OTHER";
    table.Fields.Append({"N", 4});
    EXPECT_EQ(ErrorOf([&] { database.AppendTableDef(table); }), kFieldType);
}

TEST_F(Record, Answers_queries_in_any_case_and_spacing) {
    AddRows(database, {"1", "2"});
    for (const char* query : {"select * from data", "SELECT  *\tFROM [Data] ", "select*from DATA"})
        EXPECT_EQ(Walk(database.OpenRecordset(query)), (Texts{"1", "2"})) << query;
    for (const char* query : {"select * from data  where NUM='2'", "SELECT * FROM DATA WHERE num = '2'",
                              "select * from data where [Num]= '2' "})
        EXPECT_EQ(Walk(database.OpenRecordset(query)), (Texts{"2"})) << query;
}

TEST_F(Record, Raises_3075_for_every_other_query) {
    for (const char* query :
         {"", "select", "select num from data", "select * from", "select * from []", "select * from [data",
          "select * from data where", "select * from data where NUM=2", "select * from data where NUM='2",
          "delete from data", "select * from data where NUM='2' or NUM='3'", "select * from data; drop table data",
          "select * from data{", "select * from data^", "select * from data:"})
        EXPECT_EQ(ErrorOf([&] { database.OpenRecordset(query); }), kEngineSyntax) << query;
}

TEST_F(Record, Raises_3078_for_a_missing_table) {
    EXPECT_EQ(ErrorOf([&] { database.OpenRecordset("select * from other"); }), kTableMissing);
}

TEST_F(Record, Raises_3265_for_a_missing_column) {
    AddRows(database, {"1"});
    EXPECT_EQ(ErrorOf([&] { All().Value("CH2"); }), kItemNotFound);
    EXPECT_EQ(ErrorOf([&] { All().Text("CH2"); }), kItemNotFound);
    EXPECT_EQ(ErrorOf([&] { database.OpenRecordset("select * from data where CH2='1'"); }), kItemNotFound);
    Recordset rows = All();
    rows.AddNew();
    EXPECT_EQ(ErrorOf([&] { rows.Set("CH2", "x"); }), kItemNotFound);
}

TEST_F(Record, Reads_only_the_columns_that_are_wanted) {
    AddRows(database, {"1", "2"});
    const Recordset all = database.OpenRecordset("select * from data", {"ch1"});
    EXPECT_EQ(Walk(all, "CH1"), (Texts{"reading 1", "reading 2"}));
    EXPECT_EQ(ErrorOf([&] { all.Value("Time"); }), kItemNotFound);
    const Recordset found = database.OpenRecordset("select * from data where NUM='2'", {"ch1"});
    EXPECT_EQ(Walk(found, "CH1"), Texts{"reading 2"});
    EXPECT_TRUE(database.OpenRecordset("select * from data where NUM='02'", {"ch1"}).Bof());
    EXPECT_EQ(Walk(All(), "CH1"), (Texts{"reading 1", "reading 2"}));
}

TEST_F(Record, Raises_3265_for_a_wanted_column_that_is_missing) {
    EXPECT_EQ(ErrorOf([&] { database.OpenRecordset("select * from data", {"Ch1", "Ch2"}); }), kItemNotFound);
    EXPECT_EQ(ErrorOf([&] { database.OpenRecordset("select * from data where NUM='1'", {"it's"}); }), kItemNotFound);
}

TEST_F(Record, Does_not_take_a_view_for_a_table) {
    sqlite3* file = nullptr;
    sqlite3_open(path.c_str(), &file);
    ASSERT_EQ(sqlite3_exec(file, "create view other as select * from data", nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(file);
    EXPECT_EQ(ErrorOf([&] { database.OpenRecordset("select * from other"); }), kTableMissing);
}

TEST_F(Record, Reads_a_table_that_another_program_has_added_meanwhile) {
    EXPECT_EQ(ErrorOf([&] { database.OpenRecordset("select * from other"); }), kTableMissing);
    sqlite3* file = nullptr;
    sqlite3_open(path.c_str(), &file);
    constexpr const char* kTable = "create table OTHER(num); insert into OTHER values('7')";
    ASSERT_EQ(sqlite3_exec(file, kTable, nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(file);
    EXPECT_EQ(Walk(database.OpenRecordset("select * from other")), Texts{"7"});
}

TEST_F(Record, That_another_program_left_with_a_write_ahead_log_gets_its_journal_back) {
    AddRows(database, {"1"});
    database.Close();
    sqlite3* file = nullptr;
    sqlite3_open(path.c_str(), &file);
    ASSERT_EQ(
        sqlite3_exec(file, "pragma journal_mode=wal; insert into data(num) values('2')", nullptr, nullptr, nullptr),
        SQLITE_OK);
    sqlite3_close(file);
    constexpr std::size_t kReadVersion = 19;
    ASSERT_EQ(FileBytes(path)[kReadVersion], 2);
    database = TheDBEngine().OpenDatabase(path);
    EXPECT_EQ(FileBytes(path)[kReadVersion], 1);
    EXPECT_EQ(Walk(All()), (Texts{"1", "2"}));
}

TEST_F(Record, Matches_column_names_without_regard_to_case) {
    Recordset rows = All();
    rows.AddNew();
    rows.Set("num", "1");
    rows.Set("CH1", "x");
    rows.Update();
    EXPECT_EQ(All().Text("NuM"), "1");
    EXPECT_EQ(All().Text("ch1"), "x");
}

TEST_F(Record, Finds_a_text_that_holds_a_quote) {
    AddRows(database, {"it's"});
    EXPECT_EQ(Walk(Find("it''s")), (Texts{"it's"}));
}

// ---- Closing

TEST_F(Record, Raises_3420_for_all_use_after_Close) {
    AddRows(database, {"1"});
    Recordset rows = All();
    database.Close();
    EXPECT_EQ(ErrorOf([&] { rows.RecordCount(); }), kObjectClosed);
    EXPECT_EQ(ErrorOf([&] { (void)rows.Eof(); }), kObjectClosed);
    EXPECT_EQ(ErrorOf([&] { (void)rows.Bof(); }), kObjectClosed);
    EXPECT_EQ(ErrorOf([&] { rows.MoveFirst(); }), kObjectClosed);
    EXPECT_EQ(ErrorOf([&] { rows.MoveNext(); }), kObjectClosed);
    EXPECT_EQ(ErrorOf([&] { rows.MoveLast(); }), kObjectClosed);
    EXPECT_EQ(ErrorOf([&] { rows.Value("num"); }), kObjectClosed);
    EXPECT_EQ(ErrorOf([&] { rows.AddNew(); }), kObjectClosed);
    EXPECT_EQ(ErrorOf([&] { rows.Edit(); }), kObjectClosed);
    EXPECT_EQ(ErrorOf([&] { rows.Set("num", "1"); }), kObjectClosed);
    EXPECT_EQ(ErrorOf([&] { rows.Update(); }), kObjectClosed);
    EXPECT_EQ(ErrorOf([&] { rows.Delete(); }), kObjectClosed);
    EXPECT_EQ(ErrorOf([&] { All(); }), kObjectClosed);
    EXPECT_EQ(ErrorOf([&] { database.OpenRecordset("select * from data", {"num"}); }), kObjectClosed);
    EXPECT_EQ(ErrorOf([&] { database.AppendTableDef(DataTable()); }), kObjectClosed);
    EXPECT_EQ(ErrorOf([&] { Database::Transaction transaction(database); }), kObjectClosed);
}

TEST_F(Record, Is_closed_for_every_copy_and_may_be_closed_twice) {
    Database copy = database;
    database.Close();
    EXPECT_EQ(ErrorOf([&] { copy.OpenRecordset("select * from data"); }), kObjectClosed);
    EXPECT_EQ(ErrorOf([&] { database.Close(); }), 0);
    EXPECT_EQ(ErrorOf([&] { copy.Close(); }), 0);
}

TEST(DefaultMade, Database_and_recordset_are_closed) {
    Database database;
    Recordset rows;
    EXPECT_EQ(ErrorOf([&] { database.OpenRecordset("select * from data"); }), kObjectClosed);
    EXPECT_EQ(ErrorOf([&] { database.Close(); }), 0);
    EXPECT_EQ(ErrorOf([&] { (void)rows.Eof(); }), kObjectClosed);
}

}  // namespace
}  // namespace vantrel
