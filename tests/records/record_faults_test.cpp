// A record whose file operations fail, one after the other, or whose power is cut: every row whose storing had returned
// is there, earlier ones are whole, and the next Start works.
#include "records/browser_desk.h"
#include "records/record_store.h"
#include "support/errors.h"
#include "support/file_calls.h"
#include "support/rounds.h"

#include <cerrno>
#include <functional>
#include <sqlite3.h>

namespace vantrel {
namespace {

constexpr int kCauses[] = {ENOSPC, EIO, EACCES};

/// The numbers of the rows of a record; " damaged" behind them if the engine finds a fault in the file. Read from a
/// copy: reading may repair.
Texts Numbers(const std::string& path) {
    const TempFolder copies;
    const std::string copy = copies / "Record1.mdb";
    for (const char* ending : {"", "-journal"})
        if (FileExists(path + ending)) WriteFileBytes(copy + ending, FileBytes(path + ending));
    sqlite3* file = nullptr;
    Texts found;
    const auto take = [](void* to, int, char** values, char**) {
        static_cast<Texts*>(to)->emplace_back(values[0] ? values[0] : "<Null>");
        return 0;
    };
    sqlite3_open_v2(copy.c_str(), &file, SQLITE_OPEN_READWRITE, nullptr);
    sqlite3_exec(file, "select NUM from DATA order by _rowid_", take, &found, nullptr);
    Texts verdict;
    sqlite3_exec(file, "pragma integrity_check", take, &verdict, nullptr);
    sqlite3_close(file);
    if (verdict != Texts{"ok"}) found.emplace_back(" damaged");
    return found;
}

int Start() {
    return ErrorOf([] {
        CreateRecord(0);
        OpenRecord(0);
    });
}

void Append(int number) {
    Recordset& rows = RecordRs(0);
    rows.AddNew();
    for (const std::string& column : RecordColumns()) rows.Set(column, std::string(200, 'x'));
    rows.Set("NUM", std::to_string(number));
    rows.Update();
}

/// Device 0 with Record1.
class FaultyDisk : public testing::Test {
protected:
    FaultyDisk() { RecordName(0) = "Record1"; }

    /// Runs `work` over and over, each time on a fresh record with rows of these numbers; the k-th file operation fails
    /// in the k-th round, alone or with all behind it, until none fails any more. Calls `check` with the error that
    /// `work` ended with, 0 for none, when the disk works again and the record is closed.
    static void FailEach(const Texts& numbers, const std::function<void()>& work,
                         const std::function<void(const std::string& path, int error)>& check) {
        const TempAppFolder original;
        MakeNumbered(original / "db/Record1.mdb", numbers);
        const std::string bytes = FileBytes(original / "db/Record1.mdb");
        int tried = 0;
        for (const int cause : kCauses)
            for (const bool is_lasting : {false, true}) {
                int fails = 0;
                for (bool is_reached = true; is_reached; ++fails) {
                    SCOPED_TRACE("call " + std::to_string(fails + 1) +
                                 (is_lasting ? " and all behind it fail" : " fails") + " with errno " +
                                 std::to_string(cause));
                    const TempAppFolder folder;
                    WriteFileBytes(folder / "db/Record1.mdb", bytes);
                    ASSERT_EQ(ErrorOf([] { CreateRecord(0); }), 0);
                    FileCalls calls(folder / "db");
                    calls.FailFrom(fails + 1, cause, is_lasting);
                    const int error = ErrorOf(work);
                    is_reached = calls.Count() > fails;
                    RecordDb(0).Close();
                    calls.Mend();
                    check(RecordPath(0), error);
                    if (HasFatalFailure() || HasNonfatalFailure()) return;
                }
                EXPECT_GT(fails, 10);
                tried += fails;
            }
        Tried(tried, "failing file operations");
    }
    static void MakeNumbered(const std::string& path, const Texts& numbers) {
        MakeRecord(path, static_cast<int>(numbers.size()));
        Database database = TheDBEngine().OpenDatabase(path);
        Recordset rows = database.OpenRecordset("select * from data");
        const Database::Transaction all(database);
        for (const std::string& number : numbers) {
            rows.Edit();
            rows.Set("NUM", number);
            rows.Update();
            rows.MoveNext();
        }
    }
};

TEST_F(FaultyDisk, Leaves_every_stored_row_when_the_next_one_cannot_be_stored) {
    FailEach(
        Counting(1, 3),
        [] {
            OpenRecord(0);
            Append(4);
        },
        [](const std::string& path, int error) {
            const Texts rows = Numbers(path);
            EXPECT_TRUE(rows == Counting(1, 4) || (error != 0 && rows == Counting(1, 3)))
                << testing::PrintToString(rows);
            EXPECT_EQ(Start(), 0);
            EXPECT_EQ(RecordBase(0), static_cast<double>(rows.size()));
            Append(5);
            CloseRecord(0);
        });
}

TEST_F(FaultyDisk, Leaves_the_numbers_as_they_were_or_numbers_them_all) {
    const Texts holes = {"2", "5", "5", "9"};
    FailEach(
        holes, [] { OpenRecord(0); },
        [&](const std::string& path, int error) {
            const Texts rows = Numbers(path);
            EXPECT_TRUE(rows == Counting(1, 4) || (error != 0 && rows == holes)) << testing::PrintToString(rows);
            EXPECT_EQ(Start(), 0);
            CloseRecord(0);
            EXPECT_EQ(Numbers(path), Counting(1, 4));
        });
}

TEST_F(FaultyDisk, Shows_a_reader_whole_rows_or_an_error) {
    FailEach(
        Counting(1, 60),
        [] {
            Database database = TheDBEngine().OpenDatabase(RecordPath(0));
            int row = 0;
            for (Recordset rows = database.OpenRecordset("select * from data"); !rows.Eof(); rows.MoveNext())
                EXPECT_EQ(rows.Text("num"), std::to_string(++row));
            EXPECT_EQ(row, 60);
            for (const int number : {60, 1, 30}) {
                const std::string text = std::to_string(number);
                EXPECT_EQ(database.OpenRecordset("select * from data where num='" + text + "'").Text("num"), text);
            }
        },
        [](const std::string& path, int) { EXPECT_EQ(Numbers(path), Counting(1, 60)); });
}

// ---- Power cuts

/// Does `work` on a record with rows of these numbers, and looks at what may be on the disk if the power fails at each
/// moment of it.
class PowerCut : public FaultyDisk {
protected:
    void CutEach(const Texts& numbers, const std::function<void(FileCalls&)>& work,
                 const std::function<void(const std::string& path, int change)>& check) {
        const TempAppFolder folder;
        MakeNumbered(folder / "db/Record1.mdb", numbers);
        FileCalls calls(folder / "db");
        work(calls);
        const int changes = calls.Changes();
        EXPECT_GT(changes, 10);
        const Rounds rounds(200);
        for (const int round : rounds) {
            SCOPED_TRACE(rounds.Text(round));
            std::mt19937 chance = rounds.Chance(round);
            // Each moment in its turn, so that all are met.
            const int change = round % (changes + 1);
            const TempAppFolder after;
            calls.PowerCut(change, chance, after / "db");
            check(after / "db/Record1.mdb", change);
            if (HasFailure()) return;
        }
        Tried(rounds.Count(), "power cuts");
    }
};

TEST_F(PowerCut, Loses_no_row_whose_storing_had_returned) {
    std::vector<int> stored_at;  // the change before which row 4, 5 ... was stored
    CutEach(
        Counting(1, 3),
        [&](FileCalls& calls) {
            ASSERT_EQ(Start(), 0);
            for (int number = 4; number <= 8; ++number) {
                Append(number);
                stored_at.push_back(calls.Changes());
            }
            CloseRecord(0);
        },
        [&](const std::string& path, int change) {
            const auto stored = static_cast<std::size_t>(
                3 + std::ranges::count_if(stored_at, [&](int moment) { return moment <= change; }));
            ASSERT_EQ(Start(), 0);
            CloseRecord(0);
            const Texts rows = Numbers(path);
            EXPECT_TRUE(rows.size() == stored || rows.size() == stored + 1) << rows.size() << " of " << stored;
            EXPECT_EQ(rows, Counting(1, static_cast<int>(rows.size())));
        });
}

TEST_F(PowerCut, In_the_walk_that_numbers_the_rows_is_made_up_for_by_the_next) {
    Texts holes;
    for (int number = 1; number <= 60; ++number) holes.push_back(std::to_string(2 * number));
    CutEach(
        holes,
        [](FileCalls&) {
            ASSERT_EQ(Start(), 0);
            CloseRecord(0);
        },
        [](const std::string& path, int) {
            const Texts before = Numbers(path);
            EXPECT_TRUE(before.back() == "120" || before == Counting(1, 60));
            ASSERT_EQ(Start(), 0);
            CloseRecord(0);
            EXPECT_EQ(Numbers(path), Counting(1, 60));
        });
}

}  // namespace
}  // namespace vantrel
