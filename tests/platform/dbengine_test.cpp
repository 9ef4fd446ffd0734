#include "platform/dbengine.h"

#include "platform/files.h"
#include "platform/sqlite/numbering.h"
#include "support/child_process.h"
#include "support/errors.h"
#include "support/temp_folder.h"
#include "support/texts.h"
#include "support/virtual_clock.h"

#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <utility>

namespace vantrel {
namespace {

TableDef DataTable() {
    TableDef table;
    table.Name = "DATA";
    table.Fields.Append({"NUM", kDbText});
    table.Fields.Append({"Time", kDbText});
    table.Fields.Append({"Ch1", kDbText});
    return table;
}

/// Rows with these texts in NUM; an empty one stays Null.
void AddRows(Database& database, const Texts& numbers) {
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

Texts Walk(Recordset rows, const std::string& column = "num") {
    Texts texts;
    if (rows.RecordCount() == 0) return texts;
    for (rows.MoveFirst(); !rows.Eof(); rows.MoveNext()) texts.push_back(rows.Value(column).value_or("Null"));
    return texts;
}

int cause_of_failed_write = 0;

ssize_t WriteNothing(int, const void*, size_t, off_t) {
    errno = cause_of_failed_write;
    return -1;
}

/// While it lives, every write of the engine meets a full disk.
class FullDisk {
public:
    explicit FullDisk(int cause = ENOSPC) {
        cause_of_failed_write = cause;
        SetWrite(reinterpret_cast<sqlite3_syscall_ptr>(WriteNothing));
    }
    ~FullDisk() { SetWrite(nullptr); }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    static void SetWrite(sqlite3_syscall_ptr write) {
        sqlite3_vfs* const vfs = sqlite3_vfs_find(nullptr);
        if (vfs->xSetSystemCall(vfs, "pwrite64", write) != SQLITE_OK) throw std::runtime_error("no such system call");
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

TEST_F(Record, That_may_not_be_written_is_refused) {
    database.Close();
    std::filesystem::permissions(folder.Path(), std::filesystem::perms::all);
    std::filesystem::permissions(path, std::filesystem::perms::owner_read | std::filesystem::perms::others_read);
    ChildProcess other([&](const ChildProcess::Contact&) {
        if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0)) throw std::runtime_error("still root");
        if (ErrorOf([&] { TheDBEngine().OpenDatabase(path); }) != kNoPermission) throw std::runtime_error("opened");
    });
    EXPECT_EQ(other.End(), 0);
}

TEST_F(Record, In_a_folder_that_may_not_be_written_is_refused_and_none_can_be_made) {
    database.Close();
    std::filesystem::permissions(path, std::filesystem::perms::all);
    std::filesystem::permissions(folder.Path(), static_cast<std::filesystem::perms>(0555));
    ChildProcess other([&](const ChildProcess::Contact&) {
        if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0)) throw std::runtime_error("still root");
        if (ErrorOf([&] { TheDBEngine().OpenDatabase(path); }) != kNoPermission) throw std::runtime_error("opened");
        if (ErrorOf([&] { TheDBEngine().CreateDatabase(folder / "b.mdb", "", 0); }) != kNoPermission)
            throw std::runtime_error("made");
    });
    EXPECT_EQ(other.End(), 0);
    std::filesystem::permissions(folder.Path(), std::filesystem::perms::owner_all);
}

TEST_F(Record, Behind_a_link_into_a_folder_that_may_not_be_written_is_refused) {
    database.Close();
    const TempFolder elsewhere;
    std::filesystem::permissions(path, std::filesystem::perms::all);
    std::filesystem::rename(path, elsewhere / "a.mdb");
    std::filesystem::create_symlink(elsewhere / "a.mdb", path);
    std::filesystem::permissions(folder.Path(), std::filesystem::perms::all);
    std::filesystem::permissions(elsewhere.Path(), static_cast<std::filesystem::perms>(0555));
    ChildProcess other([&](const ChildProcess::Contact&) {
        if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0)) throw std::runtime_error("still root");
        if (ErrorOf([&] { TheDBEngine().OpenDatabase(path); }) != kNoPermission) throw std::runtime_error("opened");
    });
    EXPECT_EQ(other.End(), 0);
    std::filesystem::permissions(elsewhere.Path(), std::filesystem::perms::owner_all);
}

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
    for (const char* query : {"", "select", "select num from data", "select * from", "select * from data where",
                              "select * from data where NUM=2", "select * from data where NUM='2", "delete from data",
                              "select * from data where NUM='2' or NUM='3'", "select * from data; drop table data"})
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

// ---- Values

class StoredValue : public Record {
protected:
    std::string After(const FieldInput& value) {
        Recordset rows = All();
        rows.AddNew();
        rows.Set("Ch1", value);
        rows.Update();
        Recordset fresh = TheDBEngine().OpenDatabase(path).OpenRecordset("select * from data");
        fresh.MoveLast();
        return fresh.Text("Ch1");
    }
};

TEST_F(StoredValue, Of_a_whole_number_has_no_point) { EXPECT_EQ(After(51.0), "51"); }

TEST_F(StoredValue, Of_a_number_is_its_shortest_form) {
    EXPECT_EQ(After(0.1 + 0.2), "0.3");
    EXPECT_EQ(After(9.9e37), "9.9E+37");
}

TEST_F(StoredValue, Of_a_date_is_the_date_text) {
    const DateTime moment = CDate("2026-03-04 10:00:05");
    EXPECT_EQ(After(DateTime{moment.ms + 999}), "2026-03-04 10:00:05");
}

TEST_F(StoredValue, Of_a_text_is_the_text_as_it_stands) {
    for (const std::string& text :
         {std::string("+1.00000E+00\n"), std::string(" "), std::string(""), std::string("007"), std::string("1.0"),
          std::string("\xff\xfe"), std::string("a\0b", 3)})
        EXPECT_EQ(After(text), text);
}

TEST_F(StoredValue, Can_have_255_characters_and_no_more) {
    EXPECT_EQ(After(std::string(255, 'x')), std::string(255, 'x'));
    EXPECT_EQ(ErrorOf([&] { After(std::string(256, 'x')); }), kFieldTooSmall);
    std::string umlauts;
    for (int i = 0; i < 255; ++i) umlauts += "\xc3\xbc";
    EXPECT_EQ(After(umlauts), umlauts);
    EXPECT_EQ(ErrorOf([&] { After(umlauts + "x"); }), kFieldTooSmall);
}

TEST_F(Record, Reads_Null_as_no_value_and_not_as_empty_text) {
    AddRows(database, {""});
    EXPECT_EQ(All().Value("num"), std::nullopt);
    EXPECT_EQ(ErrorOf([&] { All().Text("num"); }), kInvalidNull);
}

// ---- Walking

TEST_F(Record, Without_rows_is_an_empty_set) {
    Recordset rows = All();
    EXPECT_EQ(rows.RecordCount(), 0);
    EXPECT_TRUE(rows.Bof());
    EXPECT_TRUE(rows.Eof());
    EXPECT_EQ(ErrorOf([&] { rows.MoveFirst(); }), kNoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { rows.MoveNext(); }), kNoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { rows.MoveLast(); }), kNoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { rows.Value("num"); }), kNoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { rows.Edit(); }), kNoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { rows.Delete(); }), kNoCurrentRecord);
}

TEST_F(Record, Stands_on_its_first_row_when_opened) {
    AddRows(database, {"1", "2"});
    const Recordset rows = All();
    EXPECT_EQ(rows.Text("num"), "1");
    EXPECT_FALSE(rows.Bof());
    EXPECT_FALSE(rows.Eof());
}

TEST_F(Record, Is_walked_in_the_order_of_insertion) {
    const Texts order{"2", "10", "1", "x", "1"};
    AddRows(database, order);
    EXPECT_EQ(Walk(All()), order);
}

TEST_F(Record, Ends_behind_its_last_row) {
    AddRows(database, {"1", "2"});
    Recordset rows = All();
    rows.MoveNext();
    EXPECT_FALSE(rows.Eof());
    rows.MoveNext();
    EXPECT_TRUE(rows.Eof());
    EXPECT_FALSE(rows.Bof());
    EXPECT_EQ(ErrorOf([&] { rows.Value("num"); }), kNoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { rows.MoveNext(); }), kNoCurrentRecord);
}

TEST_F(Record, MoveLast_stands_on_the_last_row) {
    AddRows(database, {"1", "2", "3"});
    Recordset rows = All();
    rows.MoveLast();
    EXPECT_EQ(rows.Text("num"), "3");
    rows.MoveNext();
    EXPECT_TRUE(rows.Eof());
    rows.MoveFirst();
    EXPECT_EQ(rows.Text("num"), "1");
}

TEST_F(Record, RecordCount_counts_the_rows_reached_so_far) {
    AddRows(database, {"1", "2", "3"});
    Recordset rows = All();
    EXPECT_EQ(rows.RecordCount(), 1);
    rows.MoveNext();
    EXPECT_EQ(rows.RecordCount(), 2);
    rows.MoveFirst();
    EXPECT_EQ(rows.RecordCount(), 2);
    rows.MoveNext();
    EXPECT_EQ(rows.RecordCount(), 2);
    rows.MoveLast();
    EXPECT_EQ(rows.RecordCount(), 3);
    rows.MoveFirst();
    EXPECT_EQ(rows.RecordCount(), 3);
}

TEST_F(Record, RecordCount_does_not_count_removed_rows) {
    AddRows(database, {"1", "2", "3"});
    Recordset rows = All();
    rows.MoveLast();
    rows.Delete();
    EXPECT_EQ(rows.RecordCount(), 2);
    rows.MoveFirst();
    rows.Delete();
    EXPECT_EQ(rows.RecordCount(), 1);
    rows.MoveNext();
    EXPECT_EQ(rows.RecordCount(), 1);
    EXPECT_EQ(Walk(All()), (Texts{"2"}));
}

TEST_F(Record, RecordCount_stays_above_0_while_rows_are_left) {
    AddRows(database, {"1", "2"});
    Recordset rows = All();
    rows.Delete();
    EXPECT_EQ(rows.RecordCount(), 1);
    rows.MoveNext();
    EXPECT_EQ(rows.RecordCount(), 1);
    rows.Delete();
    EXPECT_EQ(rows.RecordCount(), 0);
}

TEST_F(Record, RecordCount_counts_added_rows) {
    Recordset rows = All();
    rows.AddNew();
    rows.Update();
    EXPECT_EQ(rows.RecordCount(), 1);
    rows.AddNew();
    rows.Update();
    rows.MoveLast();
    EXPECT_EQ(rows.RecordCount(), 2);
}

TEST_F(Record, Can_be_emptied_in_a_walk) {
    AddRows(database, {"", "", ""});
    Recordset rows = All();
    for (rows.MoveFirst(); !rows.Eof(); rows.MoveNext()) rows.Delete();
    EXPECT_EQ(rows.RecordCount(), 0);
    EXPECT_TRUE(rows.Bof());
    EXPECT_TRUE(Stored().empty());
}

TEST_F(Record, Stands_on_no_row_after_Delete_until_the_next_move) {
    AddRows(database, {"1", "2"});
    Recordset rows = All();
    rows.Delete();
    EXPECT_EQ(ErrorOf([&] { rows.Value("num"); }), kNoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { rows.Delete(); }), kNoCurrentRecord);
    EXPECT_FALSE(rows.Eof());
    rows.MoveNext();
    EXPECT_EQ(rows.Text("num"), "2");
}

TEST_F(Record, Copies_of_a_recordset_share_one_position) {
    AddRows(database, {"1", "2"});
    Recordset rows = All();
    const Recordset copy = rows;
    rows.MoveNext();
    EXPECT_EQ(copy.Text("num"), "2");
}

// ---- Changing

TEST_F(Record, Stores_a_change_at_Update) {
    AddRows(database, {"1", "2"});
    Recordset rows = All();
    rows.MoveNext();
    rows.Edit();
    rows.Set("num", 7.0);
    EXPECT_EQ(Stored(), (Texts{"1", "2"}));
    rows.Update();
    EXPECT_EQ(rows.Text("num"), "7");
    EXPECT_EQ(rows.Text("Ch1"), "reading 2");
    EXPECT_EQ(Stored(), (Texts{"1", "7"}));
}

TEST_F(Record, Drops_a_change_at_a_move_without_Update) {
    AddRows(database, {"1", "2"});
    Recordset rows = All();
    rows.Edit();
    rows.Set("num", "9");
    rows.MoveNext();
    rows.MoveFirst();
    EXPECT_EQ(rows.Text("num"), "1");
    EXPECT_EQ(ErrorOf([&] { rows.Update(); }), kNoCurrentEdit);
    EXPECT_EQ(Stored(), (Texts{"1", "2"}));
}

TEST_F(Record, Drops_a_new_row_at_a_move_without_Update) {
    AddRows(database, {"1"});
    Recordset rows = All();
    rows.AddNew();
    rows.Set("num", "2");
    rows.MoveFirst();
    EXPECT_EQ(ErrorOf([&] { rows.Update(); }), kNoCurrentEdit);
    EXPECT_EQ(Stored(), (Texts{"1"}));
}

TEST_F(Record, Refuses_to_set_or_update_without_AddNew_or_Edit) {
    AddRows(database, {"1"});
    Recordset rows = All();
    EXPECT_EQ(ErrorOf([&] { rows.Set("num", "2"); }), kNoCurrentEdit);
    EXPECT_EQ(ErrorOf([&] { rows.Update(); }), kNoCurrentEdit);
}

TEST_F(Record, Shows_the_new_row_while_it_is_prepared_and_the_current_row_after_it) {
    AddRows(database, {"1"});
    Recordset rows = All();
    rows.AddNew();
    EXPECT_EQ(rows.Value("num"), std::nullopt);
    rows.Set("num", "2");
    EXPECT_EQ(rows.Text("num"), "2");
    rows.Update();
    EXPECT_EQ(rows.Text("num"), "1");
}

TEST_F(Record, Reaches_the_rows_that_it_added_itself) {
    AddRows(database, {"1"});
    Recordset rows = All();
    rows.AddNew();
    rows.Set("num", "2");
    rows.Update();
    EXPECT_EQ(Walk(rows), (Texts{"1", "2"}));
}

TEST_F(Record, Reaches_a_row_once_that_it_added_in_the_place_of_a_deleted_last_one) {
    AddRows(database, {"1", "2", ""});
    Recordset rows = All();
    rows.MoveLast();
    rows.Delete();
    rows.AddNew();
    rows.Set("num", "3");
    rows.Update();
    EXPECT_EQ(rows.RecordCount(), 3);
    EXPECT_EQ(Walk(rows), (Texts{"1", "2", "3"}));
}

TEST_F(Record, Writes_only_the_columns_that_were_set) {
    AddRows(database, {"1"});
    Recordset mine = All();
    mine.Edit();
    mine.Set("num", "5");
    Recordset other = All();
    other.Edit();
    other.Set("Ch1", "changed");
    other.Update();
    mine.Update();
    EXPECT_EQ(All().Text("num"), "5");
    EXPECT_EQ(All().Text("Ch1"), "changed");
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

// ---- Several users

TEST_F(Record, Shows_a_second_user_what_the_first_stored) {
    Database other = TheDBEngine().OpenDatabase(path);
    AddRows(database, {"1"});
    EXPECT_EQ(Walk(other.OpenRecordset("select * from data")), (Texts{"1"}));
    AddRows(other, {"2"});
    EXPECT_EQ(Walk(All()), (Texts{"1", "2"}));
}

TEST_F(Record, Holds_no_lock_between_two_calls) {
    AddRows(database, {"1", "2"});
    Recordset reading = All();
    reading.MoveNext();
    reading.Edit();
    Recordset found = Find("1");
    ChildProcess other([&](const ChildProcess::Contact&) {
        VirtualClock clock;
        Database same = TheDBEngine().OpenDatabase(path);
        AddRows(same, {"3"});
        if (clock.Elapsed() != 0) throw std::runtime_error("had to wait");
    });
    EXPECT_EQ(other.End(), 0);
    EXPECT_EQ(Stored(), (Texts{"1", "2", "3"}));
}

TEST_F(Record, Steps_over_rows_that_another_user_deleted) {
    AddRows(database, {"1", "2", "3", "4"});
    Recordset rows = All();
    Database other = TheDBEngine().OpenDatabase(path);
    for (const char* number : {"2", "4"})
        other.OpenRecordset(std::string("select * from data where num='") + number + "'").Delete();
    rows.MoveNext();
    EXPECT_EQ(rows.Text("num"), "3");
    rows.MoveNext();
    EXPECT_TRUE(rows.Eof());
    EXPECT_EQ(rows.RecordCount(), 2);
    rows.MoveLast();
    EXPECT_EQ(rows.Text("num"), "3");
}

TEST_F(Record, Raises_3021_for_storing_or_deleting_a_row_that_another_user_deleted) {
    AddRows(database, {"1"});
    Recordset rows = All();
    rows.Edit();
    rows.Set("num", "5");
    Delete("1");
    EXPECT_EQ(rows.Text("Ch1"), "reading 1");
    EXPECT_EQ(ErrorOf([&] { rows.Update(); }), kNoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { rows.Delete(); }), kNoCurrentRecord);
    EXPECT_TRUE(Stored().empty());
}

TEST_F(Record, Does_not_reach_rows_that_another_user_adds_later) {
    AddRows(database, {"1"});
    Recordset rows = All();
    AddRows(database, {"2"});
    rows.MoveLast();
    EXPECT_EQ(rows.RecordCount(), 1);
}

TEST_F(Record, Raises_3260_when_another_user_keeps_it_locked_for_2_seconds) {
    VirtualClock clock;
    Recordset rows = All();
    Database other = TheDBEngine().OpenDatabase(path);
    Database::Transaction lock(other);
    Recordset theirs = other.OpenRecordset("select * from data");
    theirs.AddNew();
    theirs.Update();
    rows.AddNew();
    EXPECT_EQ(ErrorOf([&] { rows.Update(); }), kLockedByOther);
    EXPECT_EQ(clock.Elapsed(), 2000);
}

TEST_F(Record, Is_stored_by_two_programs_in_turn) {
    AddRows(database, {"1"});
    ChildProcess other([&](const ChildProcess::Contact& test) {
        Database same = TheDBEngine().OpenDatabase(path);
        AddRows(same, {"2"});
        test.Send();
        test.Await();
        if (Walk(same.OpenRecordset("select * from data")) != Texts{"1", "2", "3"}) throw std::runtime_error("rows");
    });
    ASSERT_TRUE(other.Talk().Await());
    EXPECT_EQ(Walk(All()), (Texts{"1", "2"}));
    AddRows(database, {"3"});
    other.Talk().Send();
    EXPECT_EQ(other.End(), 0);
}

/// Tells the test when a wait for the other program begins, and waits until the test has gone on.
class WaitThatTheTestSees : public VirtualClock {
public:
    explicit WaitThatTheTestSees(const ChildProcess::Contact& test) : test_(test) {}
    void Sleep(int milliseconds) override {
        VirtualClock::Sleep(milliseconds);
        if (std::exchange(is_first_, false)) {
            test_.Send();
            test_.Await();
        }
    }

private:
    const ChildProcess::Contact& test_;
    bool is_first_ = true;
};

TEST_F(Record, Is_written_by_a_transaction_while_another_program_waits_to_write) {
    AddRows(database, {"1"});
    ChildProcess other([&](const ChildProcess::Contact& test) {
        Recordset theirs = TheDBEngine().OpenDatabase(path).OpenRecordset("select * from data");
        theirs.AddNew();
        theirs.Set("num", "2");
        test.Await();
        const WaitThatTheTestSees clock(test);
        theirs.Update();
    });
    VirtualClock clock;
    Database::Transaction transaction(database);
    Recordset rows = All();
    rows.MoveFirst();
    other.Talk().Send();
    ASSERT_TRUE(other.Talk().Await());
    rows.Edit();
    rows.Set("num", "7");
    EXPECT_EQ(ErrorOf([&] {
                  rows.Update();
                  transaction.Commit();
              }),
              0);
    other.Talk().Send();
    EXPECT_EQ(other.End(), 0);
    EXPECT_EQ(Stored(), (Texts{"7", "2"}));
}

TEST_F(Record, Keeps_a_transaction_of_one_user_when_another_in_the_same_program_closes) {
    Database::Transaction transaction(database);
    Recordset rows = All();
    rows.AddNew();
    rows.Update();
    TheDBEngine().OpenDatabase(path).Close();
    ChildProcess other([&](const ChildProcess::Contact&) {
        VirtualClock clock;
        Recordset theirs = TheDBEngine().OpenDatabase(path).OpenRecordset("select * from data");
        theirs.AddNew();
        if (ErrorOf([&] { theirs.Update(); }) != kLockedByOther) throw std::runtime_error("not locked");
    });
    EXPECT_EQ(other.End(), 0);
}

// ---- Durability

TEST_F(Record, Keeps_every_stored_row_when_the_program_is_killed) {
    database.Close();
    constexpr int kSeen = 25;
    ChildProcess program([&](const ChildProcess::Contact& test) {
        Recordset rows = TheDBEngine().OpenDatabase(path).OpenRecordset("select * from data");
        for (double number = 1;; ++number) {
            rows.AddNew();
            rows.Set("num", number);
            rows.Update();
            test.Send();
        }
    });
    for (int i = 0; i < kSeen; ++i) ASSERT_TRUE(program.Talk().Await());
    program.Kill();
    int stored = kSeen;
    while (program.Talk().Await()) ++stored;

    const Texts numbers = Stored();
    EXPECT_GE(numbers.size(), static_cast<std::size_t>(stored));
    EXPECT_LE(numbers.size(), static_cast<std::size_t>(stored) + 1);
    EXPECT_EQ(numbers, Counting(static_cast<int>(numbers.size())));
}

TEST_F(Record, Is_as_before_when_the_program_is_killed_within_a_transaction) {
    AddRows(database, Counting(500));
    database.Close();
    ChildProcess program([&](const ChildProcess::Contact& test) {
        Database same = TheDBEngine().OpenDatabase(path);
        const Database::Transaction walk(same);
        Recordset rows = same.OpenRecordset("select * from data");
        for (rows.MoveFirst(); !rows.Eof(); rows.MoveNext()) {
            rows.Edit();
            rows.Set("num", "x");
            rows.Update();
        }
        test.Send();
        test.Await();
    });
    ASSERT_TRUE(program.Talk().Await());
    program.Kill();
    EXPECT_EQ(Stored(), Counting(500));
}

/// A program that is killed while it writes all rows anew: its changes are in the file in part, the old rows in the
/// journal.
void KillInTheMiddleOfAChange(const std::string& path) {
    ChildProcess program([&](const ChildProcess::Contact& test) {
        sqlite3* file = nullptr;
        sqlite3_open(path.c_str(), &file);
        constexpr const char* kChange = "pragma cache_size=5; begin; update data set num='x'";
        if (sqlite3_exec(file, kChange, nullptr, nullptr, nullptr) != SQLITE_OK) throw std::runtime_error("no change");
        test.Send();
        test.Await();
    });
    ASSERT_TRUE(program.Talk().Await());
    program.Kill();
}

TEST_F(Record, That_a_killed_program_left_with_half_a_page_is_restored_from_its_journal) {
    AddRows(database, Counting(500));
    database.Close();
    KillInTheMiddleOfAChange(path);
    std::filesystem::resize_file(path, std::filesystem::file_size(path) + 100);
    EXPECT_EQ(Stored(), Counting(500));
}

TEST_F(Record, Behind_a_link_is_restored_from_the_journal_beside_the_file_itself) {
    AddRows(database, Counting(500));
    database.Close();
    const TempFolder elsewhere;
    std::filesystem::rename(path, elsewhere / "a.mdb");
    std::filesystem::create_symlink(elsewhere / "a.mdb", path);
    KillInTheMiddleOfAChange(path);
    std::filesystem::resize_file(path, std::filesystem::file_size(path) + 100);
    EXPECT_EQ(Stored(), Counting(500));
}

TEST_F(Record, Raises_3026_on_a_full_disk_and_keeps_the_rows_stored_before) {
    AddRows(database, {"1"});
    Recordset rows = All();
    rows.AddNew();
    rows.Set("num", "2");
    {
        const FullDisk full;
        EXPECT_EQ(ErrorOf([&] { rows.Update(); }), kEngineFull);
    }
    rows.MoveFirst();
    EXPECT_EQ(rows.Text("num"), "1");
    EXPECT_EQ(Stored(), (Texts{"1"}));
}

TEST_F(Record, Stores_again_when_the_disk_has_room_again) {
    Recordset rows = All();
    rows.AddNew();
    rows.Set("num", "1");
    {
        const FullDisk full;
        EXPECT_EQ(ErrorOf([&] { rows.Update(); }), kEngineFull);
    }
    rows.Update();
    EXPECT_EQ(Stored(), (Texts{"1"}));
}

TEST_F(Record, Raises_3026_where_the_disk_has_room_but_the_user_has_none) {
    Recordset rows = All();
    for (const int cause : {EDQUOT, EFBIG}) {
        const FullDisk full(cause);
        rows.AddNew();
        EXPECT_EQ(ErrorOf([&] { rows.Update(); }), kEngineFull) << cause;
    }
}

TEST_F(Record, Whose_file_is_moved_or_deleted_while_it_is_open_takes_no_more_rows) {
    Recordset rows = All();
    const auto store = [&] {
        return ErrorOf([&] {
            rows.AddNew();
            rows.Set("num", "2");
            rows.Update();
        });
    };
    AddRows(database, {"1"});
    std::filesystem::rename(path, folder / "elsewhere.mdb");
    EXPECT_EQ(store(), kReadOnly);
    std::filesystem::copy_file(folder / "elsewhere.mdb", path);
    EXPECT_EQ(store(), kReadOnly);
    EXPECT_EQ(Stored(), (Texts{"1"}));
    std::filesystem::remove(path);
    EXPECT_EQ(store(), kReadOnly);
    std::filesystem::rename(folder / "elsewhere.mdb", path);
    EXPECT_EQ(store(), 0);
    EXPECT_EQ(Stored(), (Texts{"1", "2"}));
}

// ---- Transactions

TEST_F(Record, Shows_others_nothing_of_a_transaction_before_its_end) {
    Recordset rows = All();
    {
        const Database::Transaction transaction(database);
        rows.AddNew();
        rows.Set("num", "1");
        rows.Update();
        EXPECT_EQ(Stored(), Texts{});
    }
    EXPECT_EQ(Stored(), (Texts{"1"}));
}

TEST_F(Record, Keeps_what_a_transaction_wrote_when_an_error_unwinds_it) {
    EXPECT_EQ(ErrorOf([&] {
                  const Database::Transaction transaction(database);
                  AddRows(database, {"1"});
                  throw RunTimeError(kTypeMismatch);
              }),
              kTypeMismatch);
    EXPECT_EQ(Stored(), (Texts{"1"}));
}

TEST_F(Record, Stores_singly_again_after_Commit) {
    Database::Transaction transaction(database);
    AddRows(database, {"1"});
    transaction.Commit();
    Recordset rows = All();
    rows.AddNew();
    rows.Set("num", "2");
    rows.Update();
    EXPECT_EQ(Stored(), (Texts{"1", "2"}));
}

TEST_F(Record, Keeps_what_a_transaction_wrote_when_it_is_closed_within) {
    Database::Transaction transaction(database);
    AddRows(database, {"1"});
    database.Close();
    EXPECT_EQ(ErrorOf([&] { transaction.Commit(); }), 0);
    EXPECT_EQ(Stored(), (Texts{"1"}));
}

TEST_F(Record, Takes_back_what_a_transaction_wrote_when_it_is_undone) {
    AddRows(database, {"1", "2"});
    const std::string before = FileBytes(path);
    Database::Transaction transaction(database);
    AddRows(database, {"3"});
    Delete("1");
    Recordset rows = Find("2");
    rows.Edit();
    rows.Set("num", "7");
    rows.Update();
    EXPECT_EQ(Walk(All()), (Texts{"7", "3"}));
    transaction.Undo();
    EXPECT_EQ(Walk(All()), (Texts{"1", "2"}));
    EXPECT_EQ(FileBytes(path), before);
}

TEST_F(Record, Stores_singly_again_after_Undo_and_Commit_then_does_nothing) {
    Database::Transaction transaction(database);
    AddRows(database, {"1"});
    transaction.Undo();
    AddRows(database, {"2"});
    EXPECT_EQ(Stored(), (Texts{"2"}));
    transaction.Commit();
    EXPECT_EQ(Stored(), (Texts{"2"}));
}

TEST_F(Record, Raises_what_goes_wrong_with_a_commit_and_is_usable_afterwards) {
    AddRows(database, {"1"});
    VirtualClock clock;
    sqlite3* reader = nullptr;
    sqlite3_open(path.c_str(), &reader);
    ASSERT_EQ(sqlite3_exec(reader, "begin; select * from data", nullptr, nullptr, nullptr), SQLITE_OK);
    {
        Database::Transaction transaction(database);
        Recordset rows = All();
        rows.AddNew();
        rows.Update();
        EXPECT_EQ(ErrorOf([&] { transaction.Commit(); }), kLockedByOther);
    }
    sqlite3_close(reader);
    AddRows(database, {"2"});
    EXPECT_EQ(Stored(), (Texts{"1", "2"}));
}

TEST_F(Record, Reads_one_picture_within_a_transaction) {
    AddRows(database, {"1"});
    VirtualClock clock;
    const Database::Transaction transaction(database);
    EXPECT_EQ(Walk(All()), (Texts{"1"}));
    Database other = TheDBEngine().OpenDatabase(path);
    EXPECT_EQ(ErrorOf([&] { AddRows(other, {"2"}); }), kLockedByOther);
    EXPECT_EQ(Walk(All()), (Texts{"1"}));
}

// ---- Finding a row by its number

class Lookup : public Record {
protected:
    /// The scans that `routine` makes.
    template <class Routine>
    std::int64_t Scans(Routine routine) {
        const std::int64_t before = engine::ScanCount();
        routine();
        return engine::ScanCount() - before;
    }
    std::string Reading(const std::string& number) { return Find(number).Text("Ch1"); }
};

TEST_F(Lookup, Finds_every_row_of_a_numbered_table_with_one_scan_in_all) {
    AddRows(database, Counting(300));
    const std::int64_t scans = Scans([&] {
        for (const std::string& number : Counting(300)) EXPECT_EQ(Reading(number), "reading " + number);
    });
    EXPECT_EQ(scans, 1);
}

TEST_F(Lookup, Finds_rows_where_row_ids_are_missing) {
    Texts numbers = Counting(300);
    AddRows(database, numbers);
    for (const char* gone : {"1", "2", "100", "101", "102", "103", "299"}) Delete(gone);
    Recordset rows = All();
    double counter = 0;
    for (rows.MoveFirst(); !rows.Eof(); rows.MoveNext()) {
        rows.Edit();
        rows.Set("num", ++counter);
        rows.Update();
    }
    EXPECT_EQ(counter, 293);
    Texts readings;
    const std::int64_t scans = Scans([&] {
        for (const std::string& number : Counting(293)) readings.push_back(Reading(number));
    });
    EXPECT_EQ(readings, Walk(All(), "Ch1"));
    EXPECT_EQ(scans, 1);
}

TEST_F(Lookup, Finds_nothing_for_a_number_that_is_not_there) {
    AddRows(database, Counting(20));
    for (const char* number : {"0", "21", "-1", "-999", "", "x", "07", "7.0", " 7", "99999999999999999999"}) {
        const Recordset found = Find(number);
        EXPECT_TRUE(found.Bof()) << number;
        EXPECT_EQ(found.RecordCount(), 0) << number;
    }
}

TEST_F(Lookup, Gives_what_a_scan_gives_where_numbers_are_missing_doubled_or_out_of_order) {
    AddRows(database, {"3", "1", "2", "2", "", "7", "02", "x"});
    EXPECT_EQ(Walk(Find("2")), (Texts{"2", "2"}));
    EXPECT_EQ(Walk(Find("1")), (Texts{"1"}));
    EXPECT_EQ(Walk(Find("7")), (Texts{"7"}));
    EXPECT_EQ(Walk(Find("02")), (Texts{"02"}));
    EXPECT_EQ(Walk(Find("x")), (Texts{"x"}));
    EXPECT_EQ(Walk(Find("4")), (Texts{}));
}

TEST_F(Lookup, Sees_a_duplicate_that_comes_behind_a_proven_numbering) {
    AddRows(database, Counting(10));
    EXPECT_EQ(Walk(Find("5")), (Texts{"5"}));
    AddRows(database, {"5"});
    EXPECT_EQ(Walk(Find("5"), "num"), (Texts{"5", "5"}));
}

TEST_F(Lookup, Sees_what_another_program_changed_in_a_proven_numbering) {
    AddRows(database, Counting(10));
    EXPECT_EQ(Walk(Find("5")), (Texts{"5"}));
    ChildProcess other([&](const ChildProcess::Contact&) {
        Recordset row = TheDBEngine().OpenDatabase(path).OpenRecordset("select * from data where num='9'");
        row.Edit();
        row.Set("num", "5");
        row.Update();
    });
    ASSERT_EQ(other.End(), 0);
    EXPECT_EQ(Walk(Find("5"), "Ch1"), (Texts{"reading 5", "reading 9"}));
    EXPECT_EQ(Walk(Find("9")), (Texts{}));
}

TEST_F(Lookup, Sees_uncommitted_changes_of_its_own_transaction) {
    AddRows(database, Counting(10));
    EXPECT_EQ(Walk(Find("5")), (Texts{"5"}));
    const Database::Transaction transaction(database);
    Recordset row = Find("9");
    row.Edit();
    row.Set("num", "5");
    row.Update();
    EXPECT_EQ(Walk(Find("5"), "Ch1"), (Texts{"reading 5", "reading 9"}));
}

TEST_F(Lookup, Keeps_its_proof_from_one_opening_of_the_record_to_the_next) {
    AddRows(database, Counting(50));
    Find("1");
    const std::int64_t scans = Scans([&] {
        for (const std::string& number : Counting(50)) {
            Database again = TheDBEngine().OpenDatabase(path);
            EXPECT_EQ(Walk(again.OpenRecordset("select * from data where NUM='" + number + "'")), (Texts{number}));
            again.Close();
        }
    });
    EXPECT_EQ(scans, 0);
}

TEST_F(Lookup, Does_not_take_a_new_record_for_a_deleted_one_of_the_same_name) {
    AddRows(database, Counting(10));
    EXPECT_EQ(Walk(Find("5")), (Texts{"5"}));
    database.Close();
    Kill(path);
    database = TheDBEngine().CreateDatabase(path, "", 0);
    database.AppendTableDef(DataTable());
    AddRows(database, {"5", "1", "5"});
    database.Close();
    database = TheDBEngine().OpenDatabase(path);
    EXPECT_EQ(Walk(Find("5")), (Texts{"5", "5"}));
    EXPECT_EQ(Walk(Find("2")), (Texts{}));
}

/// What is proven of a record, and what ends it.
class Proof : public Lookup {
protected:
    Proof() {
        AddRows(database, Counting(10));
        Find("1");
    }
    /// Stores a row in a commit of its own.
    void Append(const std::string& number, const std::string& reading = "appended") {
        Recordset rows = All();
        rows.AddNew();
        rows.Set("NUM", number);
        rows.Set("Ch1", reading);
        rows.Update();
    }
    /// Runs a routine with the record open in another program.
    void InAnotherProgram(const std::function<void(Database&)>& routine) {
        ChildProcess other([&](const ChildProcess::Contact&) {
            Database theirs = TheDBEngine().OpenDatabase(path);
            routine(theirs);
        });
        ASSERT_EQ(other.End(), 0);
    }
    static void AppendTo(Database& theirs, const std::string& number) { AddRows(theirs, {number}); }
};

TEST_F(Proof, Goes_on_over_a_row_that_this_program_appends) {
    Database reader = TheDBEngine().OpenDatabase(path);
    const std::int64_t scans = Scans([&] {
        for (int number = 11; number <= 20; ++number) {
            const std::string text = std::to_string(number);
            Append(text, "reading " + text);
            const Recordset found = reader.OpenRecordset("select * from data where NUM='" + text + "'");
            EXPECT_EQ(found.Text("Ch1"), "reading " + text);
        }
        EXPECT_TRUE(Find("21").Bof());
    });
    EXPECT_EQ(scans, 0);
}

TEST_F(Proof, Begins_with_the_first_row_of_an_empty_table) {
    for (const std::string& number : Counting(10)) Delete(number);
    Find("1");
    const std::int64_t scans = Scans([&] {
        Append("1");
        Append("2");
        EXPECT_EQ(Walk(Find("2")), Texts{"2"});
    });
    EXPECT_EQ(scans, 0);
}

TEST_F(Proof, Ends_with_an_appended_row_that_does_not_count_on) {
    Append("5");
    EXPECT_EQ(Walk(Find("5"), "Ch1"), (Texts{"reading 5", "appended"}));
    Append("12");
    EXPECT_EQ(Walk(Find("12")), Texts{"12"});
}

TEST_F(Proof, Ends_when_another_program_writes_between_two_rows_of_this_one) {
    Append("11");
    InAnotherProgram([](Database& theirs) { AppendTo(theirs, "5"); });
    Append("12");
    EXPECT_EQ(Walk(Find("5"), "Ch1"), (Texts{"reading 5", "reading 5"}));
    EXPECT_EQ(Walk(Find("12")), Texts{"12"});
}

TEST_F(Proof, Ends_when_another_program_deletes_and_appends_as_many) {
    InAnotherProgram([](Database& theirs) {
        theirs.OpenRecordset("select * from data where num='10'").Delete();
        AppendTo(theirs, "3");
    });
    Append("11");
    EXPECT_EQ(Walk(Find("3")), (Texts{"3", "3"}));
    EXPECT_EQ(Walk(Find("10")), Texts{});
    EXPECT_EQ(Walk(Find("11")), Texts{"11"});
}

TEST_F(Proof, Ends_when_another_program_comes_between_the_new_row_and_its_update) {
    Recordset rows = All();
    rows.AddNew();
    rows.Set("NUM", "11");
    InAnotherProgram([](Database& theirs) { theirs.OpenRecordset("select * from data where num='2'").Delete(); });
    rows.Update();
    EXPECT_EQ(Walk(Find("2")), Texts{});
    EXPECT_EQ(Walk(Find("11")), Texts{"11"});
}

TEST_F(Proof, Ends_with_a_change_or_a_deletion_by_this_program) {
    Recordset row = Find("9");
    row.Edit();
    row.Set("NUM", "5");
    row.Update();
    Append("11");
    EXPECT_EQ(Walk(Find("5"), "Ch1"), (Texts{"reading 5", "reading 9"}));
    Delete("1");
    EXPECT_EQ(Walk(Find("1")), Texts{});
    EXPECT_EQ(Walk(Find("2")), Texts{"2"});
}

TEST_F(Proof, Holds_for_numbers_that_are_written_otherwise_and_finds_them_as_they_are_written) {
    Delete("10");
    AddRows(database, {"010", " 11", "12.0", "13"});
    const std::int64_t scans = Scans([&] {
        EXPECT_EQ(Walk(Find("010")), Texts{"010"});
        EXPECT_EQ(Walk(Find(" 11")), Texts{" 11"});
        EXPECT_EQ(Walk(Find("12.0")), Texts{"12.0"});
        EXPECT_EQ(Walk(Find("13")), Texts{"13"});
        for (const char* number : {"10", "11", "12", "12.5", "013"}) EXPECT_TRUE(Find(number).Bof()) << number;
    });
    EXPECT_EQ(scans, 1);
}

TEST_F(Proof, Tells_the_number_of_rows_without_counting_them) {
    Append("11");
    Recordset rows = All();
    rows.MoveLast();
    EXPECT_EQ(rows.RecordCount(), 11);
    InAnotherProgram([](Database& theirs) { theirs.OpenRecordset("select * from data where num='2'").Delete(); });
    rows = All();
    rows.MoveLast();
    EXPECT_EQ(rows.RecordCount(), 10);
}

TEST_F(Lookup, Finds_rows_at_the_ends_of_the_row_ids) {
    sqlite3* file = nullptr;
    sqlite3_open(path.c_str(), &file);
    constexpr const char* kRows =
        "insert into data(_rowid_,num) values(-9223372036854775808,'1'),(-9223372036854775807,'2'),(0,'3'),"
        "(9223372036854775806,'4'),(9223372036854775807,'5')";
    ASSERT_EQ(sqlite3_exec(file, kRows, nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(file);
    EXPECT_EQ(Walk(All()), Counting(5));
    for (const std::string& number : Counting(5)) EXPECT_EQ(Walk(Find(number)), Texts{number});
    AddRows(database, {"6"});  // gets a row id somewhere between, as none is left behind the last
    EXPECT_EQ(Walk(Find("6")), Texts{"6"});
    Recordset rows = All();
    rows.AddNew();
    rows.Set("NUM", "7");
    rows.Update();
    EXPECT_EQ(Walk(Find("7")), Texts{"7"});
    EXPECT_EQ(Walk(Find("5")), Texts{"5"});
}

TEST_F(Lookup, Finds_nothing_in_an_empty_table) { EXPECT_TRUE(Find("1").Bof()); }

TEST_F(Lookup, By_another_column_gives_what_a_scan_gives) {
    AddRows(database, {"1", "2", "2"});
    EXPECT_EQ(Walk(database.OpenRecordset("select * from data where ch1='reading 2'")), (Texts{"2", "2"}));
}

// ---- Renumbering, and reading in one go

class Renumbering : public Record {
protected:
    /// The error of a renumbering; 0 for none.
    int Renumber(std::int64_t most = 1000) {
        Database::Transaction walk(database);
        Recordset rows = All();
        const int error = ErrorOf([&] { rows.Renumber("num", most); });
        walk.Commit();
        return error;
    }
    /// The changes of the file that its header counts.
    int Commits() const {
        const std::string header = FileBytes(path).substr(24, 4);
        return static_cast<unsigned char>(header[2]) * 256 + static_cast<unsigned char>(header[3]);
    }
    Texts Readings() { return Walk(All(), "Ch1"); }
};

TEST_F(Renumbering, Is_one_commit_with_the_rows_that_it_removes) {
    AddRows(database, {"", "4", "", "2", "2", ""});
    const int before = Commits();
    EXPECT_EQ(Renumber(), 0);
    EXPECT_EQ(Commits(), before + 1);
    EXPECT_EQ(Stored(), Counting(3));
    EXPECT_EQ(Readings(), (Texts{"reading 4", "reading 2", "reading 2"}));
}

TEST_F(Renumbering, Leaves_a_number_that_is_right_as_it_is_written) {
    AddRows(database, {"1", "02", " 3", "9", "5.0", "06", "8"});
    EXPECT_EQ(Renumber(), 0);
    EXPECT_EQ(Stored(), (Texts{"1", "02", " 3", "4", "5.0", "06", "7"}));
}

TEST_F(Renumbering, Does_not_write_to_a_file_whose_numbers_are_right) {
    AddRows(database, {"1", "02", " 3", "4"});
    const int before = Commits();
    EXPECT_EQ(Renumber(), 0);
    EXPECT_EQ(Commits(), before);
}

TEST_F(Renumbering, Stops_at_a_text_that_is_no_number_and_keeps_what_it_did_before) {
    AddRows(database, {"5", "", "7", "abc", "", "9"});
    EXPECT_EQ(Renumber(), kTypeMismatch);
    EXPECT_EQ(Stored(), (Texts{"1", "2", "abc", "Null", "9"}));
}

TEST_F(Renumbering, Stops_at_a_row_too_many_and_keeps_what_it_did_before) {
    AddRows(database, {"", "5", "7", "8", "", "9"});
    EXPECT_EQ(Renumber(2), kOverflow);
    EXPECT_EQ(Stored(), (Texts{"1", "2", "8", "Null", "9"}));
}

TEST_F(Renumbering, Stops_at_a_row_too_many_of_right_numbers) {
    AddRows(database, Counting(5));
    const int before = Commits();
    EXPECT_EQ(Renumber(4), kOverflow);
    EXPECT_EQ(Renumber(5), 0);
    EXPECT_EQ(Commits(), before);
}

TEST_F(Renumbering, Meets_the_row_too_many_before_the_text_in_it) {
    AddRows(database, {"1", "2", "abc"});
    EXPECT_EQ(Renumber(2), kOverflow);
}

TEST_F(Renumbering, Is_taken_back_by_Undo) {
    for (const Texts& numbers : {Texts{"5", "", "7"}, Texts{"5", "", "7", "abc", "9"}}) {
        database.Close();
        Kill(path);
        database = TheDBEngine().CreateDatabase(path, "", 0);
        database.AppendTableDef(DataTable());
        AddRows(database, numbers);
        const std::string before = FileBytes(path);
        Database::Transaction walk(database);
        Recordset rows = All();
        ErrorOf([&] { rows.Renumber("num", 1000); });
        walk.Undo();
        EXPECT_EQ(FileBytes(path), before);
    }
}

TEST_F(Renumbering, Leaves_the_set_behind_its_last_row_with_the_rows_that_stayed) {
    AddRows(database, {"", "2", "3", ""});
    Recordset rows = All();
    AddRows(database, {"", "7"});  // that came after the set was taken
    Database::Transaction walk(database);
    rows.Renumber("NUM", 1000);
    walk.Commit();
    EXPECT_TRUE(rows.Eof());
    EXPECT_EQ(rows.RecordCount(), 3);
    rows.MoveLast();
    EXPECT_EQ(rows.Text("num"), "3");
    EXPECT_EQ(rows.Text("Ch1"), "reading 7");
    EXPECT_EQ(Walk(rows), Counting(3));
}

TEST_F(Renumbering, May_leave_no_row) {
    AddRows(database, {"", ""});
    Recordset rows = All();
    Database::Transaction walk(database);
    rows.Renumber("num", 1000);
    walk.Commit();
    EXPECT_EQ(rows.RecordCount(), 0);
    EXPECT_TRUE(rows.Bof());
    EXPECT_EQ(ErrorOf([&] { rows.MoveLast(); }), kNoCurrentRecord);
    EXPECT_EQ(Stored(), Texts{});
}

TEST_F(Renumbering, Sees_what_was_written_before_in_the_same_transaction) {
    AddRows(database, Counting(5));
    EXPECT_EQ(Renumber(), 0);
    Database::Transaction walk(database);
    Delete("2");
    Recordset rows = All();
    rows.Renumber("num", 1000);
    walk.Commit();
    EXPECT_EQ(Stored(), Counting(4));
}

TEST_F(Renumbering, Sees_what_another_program_wrote_since_the_last_one) {
    AddRows(database, Counting(5));
    EXPECT_EQ(Renumber(), 0);
    ChildProcess other([&](const ChildProcess::Contact&) {
        TheDBEngine().OpenDatabase(path).OpenRecordset("select * from data where num='2'").Delete();
    });
    ASSERT_EQ(other.End(), 0);
    EXPECT_EQ(Renumber(), 0);
    EXPECT_EQ(Stored(), Counting(4));
}

TEST_F(Renumbering, Raises_3265_for_a_column_that_is_not_there) {
    AddRows(database, {"1"});
    EXPECT_EQ(ErrorOf([&] { All().Renumber("Ch2", 1000); }), kItemNotFound);
}

class ReadingInOneGo : public Record {
protected:
    Texts From(std::int64_t first, std::size_t rows = 1000) {
        Texts readings;
        All().Scan(first, {"CH1", "num"}, [&](const auto& texts) {
            readings.push_back(texts[0].value_or("Null") + " of " + texts[1].value_or("Null"));
            return readings.size() < rows;
        });
        return readings;
    }
};

TEST_F(ReadingInOneGo, Begins_at_a_row_and_ends_when_told_to_or_at_the_last) {
    AddRows(database, {"7", "", "x"});
    EXPECT_EQ(From(1), (Texts{"reading 7 of 7", "reading  of Null", "reading x of x"}));
    EXPECT_EQ(From(2), (Texts{"reading  of Null", "reading x of x"}));
    EXPECT_EQ(From(1, 1), (Texts{"reading 7 of 7"}));
    EXPECT_EQ(From(4), Texts{});
}

TEST_F(ReadingInOneGo, Begins_at_the_same_row_where_the_numbering_is_known_and_row_ids_are_missing) {
    AddRows(database, Counting(9));
    Delete("1");
    Delete("4");
    const Texts unknown = From(3);
    EXPECT_EQ(unknown,
              (Texts{"reading 5 of 5", "reading 6 of 6", "reading 7 of 7", "reading 8 of 8", "reading 9 of 9"}));
    Recordset rows = All();
    Database::Transaction walk(database);
    rows.Renumber("num", 1000);
    walk.Commit();
    Find("1");
    EXPECT_EQ(From(3, 2), (Texts{"reading 5 of 3", "reading 6 of 4"}));
    EXPECT_EQ(From(8), Texts{});
}

}  // namespace
}  // namespace vantrel
