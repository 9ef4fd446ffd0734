// Records in several hands, and what stays of them when the program, the disk or a transaction fails.
#include "platform/dbengine_record.h"
#include "platform/files.h"
#include "support/child_process.h"
#include "support/errors.h"
#include "support/virtual_clock.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace vantrel {
namespace {

// ---- Several users

TEST_F(Record, Shows_a_second_user_what_the_first_stored) {
    Database other = TheDBEngine().OpenDatabase(path);
    AddRows(database, {"1"});
    EXPECT_EQ(Walk(other.OpenRecordset("select * from data")), (Texts{"1"}));
    AddRows(other, {"2"});
    EXPECT_EQ(Walk(All()), (Texts{"1", "2"}));
}

#ifndef _WIN32  // a process cannot be forked
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
#endif

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

#ifndef _WIN32  // a process cannot be forked
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
#endif

#ifndef _WIN32
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

#endif

#ifndef _WIN32  // a process cannot be forked
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
#endif

// ---- Durability

#ifndef _WIN32  // a process cannot be forked
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
#endif

#ifndef _WIN32
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

#endif

#ifndef _WIN32  // a process cannot be forked
TEST_F(Record, That_a_killed_program_left_with_half_a_page_is_restored_from_its_journal) {
    AddRows(database, Counting(500));
    database.Close();
    KillInTheMiddleOfAChange(path);
    std::filesystem::resize_file(path, std::filesystem::file_size(path) + 100);
    EXPECT_EQ(Stored(), Counting(500));
}
#endif

#ifndef _WIN32  // a link takes a right that users lack
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
#endif

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

#ifndef _WIN32  // the engine does not keep the cause of a write that failed
TEST_F(Record, Raises_3026_where_the_disk_has_room_but_the_user_has_none) {
    Recordset rows = All();
    for (const int cause : {kShareUsedUp, kTooLarge}) {
        const FullDisk full(cause);
        rows.AddNew();
        EXPECT_EQ(ErrorOf([&] { rows.Update(); }), kEngineFull) << cause;
    }
}
#endif

#ifndef _WIN32  // nobody can move or delete an open file
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
#endif

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

TEST_F(Record, Keeps_what_was_committed_when_Undo_comes_after_it) {
    Database::Transaction transaction(database);
    AddRows(database, {"1"});
    transaction.Commit();
    transaction.Undo();
    EXPECT_EQ(Stored(), Texts{"1"});
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

}  // namespace
}  // namespace vantrel
