// A record's file: how it is made, what it holds, how it is opened and numbered, when it is closed.
#include "records/record_store.h"

#include "records/record_desk.h"
#include "support/child_process.h"
#include "support/errors.h"
#include "support/texts.h"
#include "support/virtual_clock.h"

#include <algorithm>
#include <filesystem>
#include <sqlite3.h>

namespace vantrel {
namespace {

/// The first column of what `sql` finds in the file at `path`.
Texts Query(const std::string& path, const std::string& sql) {
    sqlite3* file = nullptr;
    if (sqlite3_open_v2(path.c_str(), &file, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK) ADD_FAILURE() << path;
    Texts found;
    sqlite3_exec(
        file, sql.c_str(),
        [](void* to, int, char** values, char**) {
            static_cast<Texts*>(to)->emplace_back(values[0] ? values[0] : "<Null>");
            return 0;
        },
        &found, nullptr);
    sqlite3_close(file);
    return found;
}

/// Device 0 with Record1, in a program folder of its own.
class RecordFile : public testing::Test {
protected:
    RecordFile() { RecordName(0) = "Record1"; }

    std::string Path() const { return folder / "db/Record1.mdb"; }

    /// A record with these texts in NUM, the same in Ch1; an empty one is Null.
    void Write(const Texts& numbers) {
        CreateRecord(0);
        Database database = TheDBEngine().OpenDatabase(Path());
        Database::Transaction all(database);
        Recordset rows = database.OpenRecordset("select * from data");
        for (const std::string& number : numbers) {
            rows.AddNew();
            if (!number.empty()) rows.Set("NUM", number);
            rows.Set("Ch1", number);
            rows.Update();
        }
        all.Commit();
        database.Close();
    }
    Texts Numbers() const { return Query(Path(), "select NUM from DATA"); }
    Texts Readings() const { return Query(Path(), "select Ch1 from DATA"); }
    void OpenAndClose() {
        OpenRecord(0);
        CloseRecord(0);
    }

    TempAppFolder folder;
};

// ---- Made

TEST_F(RecordFile, Lies_in_the_folder_db_of_the_program) {
    CreateRecord(0);
    EXPECT_EQ(RecordPath(0), Path());
    EXPECT_TRUE(std::filesystem::exists(Path()));
}

TEST_F(RecordFile, Holds_the_table_DATA_and_nothing_else) {
    CreateRecord(0);
    EXPECT_EQ(Query(Path(), "select type || ' ' || name from sqlite_master"), Texts{"table DATA"});
}

TEST_F(RecordFile, Has_22_text_columns_under_their_names) {
    CreateRecord(0);
    Texts columns = {"NUM TEXT", "Time TEXT"};
    for (int ch = 1; ch <= 20; ++ch) columns.push_back("Ch" + std::to_string(ch) + " TEXT");
    EXPECT_EQ(Query(Path(), "select name || ' ' || type from pragma_table_info('DATA')"), columns);
}

TEST_F(RecordFile, Has_no_key_and_no_column_that_must_be_filled) {
    CreateRecord(0);
    EXPECT_EQ(Query(Path(), "select count(*) from pragma_table_info('DATA') where pk or \"notnull\""), Texts{"0"});
}

TEST_F(RecordFile, Is_closed_again_once_it_is_made) {
    CreateRecord(0);
    EXPECT_EQ(ErrorOf([&] { Kill(Path()); }), 0);
}

TEST_F(RecordFile, That_is_there_is_used_as_it_stands) {
    WriteFileBytes(Path(), "what stood there");
    CreateRecord(0);
    EXPECT_EQ(RecordPath(0), Path());
    EXPECT_EQ(FileBytes(Path()), "what stood there");
}

TEST_F(RecordFile, Is_refused_where_a_folder_bears_its_name) {
    std::filesystem::create_directory(Path());
    EXPECT_EQ(ErrorOf([] { CreateRecord(0); }), kFileExists);
    EXPECT_TRUE(std::filesystem::is_directory(Path()));
}

TEST_F(RecordFile, Of_a_device_without_a_record_is_not_made_and_its_path_stays) {
    RecordName(0) = "0";
    RecordPath(0) = "the path before";
    CreateRecord(0);
    EXPECT_EQ(RecordPath(0), "the path before");
    EXPECT_TRUE(std::filesystem::is_empty(folder / "db"));
}

TEST_F(RecordFile, Is_refused_where_the_folder_db_is_missing) {
    std::filesystem::remove(folder / "db");
    EXPECT_EQ(ErrorOf([] { CreateRecord(0); }), kNotAValidPath);
    EXPECT_FALSE(std::filesystem::exists(folder / "db"));
}

TEST_F(RecordFile, Is_refused_under_a_name_that_no_file_can_have) {
    for (const char* name : {"../Record1", "Record/1", "Record\\1", "Record:1", "Record?", "Record*", "Record\n"}) {
        RecordName(0) = name;
        EXPECT_EQ(ErrorOf([] { CreateRecord(0); }), kNotAValidName) << name;
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder / "db"));
}

// ---- Opened

TEST_F(RecordFile, That_is_new_has_no_rows) {
    CreateRecord(0);
    RecordBase(0) = 9;
    OpenRecord(0);
    EXPECT_EQ(RecordBase(0), 0);
}

TEST_F(RecordFile, Of_50_rows_stands_on_the_last_one) {
    Write(Counting(50));
    OpenRecord(0);
    EXPECT_EQ(RecordBase(0), 50);
    EXPECT_EQ(RecordRs(0).Text("num"), "50");
}

TEST_F(RecordFile, Is_numbered_without_holes_in_its_order) {
    Write({"1", "2", "5", "7"});
    OpenRecord(0);
    EXPECT_EQ(RecordBase(0), 4);
    CloseRecord(0);
    EXPECT_EQ(Numbers(), (Texts{"1", "2", "3", "4"}));
    EXPECT_EQ(Readings(), (Texts{"1", "2", "5", "7"}));
}

TEST_F(RecordFile, Is_numbered_by_stored_order_and_not_by_number) {
    Write({"3", "1", "2"});
    OpenAndClose();
    EXPECT_EQ(Numbers(), (Texts{"1", "2", "3"}));
    EXPECT_EQ(Readings(), (Texts{"3", "1", "2"}));
}

TEST_F(RecordFile, Loses_the_rows_without_a_number_and_the_rows_behind_move_up) {
    Write({"", "1", "", "", "2", ""});
    OpenRecord(0);
    EXPECT_EQ(RecordBase(0), 2);
    CloseRecord(0);
    EXPECT_EQ(Numbers(), (Texts{"1", "2"}));
    EXPECT_EQ(Readings(), (Texts{"1", "2"}));
}

TEST_F(RecordFile, With_no_numbered_row_becomes_a_new_one) {
    Write({"", ""});
    OpenRecord(0);
    EXPECT_EQ(RecordBase(0), 0);
    CloseRecord(0);
    EXPECT_EQ(Numbers(), Texts{});
}

TEST_F(RecordFile, Keeps_a_number_that_agrees_as_a_number) {
    Write({"1.0", " 2 ", "03"});
    OpenAndClose();
    EXPECT_EQ(Numbers(), (Texts{"1.0", " 2 ", "03"}));
}

TEST_F(RecordFile, With_a_number_that_is_none_raises_13) {
    for (const char* number : {"abc", " ", "1x"}) {
        Write({number});
        EXPECT_EQ(ErrorOf([] { OpenRecord(0); }), kTypeMismatch) << number;
        CloseRecord(0);
        Kill(Path());
    }
}

TEST_F(RecordFile, Keeps_the_numbers_that_were_set_right_before_one_that_is_none) {
    Write({"5", "", "6", "abc", "9"});
    EXPECT_EQ(ErrorOf([] { OpenRecord(0); }), kTypeMismatch);
    CloseRecord(0);
    EXPECT_EQ(Numbers(), (Texts{"1", "2", "abc", "9"}));
}

TEST_F(RecordFile, Without_anything_to_set_right_is_not_touched) {
    Write(Counting(20));
    const std::string bytes = FileBytes(Path());
    const auto long_ago = std::filesystem::last_write_time(Path()) - std::chrono::hours(24);
    std::filesystem::last_write_time(Path(), long_ago);
    OpenAndClose();
    EXPECT_EQ(FileBytes(Path()), bytes);
    EXPECT_EQ(std::filesystem::last_write_time(Path()), long_ago);
}

TEST_F(RecordFile, That_is_open_still_is_opened_anew) {
    Write(Counting(2));
    OpenRecord(0);
    OpenRecord(0);
    EXPECT_EQ(RecordBase(0), 2);
    CloseRecord(0);
    EXPECT_EQ(ErrorOf([&] { Kill(Path()); }), 0);
}

TEST_F(RecordFile, Of_32767_rows_opens) {
    Write(Counting(32767));
    OpenRecord(0);
    EXPECT_EQ(RecordBase(0), 32767);
}

TEST_F(RecordFile, Of_32768_rows_raises_6_on_its_last_row) {
    Write(Texts(32768, "9"));
    EXPECT_EQ(ErrorOf([] { OpenRecord(0); }), kOverflow);
    CloseRecord(0);
    Texts numbers = Counting(32767);
    numbers.push_back("9");
    EXPECT_EQ(Numbers(), numbers);
}

TEST_F(RecordFile, That_is_no_database_raises_3343_and_stays_as_it_was) {
    WriteFileBytes(Path(), "what stood there");
    CreateRecord(0);
    EXPECT_EQ(ErrorOf([] { OpenRecord(0); }), kNotADatabase);
    EXPECT_EQ(FileBytes(Path()), "what stood there");
}

TEST_F(RecordFile, Without_the_table_DATA_raises_3078) {
    TheDBEngine().CreateDatabase(Path(), "", 2).Close();
    CreateRecord(0);
    EXPECT_EQ(ErrorOf([] { OpenRecord(0); }), kTableMissing);
}

TEST_F(RecordFile, Without_the_column_NUM_raises_3265) {
    Database database = TheDBEngine().CreateDatabase(Path(), "", 2);
    TableDef table;
    table.Name = "DATA";
    table.Fields.Append({"Time", kDbText});
    database.AppendTableDef(table);
    Recordset rows = database.OpenRecordset("select * from data");
    rows.AddNew();
    rows.Update();
    database.Close();
    CreateRecord(0);
    EXPECT_EQ(ErrorOf([] { OpenRecord(0); }), kItemNotFound);
}

// ---- Closed

TEST_F(RecordFile, Once_closed_is_free_and_still_assigned) {
    Write(Counting(3));
    OpenRecord(0);
    EXPECT_EQ(ErrorOf([&] { Kill(Path()); }), kPermissionDenied);
    CloseRecord(0);
    EXPECT_EQ(RecordName(0), "Record1");
    EXPECT_EQ(ErrorOf([] { RecordRs(0).MoveLast(); }), kObjectClosed);
    EXPECT_EQ(ErrorOf([&] { Kill(Path()); }), 0);
}

// ---- In runs

using Runs = RecordDesk;

/// Adds `count` rows numbered 1 to the record at `path`.
void AddRows(const std::string& path, int count) {
    Database database = TheDBEngine().OpenDatabase(path);
    Database::Transaction all(database);
    Recordset rows = database.OpenRecordset("select * from data");
    for (int i = 0; i < count; ++i) {
        rows.AddNew();
        rows.Set("NUM", "1");
        rows.Update();
    }
    all.Commit();
    database.Close();
}

TEST_F(Runs, Number_the_rows_of_a_new_record_from_1) {
    OpenConnected(1);
    Assign({"Record1"});
    RunScans(3);
    EXPECT_EQ(Column(RowsOf(Record("Record1")), 0), Counting(3));
}

TEST_F(Runs, Append_to_the_record_of_the_run_before) {
    OpenConnected(1);
    Assign({"Record1"});
    RunScans(3);
    RunScans(2);
    EXPECT_EQ(RecordBase(0), 3);
    EXPECT_EQ(Column(RowsOf(Record("Record1")), 0), Counting(5));
}

TEST_F(Runs, Give_the_first_row_behind_50_others_the_number_51) {
    OpenConnected(1);
    Assign({"Record1"});
    CreateRecord(0);
    AddRows(Record("Record1"), 50);
    RunScans(1);
    EXPECT_EQ(RecordBase(0), 50);
    EXPECT_EQ(Column(RowsOf(Record("Record1")), 0), Counting(51));
}

TEST_F(Runs, Start_anew_under_another_name) {
    OpenConnected(1);
    Assign({"Record1"});
    RunScans(3);
    Assign({"Record2"});
    RunScans(2);
    EXPECT_EQ(Column(RowsOf(Record("Record1")), 0), Counting(3));
    EXPECT_EQ(Column(RowsOf(Record("Record2")), 0), Counting(2));
}

TEST_F(Runs, Start_anew_once_the_record_is_deleted) {
    OpenConnected(1);
    Assign({"Record1"});
    RunScans(3);
    Kill(Record("Record1"));
    RunScans(2);
    EXPECT_EQ(Column(RowsOf(Record("Record1")), 0), Counting(2));
}

TEST_F(Runs, Close_a_hole_in_the_record_before_they_append) {
    OpenConnected(1);
    Assign({"Record1"});
    RunScans(3);
    {
        Database database = TheDBEngine().OpenDatabase(Record("Record1"));
        database.OpenRecordset("select * from data where NUM='2'").Delete();
        database.Close();
    }
    RunScans(1);
    EXPECT_EQ(Column(RowsOf(Record("Record1")), 0), Counting(3));
}

TEST_F(Runs, Store_each_device_in_its_own_record_and_make_none_for_a_device_without) {
    OpenConnected(3);
    Assign({"Record1", "NONE", "Record3"});
    RunScans(2);
    EXPECT_EQ(RecordFiles(), (Texts{"Record1.mdb", "Record3.mdb"}));
    EXPECT_EQ(Column(RowsOf(Record("Record3")), 0), Counting(2));
}

TEST_F(Runs, Store_the_rows_of_both_devices_that_came_to_share_a_record) {
    OpenConnected(2);
    RecordName(0) = RecordName(1) = "Record1";
    RunScans(2);
    EXPECT_EQ(Column(RowsOf(Record("Record1")), 0), (Texts{"1", "1", "2", "2"}));
    RunScans(1);
    EXPECT_EQ(Column(RowsOf(Record("Record1")), 0), (Texts{"1", "2", "3", "4", "5", "5"}));
}

TEST_F(Runs, Touch_no_file_without_a_record) {
    OpenConnected(1);
    RecordBase(0) = 7;
    RunScans(2);
    EXPECT_EQ(RecordFiles(), Texts{});
    EXPECT_EQ(RecordBase(0), 7);
    EXPECT_EQ(ScanCount(0), 2);
}

TEST_F(Runs, Have_every_row_in_the_file_as_soon_as_it_is_taken) {
    OpenConnected(1);
    Assign({"Record1"});
    std::size_t rows = 0;
    AfterScans(2, [&] { rows = RowsOf(Record("Record1")).size(); });
    RunScans(4);
    EXPECT_EQ(rows, 2U);
}

TEST_F(Runs, Leave_the_record_free_at_their_end) {
    OpenConnected(2);
    Assign({"Record1", "Record2"});
    RunScans(1);
    EXPECT_EQ(ErrorOf([&] { Kill(Record("Record1")); }), 0);
    EXPECT_EQ(ErrorOf([&] { Kill(Record("Record2")); }), 0);
}

#ifndef _WIN32  // a process cannot be forked
TEST_F(Runs, Leave_their_rows_when_the_program_is_killed) {
    ChildProcess program([&](const ChildProcess::Contact& test) {
        OpenConnected(1);
        Assign({"Record1"});
        AfterScans(3, [&] {
            test.Send();
            test.Await();
        });
        RunScans(9);
    });
    ASSERT_TRUE(program.Talk().Await());
    program.Kill();
    const auto rows = RowsOf(Record("Record1"));
    EXPECT_EQ(Column(rows, 0), Counting(3));
    EXPECT_EQ(Column(rows, 4), (Texts(3, "+3.5E+00\n")));
}
#endif

TEST_F(Runs, Stop_writing_once_the_name_is_given_up_and_leave_that_record_open) {
    OpenConnected(1);
    Assign({"Record1"});
    user.Click("Form1", "Command10");
    AfterScans(2, [&] { user.Pick("DB_SET", "Combo1(0)", "NONE"); });
    RunScans(5);
    EXPECT_EQ(ScanCount(0), 5);
    EXPECT_EQ(Column(RowsOf(Record("Record1")), 0), Counting(2));
    EXPECT_EQ(ErrorOf([&] { Kill(Record("Record1")); }), kPermissionDenied);
}

TEST_F(Runs, Go_on_in_their_record_when_another_is_assigned) {
    OpenConnected(1);
    Assign({"Record1"});
    user.Click("Form1", "Command10");
    AfterScans(2, [&] { user.Pick("DB_SET", "Combo1(0)", "Record2"); });
    RunScans(4);
    EXPECT_EQ(RecordFiles(), Texts{"Record1.mdb"});
    EXPECT_EQ(Column(RowsOf(Record("Record1")), 0), Counting(4));
}

TEST_F(Runs, Go_on_in_their_record_under_the_count_of_scans_when_a_name_comes_back) {
    OpenConnected(1);
    Assign({"Record1"});
    user.Click("Form1", "Command10");
    AfterScans(1, [&] { user.Pick("DB_SET", "Combo1(0)", "NONE"); });
    AfterScans(3, [&] { user.Pick("DB_SET", "Combo1(0)", "Record2"); });
    RunScans(5);
    EXPECT_EQ(RecordFiles(), Texts{"Record1.mdb"});
    EXPECT_EQ(Column(RowsOf(Record("Record1")), 0), (Texts{"1", "4", "5"}));
    EXPECT_EQ(ErrorOf([&] { Kill(Record("Record1")); }), 0);
}

// ---- Starts that fail

TEST_F(Runs, End_the_program_over_a_file_that_is_no_database_and_leave_it_as_it_was) {
    WriteFileBytes(Record("Record1"), "what stood there");
    EXPECT_EXIT(
        {
            OpenConnected(1);
            Assign({"Record1"});
            TellRunTimeError();
            Run();
        },
        testing::ExitedWithCode(1), EndedBy(3343));
    folder.TakeFilesOfChild();
    EXPECT_EQ(FileBytes(Record("Record1")), "what stood there");
}

TEST_F(Runs, End_the_program_over_a_missing_folder_db_and_do_not_make_it) {
    std::filesystem::remove(folder / "db");
    EXPECT_EXIT(
        {
            OpenConnected(1);
            Assign({"Record1"});
            TellRunTimeError();
            Run();
        },
        testing::ExitedWithCode(1), EndedBy(3044));
    folder.TakeFilesOfChild();
    EXPECT_FALSE(std::filesystem::exists(folder / "db"));
}

TEST_F(Runs, End_the_program_over_a_name_that_leads_out_of_the_folder_db) {
    EXPECT_EXIT(
        {
            OpenConnected(1);
            AssignTyped(0, "../Record1");
            TellRunTimeError();
            Run();
        },
        testing::ExitedWithCode(1), EndedBy(3055));
    folder.TakeFilesOfChild();
    EXPECT_EQ(RecordFiles(), Texts{});
    EXPECT_FALSE(std::filesystem::exists(folder / "Record1.mdb"));
}

TEST_F(Runs, End_the_program_over_a_record_of_32768_rows) {
    EXPECT_EXIT(
        {
            OpenConnected(1);
            Assign({"Record1"});
            RunScans(1);
            AddRows(Record("Record1"), 32767);
            TellRunTimeError();
            Run();
        },
        testing::ExitedWithCode(1), EndedBy(6));
}

TEST_F(Runs, Go_on_past_32767_rows_and_the_next_Start_ends_the_program) {
    EXPECT_EXIT(
        {
            OpenConnected(1);
            Assign({"Record1"});
            RunScans(1);
            AddRows(Record("Record1"), 32765);
            RunScans(3);
            TellRunTimeError();
            Run();
        },
        testing::ExitedWithCode(1), EndedBy(6));
    folder.TakeFilesOfChild();
    const Texts numbers = Column(RowsOf(Record("Record1")), 0);
    EXPECT_EQ(numbers.size(), 32769U);
    EXPECT_EQ(numbers.back(), "32769");
}

}  // namespace
}  // namespace vantrel
