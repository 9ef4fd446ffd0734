// Two programs with one record.
#include "platform/dbengine_record.h"
#include "platform/errors.h"
#include "platform/files.h"
#include "support/errors.h"
#include "support/other_program.h"
#include "support/virtual_clock.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace vantrel {
namespace {

class TwoPrograms : public Record {
protected:
    TwoPrograms() { database.Close(); }
    /// The other program does `task` and halts.
    void Begin(const std::string& task) {
        other.emplace(task, path);
        ASSERT_TRUE(other->Await());
    }
    /// It goes on, to its end.
    void Finish() {
        other->Continue();
        EXPECT_TRUE(other->End());
    }
    int OpenError() {
        return ErrorOf([&] { TheDBEngine().OpenDatabase(path); });
    }
    void Append(const Texts& numbers) {
        Database same = TheDBEngine().OpenDatabase(path);
        AddRows(same, numbers);
    }

    std::optional<OtherProgram> other;
};

TEST_F(TwoPrograms, A_record_that_the_other_has_open_cannot_be_deleted) {
    Begin("open");
    EXPECT_EQ(ErrorOf([&] { Kill(path); }), kPermissionDenied);
    EXPECT_TRUE(FileExists(path));
    Finish();
    EXPECT_EQ(ErrorOf([&] { Kill(path); }), 0);
    EXPECT_FALSE(FileExists(path));
}

TEST_F(TwoPrograms, A_record_that_the_other_has_open_cannot_be_replaced_by_an_output_file) {
    Begin("open");
    const std::string before = FileBytes(path);
    EXPECT_EQ(ErrorOf([&] { OpenForOutput(path, 1); }), kPermissionDenied);
    EXPECT_EQ(FileBytes(path), before);
    Finish();
}

TEST_F(TwoPrograms, A_record_that_the_other_is_deleting_cannot_be_opened) {
    Begin("delete");
    EXPECT_EQ(OpenError(), kFileInUse);
    Finish();
    EXPECT_EQ(OpenError(), 0);
}

TEST_F(TwoPrograms, A_record_that_the_other_keeps_locked_for_2_seconds_cannot_be_opened) {
    Begin("lock");
    VirtualClock clock;
    EXPECT_EQ(OpenError(), kLockedByOther);
    EXPECT_EQ(clock.Elapsed(), 2000);
    Finish();
    EXPECT_EQ(OpenError(), 0);
}

TEST_F(TwoPrograms, A_record_that_the_other_is_making_cannot_be_made) {
    path = folder / "a.mdb";
    Begin("make");
    EXPECT_EQ(ErrorOf([&] { TheDBEngine().CreateDatabase(path, "", 0); }), kFileExists);
    Finish();
    EXPECT_EQ(OpenError(), 0);
}

TEST_F(TwoPrograms, A_record_that_the_other_died_making_can_be_made_and_nothing_is_left) {
    Kill(path);
    Begin("make_and_die");
    Finish();
    EXPECT_FALSE(std::filesystem::is_empty(folder.Path()));
    TheDBEngine().CreateDatabase(path, "", 0).Close();
    EXPECT_EQ(OpenError(), 0);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
}

TEST_F(TwoPrograms, Store_rows_in_turn) {
    Append({"1"});
    Begin("append_2_between");
    EXPECT_EQ(Stored(), (Texts{"1", "2"}));
    Append({"3"});
    Finish();
    EXPECT_EQ(Stored(), Counting(3));
}

TEST_F(TwoPrograms, Every_row_that_the_other_stored_before_it_was_killed_is_there) {
    constexpr int kSeen = 25;
    Begin("append_until_death");
    int stored = 1;
    for (; stored < kSeen; ++stored) ASSERT_TRUE(other->Await());
    other->Continue();
    while (other->Await()) ++stored;
    EXPECT_TRUE(other->End());

    const Texts numbers = Stored();
    EXPECT_GE(numbers.size(), static_cast<std::size_t>(stored));
    EXPECT_LE(numbers.size(), static_cast<std::size_t>(stored) + 1);
    EXPECT_EQ(numbers, Counting(static_cast<int>(numbers.size())));
}

TEST_F(TwoPrograms, A_transaction_within_which_the_other_was_killed_has_changed_nothing) {
    Append(Counting(500));
    Begin("die_in_a_transaction");
    Finish();
    EXPECT_EQ(Stored(), Counting(500));
}

TEST_F(TwoPrograms, A_record_that_the_other_left_half_changed_is_restored_from_its_journal) {
    Append(Counting(500));
    Begin("die_in_the_middle_of_a_change");
    Finish();
    std::filesystem::resize_file(path, std::filesystem::file_size(path) + 100);
    EXPECT_EQ(Stored(), Counting(500));
}

}  // namespace
}  // namespace vantrel
