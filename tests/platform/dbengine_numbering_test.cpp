// Row numbers: finding a row by its number, renumbering, reading in one go.
#include "platform/dbengine_record.h"
#include "platform/files.h"
#include "support/child_process.h"
#include "support/errors.h"

#include <functional>
#include <gtest/gtest.h>

namespace vantrel {
namespace {

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

#ifndef _WIN32  // a process cannot be forked
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
#endif

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
#ifndef _WIN32
    /// Runs a routine with the record open in another program.
    void InAnotherProgram(const std::function<void(Database&)>& routine) {
        ChildProcess other([&](const ChildProcess::Contact&) {
            Database theirs = TheDBEngine().OpenDatabase(path);
            routine(theirs);
        });
        ASSERT_EQ(other.End(), 0);
    }
#endif
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

#ifndef _WIN32  // a process cannot be forked
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
#endif

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

#ifndef _WIN32  // a process cannot be forked
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
#endif

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

TEST_F(Proof, Ends_with_a_row_for_which_no_id_is_left_behind_the_last) {
    sqlite3* file = nullptr;
    sqlite3_open(path.c_str(), &file);
    // A journal of its own could not be deleted where nobody can delete an open file.
    const char* statements =
        "pragma journal_mode=memory; insert into data(_rowid_,num) values(9223372036854775807,'11')";
    ASSERT_EQ(sqlite3_exec(file, statements, nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(file);
    EXPECT_EQ(Walk(Find("11")), Texts{"11"});
    Append("12");  // gets a row id somewhere between
    EXPECT_EQ(Walk(Find("12")), Texts{"12"});
    EXPECT_EQ(Walk(Find("11")), Texts{"11"});
}

TEST_F(Proof, Ends_with_an_appended_row_without_a_number) {
    Recordset rows = All();
    rows.AddNew();
    rows.Update();
    rows = All();
    rows.MoveLast();
    EXPECT_EQ(rows.RecordCount(), 11);
    Append("12");
    EXPECT_TRUE(Find("11").Bof());
    EXPECT_EQ(Walk(Find("12")), Texts{"12"});
}

TEST_F(Proof, Does_not_count_for_what_is_not_committed) {
    Database::Transaction open(database);
    Delete("10");
    Recordset rows = All();
    rows.MoveLast();
    EXPECT_EQ(rows.RecordCount(), 9);
    Texts read;
    All().Scan(9, {"num"}, [&](const auto& texts) {
        read.push_back(texts[0].value_or("Null"));
        return true;
    });
    EXPECT_EQ(read, Texts{"9"});
}

TEST_F(Lookup, Finds_nothing_in_an_empty_table) { EXPECT_TRUE(Find("1").Bof()); }

TEST_F(Lookup, By_another_column_gives_what_a_scan_gives) {
    AddRows(database, {"1", "2", "2"});
    EXPECT_EQ(Walk(database.OpenRecordset("select * from data where ch1='reading 2'")), (Texts{"2", "2"}));
}

// ---- Renumbering, and reading in one go

class Renumbering : public Lookup {
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

TEST_F(Renumbering, Proves_the_numbers_for_those_who_read_them_behind_its_commit) {
    AddRows(database, {"", "4", "02", "2"});
    EXPECT_EQ(Renumber(), 0);
    const std::int64_t scans = Scans([&] {
        EXPECT_EQ(Walk(Find("1"), "Ch1"), Texts{"reading 4"});
        EXPECT_EQ(Walk(Find("02"), "Ch1"), Texts{"reading 02"});
        EXPECT_EQ(Walk(Find("3"), "Ch1"), Texts{"reading 2"});
        EXPECT_TRUE(Find("4").Bof());
    });
    EXPECT_EQ(scans, 0);
}

TEST_F(Renumbering, Proves_nothing_if_a_row_changes_before_its_commit) {
    AddRows(database, {"4", "5", "6"});
    Database::Transaction walk(database);
    All().Renumber("num", 1000);
    Recordset row = Find("2");
    row.Edit();
    row.Set("num", "7");
    row.Update();
    Delete("3");
    walk.Commit();
    EXPECT_TRUE(Find("2").Bof());
    EXPECT_TRUE(Find("3").Bof());
    EXPECT_EQ(Walk(Find("7"), "Ch1"), Texts{"reading 5"});
}

TEST_F(Renumbering, Proves_nothing_that_is_taken_back) {
    AddRows(database, {"4", "5", "6"});
    Database::Transaction walk(database);
    All().Renumber("num", 1000);
    walk.Undo();
    Database::Transaction change(database);
    Recordset row = Find("5");
    row.Edit();
    row.Set("Ch1", "changed");
    row.Update();
    change.Commit();
    EXPECT_TRUE(Find("1").Bof());
    EXPECT_EQ(Walk(Find("5"), "Ch1"), Texts{"changed"});
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

#ifndef _WIN32  // a process cannot be forked
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
#endif

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
    EXPECT_EQ(From(0), From(1));
}

TEST_F(ReadingInOneGo, Begins_at_the_same_row_where_numbers_are_known_to_be_doubled) {
    AddRows(database, {"1", "1", "2"});
    Find("1");
    EXPECT_EQ(From(2), (Texts{"reading 1 of 1", "reading 2 of 2"}));
}

}  // namespace
}  // namespace vantrel
